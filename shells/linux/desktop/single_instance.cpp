#include "shells/linux/desktop/single_instance.h"

#include "shells/linux/desktop/application_adaptor.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>

#include <utility>

namespace kestrel::linux_shell {
namespace {

const QString serviceName = QStringLiteral("app.kestrel.Kestrel");
const QString objectPath = QStringLiteral("/app/kestrel/Kestrel");

constexpr int longestAnswer = 3000; // milliseconds

} // namespace

SingleInstance::SingleInstance(const QDBusConnection& bus, const Startup& startup)
    : bus_(bus),
      startup_(startup),
      isStartedByBus_(qEnvironmentVariableIsSet("DBUS_STARTER_BUS_TYPE")) {
    new ApplicationAdaptor(*this);
    // They speak of this process and must not reach those that it launches.
    qunsetenv("DBUS_STARTER_BUS_TYPE");
    qunsetenv("DBUS_STARTER_ADDRESS");
}

SingleInstance::~SingleInstance() {
    if (isFirst_ && bus_.isConnected()) {
        bus_.unregisterService(serviceName);
        bus_.unregisterObject(objectPath);
    }
}

void SingleInstance::activate(const QVariantMap& platformData) {
    const auto startup = Startup::fromPlatformData(platformData);
    if (std::exchange(isStartedByBus_, false))
        Q_EMIT startedByHand(startup);
    else
        Q_EMIT activated(startup);
}

// The object is there before the name is: who starts the program by its name calls it at once.
SingleInstance::Role SingleInstance::claim() {
    if (!bus_.isConnected())
        return Role::first;
    bus_.registerObject(objectPath, this);
    const QDBusReply<QDBusConnectionInterface::RegisterServiceReply> reply =
        bus_.interface()->registerService(serviceName);
    if (reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceNotRegistered) {
        bus_.unregisterObject(objectPath);
        activateOther();
        return Role::second;
    }
    isFirst_ = true;
    return Role::first;
}

void SingleInstance::activateOther() {
    auto call = QDBusMessage::createMethodCall(serviceName, objectPath,
                                               QStringLiteral("org.freedesktop.Application"),
                                               QStringLiteral("Activate"));
    call << startup_.platformData();
    bus_.call(call, QDBus::Block, longestAnswer);
}

} // namespace kestrel::linux_shell
