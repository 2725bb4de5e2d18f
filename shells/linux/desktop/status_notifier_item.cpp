#include "shells/linux/desktop/status_notifier_item.h"

#include "shells/linux/desktop/current_desktop.h"
#include "shells/linux/desktop/status_notifier_adaptor.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QTimer>

#include <chrono>
#include <utility>

namespace kestrel::linux_shell {
namespace {

constexpr QLatin1String watcherService("org.kde.StatusNotifierWatcher");
constexpr QLatin1String watcherPath("/StatusNotifierWatcher");
constexpr QLatin1String itemPath("/StatusNotifierItem");

// Some bars lose the icon of an item that registers while they are still starting, and show it
// when it changes after that.
constexpr std::chrono::milliseconds barStartTime{1000};

QDBusMessage watcherCall(QLatin1String interface, QLatin1String method) {
    auto message = QDBusMessage::createMethodCall(watcherService, watcherPath, interface, method);
    message.setAutoStartService(false);
    return message;
}

} // namespace

StatusNotifierItem::StatusNotifierItem(const QDBusConnection& bus, QString title)
    : bus_(bus),
      watcher_(watcherService, bus,
               QDBusServiceWatcher::WatchForRegistration |
                   QDBusServiceWatcher::WatchForUnregistration),
      title_(std::move(title)),
      serviceName_(QStringLiteral("org.kde.StatusNotifierItem-%1-1")
                       .arg(QCoreApplication::applicationPid())) {
    if (currentDesktopIs(u"GNOME"))
        new StatusNotifierMenuAdaptor(*this);
    else
        new StatusNotifierAdaptor(*this);
    if (!bus_.isConnected()) {
        knowsHost_ = true;
        return;
    }
    connect(&watcher_, &QDBusServiceWatcher::serviceRegistered, this,
            &StatusNotifierItem::watcherCame);
    connect(&watcher_, &QDBusServiceWatcher::serviceUnregistered, this,
            &StatusNotifierItem::watcherLeft);
    for (const char* signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"}) {
        bus_.connect(watcherService, watcherPath, watcherService, QLatin1String(signal), this,
                     SLOT(hostsChanged()));
    }
    watcherCame();
}

StatusNotifierItem::~StatusNotifierItem() { setOffered(false); }

// Panels follow the name: they let an icon go together with it.
void StatusNotifierItem::setOffered(bool isOffered) {
    if (isOffered == isOffered_ || !bus_.isConnected())
        return;
    isOffered_ = isOffered;
    if (isOffered_) {
        bus_.registerObject(itemPath, this);
        bus_.registerService(serviceName_);
        offer();
    } else {
        bus_.unregisterService(serviceName_);
        bus_.unregisterObject(itemPath);
    }
}

void StatusNotifierItem::setIcon(QList<QImage> images, const QString& themeName) {
    images_ = std::move(images);
    themeName_ = themeName;
    Q_EMIT iconChanged();
}

void StatusNotifierItem::watcherCame() {
    offer();
    askForHost();
}

void StatusNotifierItem::offer() {
    if (!isOffered_)
        return;
    auto call = watcherCall(watcherService, QLatin1String("RegisterStatusNotifierItem"));
    call << serviceName_;
    bus_.asyncCall(call);
    QTimer::singleShot(barStartTime, this, &StatusNotifierItem::iconChanged);
}

void StatusNotifierItem::watcherLeft() { setHasHost(false); }

void StatusNotifierItem::hostsChanged() { askForHost(); }

void StatusNotifierItem::askForHost() {
    auto call = watcherCall(QLatin1String("org.freedesktop.DBus.Properties"), QLatin1String("Get"));
    call << QString(watcherService) << QStringLiteral("IsStatusNotifierHostRegistered");
    auto* answer = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        setHasHost(!reply.isError() && reply.value().variant().toBool());
        if (!std::exchange(knowsHost_, true))
            Q_EMIT hostKnown();
    });
}

void StatusNotifierItem::setHasHost(bool hasHost) {
    if (hasHost != hasHost_) {
        hasHost_ = hasHost;
        Q_EMIT hasHostChanged();
    }
}

} // namespace kestrel::linux_shell
