#include "shells/linux/launching/shell_terminal.h"

#include "shells/linux/launching/glib_ptr.h"
#include "shells/linux/launching/scratch_folder.h"
#include "shells/linux/launching/terminal_choice.h"
#include "shells/linux/launching/terminal_window.h"

#include <gio/gdesktopappinfo.h>

#include <utility>

namespace kestrel::linux_shell {

namespace {

constexpr auto leftoverAge = std::chrono::hours(1);

struct ReleaseApplications {
    void operator()(GList* list) const { g_list_free_full(list, g_object_unref); }
};

/// Whether the entry starts the program `name` as a terminal: others start the same program for its
/// settings.
bool isTerminalEntry(GDesktopAppInfo* entry, const std::string& name) {
    const char* executable = g_app_info_get_executable(G_APP_INFO(entry));
    if (executable == nullptr)
        return false;
    const GlibText base(g_path_get_basename(executable));
    const char* categories = g_desktop_app_info_get_categories(entry);
    return name == base.get() && categories != nullptr &&
           std::string_view(categories).find("TerminalEmulator") != std::string_view::npos;
}

/// Reads all desktop entries: tens of milliseconds on a full system.
std::optional<std::string> findTerminalEntry(const std::string& name) {
    const std::unique_ptr<GList, ReleaseApplications> all(g_app_info_get_all());
    for (const GList* node = all.get(); node != nullptr; node = node->next) {
        auto* entry = static_cast<GDesktopAppInfo*>(node->data);
        const char* path = g_desktop_app_info_get_filename(entry);
        if (path != nullptr && isTerminalEntry(entry, name))
            return std::string(path);
    }
    return std::nullopt;
}

} // namespace

ShellTerminal::ShellTerminal(LaunchWorker& worker, ActivationSource activation)
    : worker_(worker), activation_(std::move(activation)) {
    worker_.async([] { sweepScratchFolders(scratchBases(), leftoverAge); });
}

void ShellTerminal::runInNewWindow(std::string_view command) {
    worker_.async([text = std::string(command), activation = activation_()] {
        openTerminalWindow(StartScript::command, text, activation);
    });
}

std::optional<std::string> ShellTerminal::applicationPath() {
    const TerminalSurroundings surroundings = processSurroundings();
    auto terminal = chooseVisibleTerminal(surroundings);
    if (!terminal)
        terminal = chooseTerminal(surroundings);
    if (!terminal)
        return std::nullopt;
    const std::string name = terminalName(surroundings, terminal->program);
    const auto known = entryOfTerminal_.find(name);
    if (known != entryOfTerminal_.end())
        return known->second;
    std::string path = findTerminalEntry(name).value_or(terminal->program);
    return entryOfTerminal_.emplace(name, std::move(path)).first->second;
}

} // namespace kestrel::linux_shell
