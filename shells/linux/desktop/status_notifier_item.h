#pragma once
// The program's icon in panels that follow the StatusNotifierItem protocol over D-Bus. While it is
// offered, it offers itself to whatever panel there is, and again to each that comes later.

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QImage>
#include <QList>
#include <QObject>
#include <QPoint>
#include <QString>

namespace kestrel::linux_shell {

/// Main thread only. Without a session bus there is never a host, and nothing else happens.
class StatusNotifierItem final : public QObject {
    Q_OBJECT

  public:
    /// `title` is what panels and assistive technologies call the icon.
    StatusNotifierItem(const QDBusConnection& bus, QString title);
    ~StatusNotifierItem() override;
    StatusNotifierItem(const StatusNotifierItem&) = delete;
    StatusNotifierItem& operator=(const StatusNotifierItem&) = delete;

    /// True once a panel has said that it shows such icons, until it leaves the bus.
    bool hasHost() const { return hasHost_; }

    /// True once it is certain whether there is such a panel.
    bool knowsHost() const { return knowsHost_; }

    /// Shows the icon in such panels, or takes it away from them. Not offered at first.
    void setOffered(bool isOffered);

    /// The same image in several sizes, ready to draw, and the name under which the icon theme
    /// has it; panels that know the theme then tint it themselves. An empty name is allowed.
    void setIcon(QList<QImage> images, const QString& themeName);

    const QString& title() const { return title_; }
    const QList<QImage>& images() const { return images_; }
    const QString& themeName() const { return themeName_; }

  Q_SIGNALS:
    void hasHostChanged();
    /// What the user does with the next click may raise other windows by this token of a Wayland
    /// compositor. Some panels send an empty one.
    void activationTokenProvided(const QString& token);
    /// A panel has fetched the icon, which one that leaves it out does not do.
    void shown();
    /// It is certain for the first time whether there is a panel.
    void hostKnown();
    /// The user clicked the icon with the main button. `place` is what the panel says of where that
    /// was, in pixels of the screen; not every panel can be trusted.
    void activated(QPoint place);
    /// The panel wants the icon's menu shown; its user clicked with another button, or held the
    /// main one down for long.
    void menuWanted(QPoint place);
    /// For the panel: fetch the icon again.
    void iconChanged();

  private:
    void watcherCame();
    void offer();
    void watcherLeft();
    void askForHost();
    void setHasHost(bool hasHost);

  private Q_SLOTS:
    void hostsChanged();

  private:
    QDBusConnection bus_;
    QDBusServiceWatcher watcher_;
    QString title_;
    QString serviceName_;
    QList<QImage> images_;
    QString themeName_;
    bool hasHost_ = false;
    bool knowsHost_ = false;
    bool isOffered_ = false;
};

} // namespace kestrel::linux_shell
