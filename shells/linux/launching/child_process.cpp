#include "shells/linux/launching/child_process.h"

#include "shells/linux/glib/glib_ptr.h"
#include "shells/linux/posix/environment.h"

#include <fcntl.h>
#include <glib.h>
#include <unistd.h>

#include <csignal>

namespace kestrel::linux_shell {

Descriptor openNullDevice() { return Descriptor(::open("/dev/null", O_RDWR | O_CLOEXEC)); }

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
    const Descriptor null = openNullDevice();
    return g_spawn_async_with_fds(nullptr, pointers.data(), environment.get(), G_SPAWN_DEFAULT,
                                  prepareChild, home.data(), nullptr, null.number(), null.number(),
                                  null.number(), nullptr) != FALSE;
}

} // namespace kestrel::linux_shell
