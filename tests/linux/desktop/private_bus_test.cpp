#include "tests/linux/desktop/private_bus.h"

#include <QDBusMessage>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace kestrel::linux_shell {
namespace {

TEST(PrivateBusTest, KnowsNoServicesOfTheMachines) {
    const QTemporaryDir machine;
    QDir(machine.path()).mkpath(QStringLiteral("dbus-1/services"));
    QFile service(machine.filePath(QStringLiteral("dbus-1/services/org.example.Planted.service")));
    ASSERT_TRUE(service.open(QIODevice::WriteOnly));
    service.write("[D-BUS Service]\nName=org.example.Planted\nExec=/bin/false\n");
    service.close();
    const QByteArray before = qgetenv("XDG_DATA_DIRS");
    qputenv("XDG_DATA_DIRS", machine.path().toUtf8());
    PrivateBus bus;
    before.isNull() ? qunsetenv("XDG_DATA_DIRS") : qputenv("XDG_DATA_DIRS", before);
    const auto answer =
        callAndWait(bus.connect(), QStringLiteral("org.freedesktop.DBus"),
                    QStringLiteral("/org/freedesktop/DBus"), QStringLiteral("org.freedesktop.DBus"),
                    QStringLiteral("ListActivatableNames"));
    ASSERT_EQ(answer.arguments().size(), 1);
    EXPECT_EQ(answer.arguments().first().toStringList(),
              QStringList{QStringLiteral("org.freedesktop.DBus")});
}

} // namespace
} // namespace kestrel::linux_shell
