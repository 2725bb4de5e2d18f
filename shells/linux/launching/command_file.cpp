#include "shells/linux/launching/command_file.h"

#include "shells/linux/posix/descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>

namespace kestrel::linux_shell {

namespace {

bool beginsLikeAProgram(const std::string& path) {
    // The file may have become a pipe since it was looked at: not to wait for a writer.
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    std::array<char, 4> bytes{};
    const ssize_t length = ::read(file.number(), bytes.data(), bytes.size());
    const std::string_view head(bytes.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
    return head.starts_with("#!") || head == "\177ELF";
}

} // namespace

bool isUsablePath(std::string_view path) {
    return path.starts_with('/') && path.find('\0') == std::string_view::npos;
}

FileKind classifyFile(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0)
        return FileKind::nothing;
    if (S_ISDIR(status.st_mode))
        return FileKind::folder;
    if (!S_ISREG(status.st_mode))
        return FileKind::nothing;
    if (path.ends_with(".desktop"))
        return FileKind::desktopEntry;
    if (::access(path.c_str(), X_OK) != 0)
        return FileKind::document;
    if (path.ends_with(".command") || path.ends_with(".sh") || beginsLikeAProgram(path))
        return FileKind::runnable;
    return FileKind::document;
}

} // namespace kestrel::linux_shell
