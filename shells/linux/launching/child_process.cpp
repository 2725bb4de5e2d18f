#include "shells/linux/launching/child_process.h"

#include "shells/linux/launching/glib_ptr.h"
#include "shells/linux/launching/launch_environment.h"

#include <fcntl.h>
#include <glib.h>
#include <pwd.h>
#include <unistd.h>

#include <csignal>

namespace kestrel::linux_shell {

namespace {

/// The absolute path in the variable `name`, or in that field of the user's entry among the
/// accounts, or `otherwise`.
std::string pathFrom(const char* name, char* passwd::*field, const char* otherwise) {
    if (std::string value = environmentVariable(name); value.starts_with('/'))
        return value;
    std::vector<char> buffer(16384);
    struct passwd entry {};
    struct passwd* found = nullptr;
    if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 &&
        found != nullptr && found->*field != nullptr && (found->*field)[0] == '/')
        return found->*field;
    return otherwise;
}

} // namespace

NullDevice::NullDevice() : descriptor_(::open("/dev/null", O_RDWR | O_CLOEXEC)) {}

NullDevice::~NullDevice() {
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

std::string homeFolder() {
    // Not g_get_home_dir(), which keeps its first answer for good.
    return pathFrom("HOME", &passwd::pw_dir, "/");
}

std::string userShell() { return pathFrom("SHELL", &passwd::pw_shell, "/bin/sh"); }

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

bool spawnDetached(const std::vector<std::string>& arguments, const Activation& activation) {
    std::vector<char*> pointers;
    pointers.reserve(arguments.size() + 1);
    for (const std::string& argument : arguments)
        pointers.push_back(const_cast<char*>(argument.c_str()));
    pointers.push_back(nullptr);
    GlibTexts environment(g_get_environ());
    for (const auto& [name, value] : activation.environment())
        environment.reset(g_environ_setenv(environment.release(), name, value.c_str(), TRUE));
    std::string home = homeFolder();
    const NullDevice null;
    return g_spawn_async_with_fds(nullptr, pointers.data(), environment.get(), G_SPAWN_DEFAULT,
                                  prepareChild, home.data(), nullptr, null.descriptor(),
                                  null.descriptor(), null.descriptor(), nullptr) != FALSE;
}

} // namespace kestrel::linux_shell
