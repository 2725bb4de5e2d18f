#include "shells/linux/posix/environment.h"

#include <cstdlib>

namespace kestrel::linux_shell {

std::string environmentVariable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

} // namespace kestrel::linux_shell
