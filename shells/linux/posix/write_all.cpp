#include "shells/linux/posix/write_all.h"

#include "shells/linux/posix/uninterrupted.h"

namespace kestrel::linux_shell {

bool writeAll(FileOperations& operations, int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count =
            uninterrupted([&] { return operations.write(descriptor, bytes.data(), bytes.size()); });
        if (count <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

} // namespace kestrel::linux_shell
