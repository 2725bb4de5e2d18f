#include "tests/linux/desktop/private_bus.h"

#include "tests/linux/desktop/waiting.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QFile>

namespace kestrel::linux_shell {
namespace {

// The daemon's own configuration of a session names the machine's services.
constexpr const char* configuration = R"(<busconfig>
  <type>session</type>
  <listen>unix:tmpdir=/tmp</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

} // namespace

PrivateBus::PrivateBus() {
    QFile file(folder_.filePath(QStringLiteral("bus.conf")));
    if (!file.open(QIODevice::WriteOnly) || file.write(configuration) < 0)
        qFatal("no place for a bus's configuration");
    file.close();
    daemon_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    daemon_.start(QStringLiteral("dbus-daemon"),
                  {QStringLiteral("--config-file=") + file.fileName(), QStringLiteral("--nofork"),
                   QStringLiteral("--nopidfile"), QStringLiteral("--print-address=1")});
    if (!waitUntil([this] { return daemon_.canReadLine(); }))
        qFatal("dbus-daemon does not start");
    address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
}

PrivateBus::~PrivateBus() {
    for (const auto& name : names_)
        QDBusConnection::disconnectFromBus(name);
    daemon_.terminate();
    daemon_.waitForFinished();
}

QDBusConnection PrivateBus::connect() {
    static int counter = 0;
    names_.append(QStringLiteral("test-%1").arg(++counter));
    return QDBusConnection::connectToBus(address_, names_.last());
}

void PrivateBus::disconnect(const QDBusConnection& connection) {
    names_.removeAll(connection.name());
    QDBusConnection::disconnectFromBus(connection.name());
}

QDBusMessage callAndWait(const QDBusConnection& from, const QString& service, const QString& path,
                         const QString& interface, const QString& method,
                         const QVariantList& arguments) {
    auto message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    const auto call = from.asyncCall(message);
    waitUntil([&call] { return call.isFinished(); });
    return call.reply();
}

} // namespace kestrel::linux_shell
