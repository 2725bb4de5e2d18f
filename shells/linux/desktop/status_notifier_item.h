#pragma once
// The program's icon in panels that follow the StatusNotifierItem protocol over D-Bus. It offers
// itself to whatever panel there is, and again to each that comes later.

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QImage>
#include <QList>
#include <QObject>
#include <QString>

namespace kestrel::linux_shell {

/// Main thread only. Without a session bus there is never a host, and nothing else happens.
class StatusNotifierItem final : public QObject {
    Q_OBJECT

  public:
    explicit StatusNotifierItem(const QDBusConnection& bus);
    ~StatusNotifierItem() override;
    StatusNotifierItem(const StatusNotifierItem&) = delete;
    StatusNotifierItem& operator=(const StatusNotifierItem&) = delete;

    /// True once a panel has said that it shows such icons, until it leaves the bus.
    bool hasHost() const { return hasHost_; }

    /// The same picture in several sizes, ready to draw, and the name under which the icon theme
    /// has it; panels that know the theme then tint it themselves. An empty name is allowed.
    void setIcon(QList<QImage> images, const QString& themeName);

    const QList<QImage>& images() const { return images_; }
    const QString& themeName() const { return themeName_; }

  Q_SIGNALS:
    void hasHostChanged();
    /// What the user does with the next click may raise other windows by this token of a Wayland
    /// compositor. Some panels send an empty one.
    void activationTokenProvided(const QString& token);
    /// The user clicked the icon with the main button.
    void activated();
    /// For the panel: fetch the icon again.
    void iconChanged();

  private:
    void watcherCame();
    void watcherLeft();
    void askForHost();
    void setHasHost(bool hasHost);

  private Q_SLOTS:
    void hostsChanged();

  private:
    QDBusConnection bus_;
    QDBusServiceWatcher watcher_;
    QString serviceName_;
    QList<QImage> images_;
    QString themeName_;
    bool hasHost_ = false;
};

} // namespace kestrel::linux_shell
