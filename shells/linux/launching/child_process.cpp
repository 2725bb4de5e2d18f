#include "shells/linux/launching/child_process.h"

#include <fcntl.h>
#include <glib.h>
#include <pwd.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>

namespace kestrel::linux_shell {

NullDevice::NullDevice() : descriptor_(::open("/dev/null", O_RDWR | O_CLOEXEC)) {}

NullDevice::~NullDevice() {
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

std::string homeFolder() {
    // Not g_get_home_dir(), which keeps its first answer for good.
    if (const char* home = std::getenv("HOME"); home != nullptr && home[0] == '/')
        return home;
    std::vector<char> buffer(16384);
    struct passwd entry {};
    struct passwd* found = nullptr;
    if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 &&
        found != nullptr && found->pw_dir != nullptr && found->pw_dir[0] == '/')
        return found->pw_dir;
    return "/";
}

bool isUsablePath(std::string_view path) {
    return path.starts_with('/') && path.find('\0') == std::string_view::npos;
}

void prepareChild(void* folder) {
    ::setsid();
    // What we ignore (SIGPIPE, say) would stay ignored across exec.
    for (int number = 1; number < NSIG; ++number)
        std::signal(number, SIG_DFL);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    if (folder != nullptr && ::chdir(static_cast<const char*>(folder)) != 0 && ::chdir("/") != 0)
        return;
}

bool spawnDetached(const std::vector<std::string>& arguments) {
    std::vector<char*> pointers;
    pointers.reserve(arguments.size() + 1);
    for (const std::string& argument : arguments)
        pointers.push_back(const_cast<char*>(argument.c_str()));
    pointers.push_back(nullptr);
    std::string home = homeFolder();
    const NullDevice null;
    return g_spawn_async_with_fds(nullptr, pointers.data(), nullptr, G_SPAWN_DEFAULT, prepareChild,
                                  home.data(), nullptr, null.descriptor(), null.descriptor(),
                                  null.descriptor(), nullptr) != FALSE;
}

} // namespace kestrel::linux_shell
