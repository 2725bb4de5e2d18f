#include "shells/linux/posix/environment.h"

#include <cstdlib>
#include <vector>

#include <pwd.h>
#include <unistd.h>

namespace kestrel::linux_shell {

namespace {

/// The absolute path in the variable `name` or in that field of the user's password entry.
std::string pathFrom(const char* name, char* passwd::*field) {
    if (std::string value = environmentVariable(name); value.starts_with('/'))
        return value;
    std::vector<char> buffer(16384);
    passwd entry{};
    passwd* found = nullptr;
    if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 &&
        found != nullptr && found->*field != nullptr && (found->*field)[0] == '/')
        return found->*field;
    return {};
}

} // namespace

std::string environmentVariable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

// Not g_get_home_dir(), which keeps its first answer for good.
std::string homeFolder() { return pathFrom("HOME", &passwd::pw_dir); }

std::string userShell() {
    std::string shell = pathFrom("SHELL", &passwd::pw_shell);
    return shell.empty() ? "/bin/sh" : shell;
}

} // namespace kestrel::linux_shell
