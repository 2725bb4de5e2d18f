#include "shells/linux/launching/terminal_application.h"

#include "shells/linux/glib/glib_ptr.h"
#include "shells/linux/launching/terminal_choice.h"

#include <gio/gdesktopappinfo.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <string_view>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace kestrel::linux_shell {

namespace {

constexpr std::chrono::milliseconds endTimeout{200};

constexpr std::string_view terminalCategory = "TerminalEmulator";

/// Whether the entry starts the program `name` as a terminal: others start the same program for its
/// settings.
bool isTerminalEntry(GDesktopAppInfo* entry, const std::string& name) {
    const char* executable = g_app_info_get_executable(G_APP_INFO(entry));
    if (executable == nullptr)
        return false;
    const GlibText base(g_path_get_basename(executable));
    const char* categories = g_desktop_app_info_get_categories(entry);
    return name == base.get() && categories != nullptr &&
           std::string_view(categories).find(terminalCategory) != std::string_view::npos;
}

bool mayBeTerminalEntry(const std::filesystem::path& file) {
    char* text = nullptr;
    gsize length = 0;
    if (file.extension() != ".desktop" ||
        g_file_get_contents(file.c_str(), &text, &length, nullptr) == FALSE)
        return false;
    const GlibText owner(text);
    return std::string_view(text, length).find(terminalCategory) != std::string_view::npos;
}

/// The ids of the entries in a folder of applications that may be terminals.
std::vector<std::string> possibleTerminals(const std::filesystem::path& folder) {
    std::vector<std::string> ids;
    std::error_code error;
    for (std::filesystem::recursive_directory_iterator at(folder, error), end; !error && at != end;
         at.increment(error)) {
        if (!mayBeTerminalEntry(at->path()))
            continue;
        std::string id = at->path().lexically_relative(folder).string();
        std::ranges::replace(id, '/', '-');
        ids.push_back(std::move(id));
    }
    return ids;
}

std::vector<std::filesystem::path> applicationFolders() {
    std::vector<std::filesystem::path> folders{std::filesystem::path(g_get_user_data_dir())};
    for (const char* const* folder = g_get_system_data_dirs(); *folder != nullptr; ++folder)
        folders.emplace_back(*folder);
    for (auto& folder : folders)
        folder /= "applications";
    return folders;
}

/// GIO has the last word on an entry: one folder's may hide another's, and a program may be
/// missing. It is not asked for all, since it would read each line of each, ten times as much work.
std::optional<std::string> findTerminalEntry(const std::string& name) {
    // Watches for changes only once it has looked for an application.
    const ObjectPtr<GDesktopAppInfo> none(g_desktop_app_info_new(".desktop"));
    for (const auto& folder : applicationFolders()) {
        for (const std::string& id : possibleTerminals(folder)) {
            const ObjectPtr<GDesktopAppInfo> entry(g_desktop_app_info_new(id.c_str()));
            const char* path = entry ? g_desktop_app_info_get_filename(entry.get()) : nullptr;
            if (path != nullptr && isTerminalEntry(entry.get(), name))
                return std::string(path);
        }
    }
    return std::nullopt;
}

} // namespace

/// Shared with the thread. The mutex guards all but the search.
struct TerminalApplication::State {
    Search search;
    std::mutex mutex;
    std::condition_variable ended;
    std::function<void()> changed;
    std::optional<std::string> path;
    GMainContext* context = nullptr; ///< of the thread, while it runs
    bool isStopping = false;

    void run() {
        const GlibMainContext own(g_main_context_new());
        g_main_context_push_thread_default(own.get());
        {
            const std::lock_guard lock(mutex);
            context = own.get();
        }
        searchAtEachChange(own.get());
        g_main_context_pop_thread_default(own.get());
        const std::lock_guard lock(mutex);
        context = nullptr;
        ended.notify_all();
    }

    void searchAtEachChange(GMainContext* own) {
        bool isOutdated = true;
        // It tells of changes since the last search.
        const ObjectPtr<GAppInfoMonitor> monitor(g_app_info_monitor_get());
        g_signal_connect_swapped(monitor.get(), "changed",
                                 G_CALLBACK(+[](bool* outdated) { *outdated = true; }),
                                 &isOutdated);
        while (!mustStop())
            if (std::exchange(isOutdated, false))
                publish(search());
            else
                g_main_context_iteration(own, TRUE);
        g_signal_handlers_disconnect_by_data(monitor.get(), &isOutdated);
    }

    bool mustStop() {
        const std::lock_guard lock(mutex);
        return isStopping;
    }

    void publish(std::optional<std::string> found) {
        const std::lock_guard lock(mutex);
        if (std::exchange(path, std::move(found)) != path && changed)
            changed();
    }
};

TerminalApplication::TerminalApplication(std::function<void()> changed, Search search)
    : state_(std::make_shared<State>()) {
    state_->search = std::move(search);
    state_->changed = std::move(changed);
}

TerminalApplication::~TerminalApplication() {
    std::unique_lock lock(state_->mutex);
    state_->changed = nullptr;
    state_->isStopping = true;
    if (state_->context != nullptr)
        g_main_context_wakeup(state_->context);
    state_->ended.wait_for(lock, endTimeout, [this] { return state_->context == nullptr; });
}

std::optional<std::string> TerminalApplication::path() {
    if (!std::exchange(isStarted_, true))
        std::thread([state = state_] { state->run(); }).detach();
    const std::lock_guard lock(state_->mutex);
    return state_->path;
}

std::optional<std::string> TerminalApplication::findTerminalApplication() {
    const TerminalEnvironment environment = processEnvironment();
    auto terminal = chooseVisibleTerminal(environment);
    if (!terminal)
        terminal = chooseTerminal(environment);
    if (!terminal)
        return std::nullopt;
    const auto entry = findTerminalEntry(terminalName(environment, terminal->program));
    return entry ? entry : terminal->program;
}

} // namespace kestrel::linux_shell
