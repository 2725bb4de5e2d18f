// Entries that are activated over the session bus, with a private bus.

#include "shells/linux/glib/glib_ptr.h"
#include "shells/linux/launching/desktop_entry.h"
#include "shells/linux/launching/gio_workspace.h"
#include "tests/linux/launching/launching_fixture.h"

#include <cstdlib>

namespace kestrel::linux_shell {
namespace {

constexpr const char* applicationInterface =
    "<node><interface name='org.freedesktop.Application'>"
    "<method name='Activate'><arg type='a{sv}' direction='in'/></method>"
    "<method name='Open'><arg type='as' direction='in'/><arg type='a{sv}' direction='in'/></method>"
    "</interface></node>";

/// A running application that answers on the bus; its calls arrive in the default main context.
class RunningApplication {
  public:
    RunningApplication(const char* address, const char* name, const char* object)
        : bus_(g_dbus_connection_new_for_address_sync(
              address,
              GDBusConnectionFlags(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                   G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
              nullptr, nullptr, nullptr)) {
        GDBusNodeInfo* node = g_dbus_node_info_new_for_xml(applicationInterface, nullptr);
        const GDBusInterfaceVTable table{
            .method_call = called, .get_property = nullptr, .set_property = nullptr, .padding = {}};
        g_dbus_connection_register_object(bus_.get(), object, node->interfaces[0], &table, this,
                                          nullptr, nullptr);
        g_dbus_node_info_unref(node);
        GVariant* answer = g_dbus_connection_call_sync(
            bus_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
            "RequestName", g_variant_new("(su)", name, 0U), nullptr, G_DBUS_CALL_FLAGS_NONE, -1,
            nullptr, nullptr);
        EXPECT_NE(answer, nullptr);
        g_variant_unref(answer);
    }
    ~RunningApplication() { g_dbus_connection_close_sync(bus_.get(), nullptr, nullptr); }
    RunningApplication(const RunningApplication&) = delete;
    RunningApplication& operator=(const RunningApplication&) = delete;

    std::vector<std::string> waitForCalls(std::size_t count = 1) {
        waitUntil([this, count] {
            g_main_context_iteration(nullptr, FALSE);
            return calls_.size() >= count;
        });
        return calls_;
    }

  private:
    static void called(GDBusConnection*, const char*, const char*, const char*, const char* method,
                       GVariant* arguments, GDBusMethodInvocation* invocation, void* self) {
        const GlibText text(g_variant_print(arguments, FALSE));
        static_cast<RunningApplication*>(self)->calls_.push_back(std::string(method) + text.get());
        g_dbus_method_invocation_return_value(invocation, nullptr);
    }

    ObjectPtr<GDBusConnection> bus_;
    std::vector<std::string> calls_;
};

/// One bus for all tests: GIO shares one connection in a process and may keep it.
class SessionBusTest : public LaunchingTest {
  protected:
    static void SetUpTestSuite() {
        if (installedProgram("dbus-daemon").empty())
            return;
        ::unsetenv("DBUS_SESSION_BUS_ADDRESS");
        services = new TemporaryFolder;
        writeFile(services->path() / "broken.service",
                  "[D-BUS Service]\nName=org.example.Broken\nExec=/bin/false\n");
        bus = g_test_dbus_new(G_TEST_DBUS_NONE);
        g_test_dbus_add_service_dir(bus, services->path().c_str());
        g_test_dbus_up(bus);
    }

    static void TearDownTestSuite() {
        if (bus == nullptr)
            return;
        ::setenv("DBUS_SESSION_BUS_ADDRESS", g_test_dbus_get_bus_address(bus), 1);
        const ObjectPtr<GDBusConnection> shared(
            g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
        g_dbus_connection_set_exit_on_close(shared.get(), FALSE);
        g_test_dbus_stop(bus);
        delete services;
    }

    void SetUp() override {
        if (bus == nullptr)
            GTEST_SKIP() << "DBUS-DAEMON IS NOT INSTALLED: activation is not tested";
        ::setenv("DBUS_SESSION_BUS_ADDRESS", g_test_dbus_get_bus_address(bus), 1);
    }

    void openApplication(const std::string& path, const Activation& activation = {}) {
        GioWorkspace(*worker, [activation] { return activation; }).openApplication(path);
    }

    static inline TemporaryFolder* services = nullptr;
    /// Never released: that would wait for half a minute for an answer which a test leaves out.
    static inline GTestDBus* bus = nullptr;
    std::unique_ptr<LaunchWorker> worker = std::make_unique<LaunchWorker>();
};

TEST_F(SessionBusTest, ARunningApplicationIsActivatedAndNotStartedAgain) {
    RunningApplication application(g_test_dbus_get_bus_address(bus), "org.example.My-App",
                                   "/org/example/My_App");
    openApplication(
        makeEntry("org.example.My-App.desktop", "DBusActivatable=true\nExec=" + recorder() + "\n"));
    EXPECT_EQ(application.waitForCalls(), std::vector<std::string>{"Activate({},)"});
    EXPECT_TRUE(records().empty());
}

TEST_F(SessionBusTest, ARunningApplicationOpensADocument) {
    RunningApplication application(g_test_dbus_get_bus_address(bus), "org.example.Editor",
                                   "/org/example/Editor");
    const std::string entry = makeEntry("org.example.Editor.desktop",
                                        "DBusActivatable=true\nExec=" + recorder() + " %u\n");
    worker->async([entry] { launchDesktopEntry(entry, "file:///tmp/a%20b", {}); });
    EXPECT_EQ(application.waitForCalls(),
              std::vector<std::string>{"Open(['file:///tmp/a%20b'], {})"});
    EXPECT_TRUE(records().empty());
}

TEST_F(SessionBusTest, ARunningApplicationIsToldTheActivation) {
    RunningApplication application(g_test_dbus_get_bus_address(bus), "org.example.Told",
                                   "/org/example/Told");
    const std::string entry =
        makeEntry("org.example.Told.desktop", "DBusActivatable=true\nExec=" + recorder() + "\n");
    openApplication(entry, {.token = "token", .startupId = "id"});
    const std::string data = "{'activation-token': <'token'>, 'desktop-startup-id': <'id'>}";
    EXPECT_EQ(application.waitForCalls(), std::vector<std::string>{"Activate(" + data + ",)"});
    worker->async([entry] { launchDesktopEntry(entry, "file:///a", {"token", "id"}); });
    EXPECT_EQ(application.waitForCalls(2).back(), "Open(['file:///a'], " + data + ")");
}

TEST_F(SessionBusTest, TheFallbackHasTheActivationThatNobodyReceived) {
    openApplication(
        makeEntry("org.example.Missing.desktop", "DBusActivatable=true\nExec=" + recorder() + "\n"),
        {.token = "token", .startupId = "id"});
    const LaunchRecord record = waitForRecord();
    EXPECT_EQ(record.fields.at("XDG_ACTIVATION_TOKEN"), "token");
    EXPECT_EQ(record.fields.at("DESKTOP_STARTUP_ID"), "id");
}

TEST_F(SessionBusTest, AMissingServiceFallsBackToTheCommandLine) {
    openApplication(makeEntry("org.example.Missing.desktop",
                              "DBusActivatable=true\nExec=" + recorder() + " a\n"));
    EXPECT_EQ(waitForRecord().arguments, (std::vector<std::string>{recorder(), "a"}));
}

TEST_F(SessionBusTest, AServiceThatCannotStartFallsBackToTheCommandLine) {
    openApplication(makeEntry("org.example.Broken.desktop",
                              "DBusActivatable=true\nExec=" + recorder() + " a\n"));
    EXPECT_EQ(waitForRecord().arguments, (std::vector<std::string>{recorder(), "a"}));
}

TEST_F(SessionBusTest, AnEntryWithoutABusNameRunsItsCommandLine) {
    openApplication(
        makeEntry("noname.desktop", "DBusActivatable=true\nExec=" + recorder() + " a\n"));
    EXPECT_EQ(waitForRecord().arguments, (std::vector<std::string>{recorder(), "a"}));
}

TEST_F(SessionBusTest, AnApplicationActivatedRightBeforeTheEndIsStillActivated) {
    RunningApplication application(g_test_dbus_get_bus_address(bus), "org.example.App",
                                   "/org/example/App");
    openApplication(
        makeEntry("org.example.App.desktop", "DBusActivatable=true\nExec=" + recorder() + "\n"));
    worker.reset();
    EXPECT_EQ(application.waitForCalls(), std::vector<std::string>{"Activate({},)"});
}

TEST_F(SessionBusTest, AnEntryThatWasLaunchedDoesNotTieTheProgramToTheBus) {
    const ObjectPtr<GDBusConnection> shared(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    for (const std::string lines : {"", "DBusActivatable=true\n"}) {
        SCOPED_TRACE(lines);
        g_dbus_connection_set_exit_on_close(shared.get(), TRUE);
        openApplication(
            makeEntry("org.example.Missing.desktop", lines + "Exec=" + recorder() + "\n"));
        waitForRecord();
        EXPECT_FALSE(g_dbus_connection_get_exit_on_close(shared.get()));
        forgetRecords();
    }
}

} // namespace
} // namespace kestrel::linux_shell
