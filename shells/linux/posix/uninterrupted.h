#pragma once
// A system call made again for as long as a signal interrupts it, as happens on network file
// systems and those of user programs. Not for close, which must not be made twice.

#include <cerrno>

namespace kestrel::linux_shell {

/// What `call` gives; -1 with another `errno` than EINTR when it fails.
template <typename Call>
auto uninterrupted(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

} // namespace kestrel::linux_shell
