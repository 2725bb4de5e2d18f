#pragma once
// Writing to the last byte, however little the system takes at a time.

#include "shells/linux/posix/file_operations.h"

#include <string_view>

namespace kestrel::linux_shell {

/// False when the system does not take all of `bytes`; some of them may be written then.
[[nodiscard]] bool writeAll(FileOperations& operations, int descriptor, std::string_view bytes);

} // namespace kestrel::linux_shell
