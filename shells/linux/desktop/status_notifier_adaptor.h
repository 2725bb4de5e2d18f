#pragma once
// The object that a panel sees on D-Bus: the properties and methods of org.kde.StatusNotifierItem.

#include "shells/linux/desktop/status_notifier_item.h"

#include <QDBusAbstractAdaptor>
#include <QDBusArgument>
#include <QDBusObjectPath>

namespace kestrel::linux_shell {

/// An image in the protocol's form.
struct StatusNotifierImage {
    int width = 0;
    int height = 0;
    QByteArray pixels; ///< 32-bit ARGB, big-endian, row by row
};
using StatusNotifierImages = QList<StatusNotifierImage>;

struct StatusNotifierToolTip {
    QString iconName;
    StatusNotifierImages images;
    QString title;
    QString description;
};

QDBusArgument& operator<<(QDBusArgument& argument, const StatusNotifierImage& image);
const QDBusArgument& operator>>(const QDBusArgument& argument, StatusNotifierImage& image);
QDBusArgument& operator<<(QDBusArgument& argument, const StatusNotifierToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, StatusNotifierToolTip& toolTip);

/// `image` in the protocol's form.
StatusNotifierImage statusNotifierImage(const QImage& image);

/// Belongs to its item.
class StatusNotifierAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category)
    Q_PROPERTY(QString Id READ id)
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(int WindowId READ windowId)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu)
    Q_PROPERTY(QString IconName READ iconName)
    Q_PROPERTY(kestrel::linux_shell::StatusNotifierImages IconPixmap READ iconPixmap)
    Q_PROPERTY(QString IconAccessibleDesc READ title)
    Q_PROPERTY(QString IconThemePath READ nothing)
    Q_PROPERTY(QString OverlayIconName READ nothing)
    Q_PROPERTY(kestrel::linux_shell::StatusNotifierImages OverlayIconPixmap READ noImages)
    Q_PROPERTY(QString AttentionIconName READ nothing)
    Q_PROPERTY(kestrel::linux_shell::StatusNotifierImages AttentionIconPixmap READ noImages)
    Q_PROPERTY(QString AttentionMovieName READ nothing)
    Q_PROPERTY(kestrel::linux_shell::StatusNotifierToolTip ToolTip READ toolTip)

  public:
    explicit StatusNotifierAdaptor(StatusNotifierItem& item);

    QString category() const { return QStringLiteral("ApplicationStatus"); }
    QString id() const { return QStringLiteral("app.kestrel.Kestrel"); }
    QString title() const { return item_.title(); }
    QString status() const { return QStringLiteral("Active"); }
    int windowId() const { return 0; }
    bool itemIsMenu() const { return false; }
    QString iconName() const;
    StatusNotifierImages iconPixmap() const;
    // Some panels write an error for each of the protocol's images that an item does not have.
    QString nothing() const { return {}; }
    StatusNotifierImages noImages() const { return {}; }
    StatusNotifierToolTip toolTip() const;

  public Q_SLOTS:
    void Activate(int x, int y);
    /// Called before Activate by panels that can hand their right to raise windows on.
    void ProvideXdgActivationToken(const QString& token) {
        Q_EMIT item_.activationTokenProvided(token);
    }
    void ContextMenu(int x, int y);
    // The icon has no other actions; a panel that has no object to call for them makes up one of
    // its own.
    void SecondaryActivate(int x, int y) {
        Q_UNUSED(x)
        Q_UNUSED(y)
    }
    void Scroll(int delta, const QString& orientation) {
        Q_UNUSED(delta)
        Q_UNUSED(orientation)
    }

  Q_SIGNALS:
    void NewIcon();
    void NewStatus(const QString& status);

  private:
    StatusNotifierItem& item_;
};

/// For panels that leave out an item which names no menu. The others have it without: several show
/// an empty menu at a right click for whatever name they are given.
class StatusNotifierMenuAdaptor final : public StatusNotifierAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QDBusObjectPath Menu READ menu)

  public:
    using StatusNotifierAdaptor::StatusNotifierAdaptor;

    /// The name by which panels know that there is none.
    QDBusObjectPath menu() const { return QDBusObjectPath(QStringLiteral("/NO_DBUSMENU")); }
};

} // namespace kestrel::linux_shell

Q_DECLARE_METATYPE(kestrel::linux_shell::StatusNotifierImage)
Q_DECLARE_METATYPE(kestrel::linux_shell::StatusNotifierToolTip)
