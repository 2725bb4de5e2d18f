#include "shells/linux/launching/gio_workspace.h"

#include "shells/linux/glib/glib_ptr.h"
#include "shells/linux/launching/child_process.h"
#include "shells/linux/launching/command_file.h"
#include "shells/linux/launching/desktop_entry.h"
#include "shells/linux/launching/terminal_window.h"

#include <gio/gdesktopappinfo.h>
#include <unistd.h>

#include <string>

namespace kestrel::linux_shell {

namespace {

void launchApplication(const std::string& path, const Activation& activation) {
    switch (classifyFile(path)) {
    case FileKind::desktopEntry:
        launchDesktopEntry(path, std::nullopt, activation);
        return;
    case FileKind::runnable:
    case FileKind::document:
        if (::access(path.c_str(), X_OK) == 0)
            spawnDetached({path}, activation);
        return;
    case FileKind::folder:
    case FileKind::nothing:
        return;
    }
}

void openWithDefaultApplication(const std::string& path, const Activation& activation) {
    const ObjectPtr<GFile> file(g_file_new_for_path(path.c_str()));
    const ObjectPtr<GAppInfo> handler(g_file_query_default_handler(file.get(), nullptr, nullptr));
    if (!handler || !G_IS_DESKTOP_APP_INFO(handler.get()))
        return;
    const char* entry = g_desktop_app_info_get_filename(G_DESKTOP_APP_INFO(handler.get()));
    const GlibText uri(g_file_get_uri(file.get()));
    if (entry != nullptr)
        launchDesktopEntry(entry, uri.get(), activation);
}

void openByKind(const std::string& path, const Activation& activation) {
    switch (classifyFile(path)) {
    case FileKind::desktopEntry:
        launchDesktopEntry(path, std::nullopt, activation);
        return;
    case FileKind::runnable:
        openTerminalWindow(StartScript::file, path, activation);
        return;
    case FileKind::folder:
    case FileKind::document:
        openWithDefaultApplication(path, activation);
        return;
    case FileKind::nothing:
        return;
    }
}

} // namespace

void GioWorkspace::openApplication(std::string_view path) {
    if (isUsablePath(path))
        worker_.async([file = std::string(path), activation = activation_()] {
            launchApplication(file, activation);
        });
}

void GioWorkspace::openFile(std::string_view path) {
    if (isUsablePath(path))
        worker_.async([file = std::string(path), activation = activation_()] {
            openByKind(file, activation);
        });
}

} // namespace kestrel::linux_shell
