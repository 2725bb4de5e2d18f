#include "shells/linux/launching/desktop_entry.h"

#include "shells/linux/glib/glib_ptr.h"
#include "shells/linux/launching/child_process.h"
#include "shells/linux/launching/terminal_choice.h"
#include "shells/linux/posix/environment.h"

#include <gio/gdesktopappinfo.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <memory>
#include <utility>

namespace kestrel::linux_shell {

namespace {

using Entry = ObjectPtr<GDesktopAppInfo>;

/// A hundred times the largest that systems have.
constexpr off_t largestEntry = 4 << 20; // bytes

/// What is left to do when the bus has not started the application.
struct PendingCall {
    std::string path;
    std::optional<std::string> uri;
    Activation activation;
};

std::string stringOf(GDesktopAppInfo* entry, const char* key) {
    const GlibText value(g_desktop_app_info_get_string(entry, key));
    return value ? std::string(value.get()) : std::string();
}

/// `word` as one word of a command line in an entry, in which "%" begins a field code.
std::string quotedForExec(const std::string& word) {
    const GlibText quoted(g_shell_quote(word.c_str()));
    std::string result;
    for (const char* character = quoted.get(); *character != '\0'; ++character)
        result.append(*character == '%' ? 2 : 1, *character);
    return result;
}

/// The connection to the session bus that GIO shares in the process, also with its own launching;
/// null without a bus. Unless told otherwise it ends the whole program together with the bus.
ObjectPtr<GDBusConnection> sharedBus() {
    ObjectPtr<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (bus)
        g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
    return bus;
}

/// The environment of what is launched. Entries without StartupNotify have the activation too, as
/// from GNOME and KDE: many programs without it do raise their window, and others ignore it.
ObjectPtr<GAppLaunchContext> contextWith(const Activation& activation) {
    ObjectPtr<GAppLaunchContext> context(g_app_launch_context_new());
    for (const auto& [name, value] : activation.environment())
        g_app_launch_context_setenv(context.get(), name, value.c_str());
    return context;
}

/// Runs the entry's command line.
void spawn(GDesktopAppInfo* entry, const std::optional<std::string>& uri,
           const Activation& activation) {
    const auto bus = sharedBus();
    // GLib has a working folder of its own for the child only when the entry names one.
    std::string home = homeFolder();
    void* folder = stringOf(entry, G_KEY_FILE_DESKTOP_KEY_PATH).empty() ? home.data() : nullptr;
    std::string argument = uri.value_or("");
    GList list{.data = argument.data(), .next = nullptr, .prev = nullptr};
    const Descriptor null = openNullDevice();
    g_desktop_app_info_launch_uris_as_manager_with_fds(
        entry, uri ? &list : nullptr, contextWith(activation).get(), G_SPAWN_SEARCH_PATH,
        prepareChild, folder, nullptr, nullptr, null.number(), null.number(), null.number(),
        nullptr);
}

/// A copy of the entry that is neither activated over the bus nor run in the terminals that GLib
/// knows: 2.74 has a fixed list without most of today's.
Entry plainCopy(const std::string& path, const std::vector<std::string>& prefix) {
    const GlibKeyFile file(g_key_file_new());
    if (!g_key_file_load_from_file(file.get(), path.c_str(), G_KEY_FILE_NONE, nullptr))
        return nullptr;
    const GlibText exec(g_key_file_get_string(file.get(), G_KEY_FILE_DESKTOP_GROUP,
                                              G_KEY_FILE_DESKTOP_KEY_EXEC, nullptr));
    if (!exec || exec.get()[0] == '\0')
        return nullptr;
    const std::string line = execBehind(prefix, expandEntryLocation(exec.get(), path));
    g_key_file_set_string(file.get(), G_KEY_FILE_DESKTOP_GROUP, G_KEY_FILE_DESKTOP_KEY_EXEC,
                          line.c_str());
    for (const char* key :
         {G_KEY_FILE_DESKTOP_KEY_TERMINAL, G_KEY_FILE_DESKTOP_KEY_DBUS_ACTIVATABLE})
        g_key_file_remove_key(file.get(), G_KEY_FILE_DESKTOP_GROUP, key, nullptr);
    return Entry(g_desktop_app_info_new_from_keyfile(file.get()));
}

void spawnPlainCopy(const std::string& path, const std::vector<std::string>& prefix,
                    const std::optional<std::string>& uri, const Activation& activation) {
    if (const Entry copy = plainCopy(path, prefix))
        spawn(copy.get(), uri, activation);
}

/// The words that run what follows them in the user's terminal; nothing without a terminal.
std::optional<std::vector<std::string>> terminalPrefix() {
    const auto terminal = chooseTerminal(processEnvironment());
    if (!terminal)
        return std::nullopt;
    std::vector<std::string> words = terminal->prefix();
    std::ranges::copy(withoutActivation(), std::back_inserter(words));
    return words;
}

/// Whether the error says for certain that nothing has been started. A time-out does not: the
/// application may be on its way, and a second start would show it twice.
bool meansNotStarted(const GError* error) {
    constexpr std::array codes = {G_DBUS_ERROR_SERVICE_UNKNOWN,
                                  G_DBUS_ERROR_NAME_HAS_NO_OWNER,
                                  G_DBUS_ERROR_SPAWN_EXEC_FAILED,
                                  G_DBUS_ERROR_SPAWN_FORK_FAILED,
                                  G_DBUS_ERROR_SPAWN_CHILD_EXITED,
                                  G_DBUS_ERROR_SPAWN_CHILD_SIGNALED,
                                  G_DBUS_ERROR_SPAWN_FAILED,
                                  G_DBUS_ERROR_SPAWN_SETUP_FAILED,
                                  G_DBUS_ERROR_SPAWN_CONFIG_INVALID,
                                  G_DBUS_ERROR_SPAWN_SERVICE_INVALID,
                                  G_DBUS_ERROR_SPAWN_SERVICE_NOT_FOUND,
                                  G_DBUS_ERROR_SPAWN_PERMISSIONS_INVALID,
                                  G_DBUS_ERROR_SPAWN_FILE_INVALID,
                                  G_DBUS_ERROR_SPAWN_NO_MEMORY};
    return std::ranges::any_of(
        codes, [error](GDBusError code) { return g_error_matches(error, G_DBUS_ERROR, code); });
}

void activationAnswered(GObject* bus, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<PendingCall> call(static_cast<PendingCall*>(data));
    GError* error = nullptr;
    GVariant* answer = g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, &error);
    if (answer != nullptr) {
        g_variant_unref(answer);
        return;
    }
    // Nobody has received the call, so the activation in it is still unused.
    if (meansNotStarted(error))
        spawnPlainCopy(call->path, {}, call->uri, call->activation);
    g_error_free(error);
}

/// The bus name of an activatable entry is its file name without the suffix; nothing when that is
/// no such name.
std::optional<std::string> busName(const std::string& path) {
    constexpr std::string_view suffix = ".desktop";
    std::string name = path.substr(path.rfind('/') + 1);
    if (!name.ends_with(suffix))
        return std::nullopt;
    name.resize(name.size() - suffix.size());
    if (!g_dbus_is_name(name.c_str()) || g_dbus_is_unique_name(name.c_str()))
        return std::nullopt;
    return name;
}

GVariant* platformDataOf(const Activation& activation) {
    GVariantBuilder data;
    g_variant_builder_init(&data, G_VARIANT_TYPE_VARDICT);
    for (const auto& [name, value] : activation.platformData())
        g_variant_builder_add(&data, "{sv}", name, g_variant_new_string(value.c_str()));
    return g_variant_builder_end(&data);
}

/// Asks the session bus for the application. False when it cannot be asked.
bool activate(const std::string& path, const std::optional<std::string>& uri,
              const Activation& activation) {
    const auto name = busName(path);
    if (!name)
        return false;
    const auto bus = sharedBus();
    if (!bus || g_dbus_connection_is_closed(bus.get()))
        return false;
    std::string object = '/' + *name;
    std::ranges::replace(object, '.', '/');
    std::ranges::replace(object, '-', '_');
    const std::array<const char*, 2> uris = {uri ? uri->c_str() : nullptr, nullptr};
    GVariant* data = platformDataOf(activation);
    GVariant* arguments =
        uri ? g_variant_new("(^as@a{sv})", uris.data(), data) : g_variant_new("(@a{sv})", data);
    g_dbus_connection_call(bus.get(), name->c_str(), object.c_str(), "org.freedesktop.Application",
                           uri ? "Open" : "Activate", arguments, nullptr, G_DBUS_CALL_FLAGS_NONE,
                           -1, nullptr, activationAnswered, new PendingCall{path, uri, activation});
    // The program may end right after the click.
    g_dbus_connection_flush_sync(bus.get(), nullptr, nullptr);
    return true;
}

} // namespace

bool mayBeDesktopEntry(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
           status.st_size <= largestEntry;
}

std::string expandEntryLocation(const std::string& exec, const std::string& path) {
    std::string result;
    for (std::size_t i = 0; i < exec.size(); ++i) {
        result += exec[i];
        if (exec[i] != '%' || i + 1 == exec.size())
            continue;
        ++i;
        if (exec[i] == 'k')
            result.replace(result.size() - 1, 1, quotedForExec(path));
        else
            result += exec[i];
    }
    return result;
}

std::string execBehind(const std::vector<std::string>& prefix, const std::string& exec) {
    std::string line;
    for (const std::string& word : prefix)
        line += quotedForExec(word) + ' ';
    return line + exec;
}

void launchDesktopEntry(const std::string& path, const std::optional<std::string>& uri,
                        const Activation& activation) {
    if (!mayBeDesktopEntry(path))
        return;
    const Entry entry(g_desktop_app_info_new_from_filename(path.c_str()));
    if (!entry)
        return;
    if (g_desktop_app_info_get_boolean(entry.get(), G_KEY_FILE_DESKTOP_KEY_TERMINAL)) {
        if (const auto prefix = terminalPrefix())
            spawnPlainCopy(path, *prefix, uri, activation);
    } else if (g_desktop_app_info_get_boolean(entry.get(),
                                              G_KEY_FILE_DESKTOP_KEY_DBUS_ACTIVATABLE)) {
        if (!activate(path, uri, activation))
            spawnPlainCopy(path, {}, uri, activation);
    } else {
        spawn(entry.get(), uri, activation);
    }
}

} // namespace kestrel::linux_shell
