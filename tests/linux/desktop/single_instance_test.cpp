#include "shells/linux/desktop/single_instance.h"

#include "tests/linux/desktop/private_bus.h"
#include "tests/linux/desktop/waiting.h"

#include <QDBusMessage>

#include <gmock/gmock.h>

#include <optional>
#include <thread>

namespace kestrel::linux_shell {
namespace {

using Role = SingleInstance::Role;

/// Counts the activations of an instance.
struct Program {
    explicit Program(const QDBusConnection& bus) : instance(bus, Startup{}) {
        QObject::connect(&instance, &SingleInstance::activated, &instance,
                         [this](const Startup& startup) {
                             ++activations;
                             last = startup;
                         });
        QObject::connect(&instance, &SingleInstance::startedByHand, &instance,
                         [this](const Startup& startup) {
                             ++ownStarts;
                             last = startup;
                         });
    }
    SingleInstance instance;
    int activations = 0;
    int ownStarts = 0;
    Startup last;
};

class SingleInstanceTest : public testing::Test {
  protected:
    void TearDown() override { qunsetenv("DBUS_STARTER_BUS_TYPE"); }

    void call(const QString& method, const QVariantList& arguments) {
        callAndWait(outside, QStringLiteral("app.kestrel.Kestrel"),
                    QStringLiteral("/app/kestrel/Kestrel"),
                    QStringLiteral("org.freedesktop.Application"), method, arguments);
    }

    PrivateBus bus;
    QDBusConnection outside = bus.connect();
};

TEST_F(SingleInstanceTest, FirstOneIsTheProgram) {
    Program program(bus.connect());
    EXPECT_EQ(program.instance.claim(), Role::first);
    EXPECT_EQ(program.activations, 0);
}

TEST_F(SingleInstanceTest, SecondOneActivatesTheFirst) {
    Program first(bus.connect());
    ASSERT_EQ(first.instance.claim(), Role::first);
    const auto connection = bus.connect();
    std::optional<Role> role;
    // As the two processes do: the second waits while the first one's event loop runs.
    std::thread second([&] {
        role =
            SingleInstance(connection, {.id = QStringLiteral("id"), .activationToken = {}}).claim();
    });
    EXPECT_TRUE(waitUntil([&] { return first.activations == 1; }));
    second.join();
    EXPECT_EQ(role, Role::second);
    EXPECT_EQ(first.last.id, QStringLiteral("id"));
}

TEST_F(SingleInstanceTest, NameIsFreeAgainWhenTheFirstOneHasEnded) {
    {
        Program first(bus.connect());
        ASSERT_EQ(first.instance.claim(), Role::first);
    }
    Program next(bus.connect());
    EXPECT_EQ(next.instance.claim(), Role::first);
}

TEST_F(SingleInstanceTest, AnswersTheDesktopsActivation) {
    Program program(bus.connect());
    ASSERT_EQ(program.instance.claim(), Role::first);
    call(QStringLiteral("Activate"), {QVariantMap()});
    EXPECT_EQ(program.activations, 1);
    call(QStringLiteral("Open"),
         {QStringList{QStringLiteral("file:///nonexistent")}, QVariantMap()});
    EXPECT_EQ(program.activations, 2);
}

TEST_F(SingleInstanceTest, HasNoActions) {
    Program program(bus.connect());
    ASSERT_EQ(program.instance.claim(), Role::first);
    call(QStringLiteral("ActivateAction"), {QStringLiteral("quit"), QVariantList(), QVariantMap()});
    EXPECT_EQ(program.activations, 0);
}

TEST_F(SingleInstanceTest, ItsOwnStartByTheBusIsNoActivation) {
    qputenv("DBUS_STARTER_BUS_TYPE", "session");
    Program program(bus.connect());
    EXPECT_FALSE(qEnvironmentVariableIsSet("DBUS_STARTER_BUS_TYPE"));
    ASSERT_EQ(program.instance.claim(), Role::first);
    call(QStringLiteral("Activate"),
         {QVariantMap{{QStringLiteral("desktop-startup-id"), QStringLiteral("id")}}});
    EXPECT_EQ(program.last.id, QStringLiteral("id"));
    EXPECT_EQ(program.activations, 0);
    EXPECT_EQ(program.ownStarts, 1) << "the bus starts a program when its user wants it";
    call(QStringLiteral("Activate"), {QVariantMap()});
    EXPECT_EQ(program.activations, 1);
    EXPECT_EQ(program.ownStarts, 1);
}

TEST(SingleInstanceWithoutABusTest, EveryOneIsTheProgram) {
    const QDBusConnection none(QStringLiteral("no such connection"));
    SingleInstance one(none, Startup{});
    SingleInstance other(none, Startup{});
    EXPECT_EQ(one.claim(), Role::first);
    EXPECT_EQ(other.claim(), Role::first);
}

} // namespace
} // namespace kestrel::linux_shell
