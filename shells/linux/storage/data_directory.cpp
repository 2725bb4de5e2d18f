#include "shells/linux/storage/data_directory.h"

#include "shells/linux/posix/descriptor.h"
#include "shells/linux/posix/environment.h"
#include "shells/linux/posix/uninterrupted.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kestrel::linux_shell {

namespace {

constexpr mode_t ownerOnly = 0700;

bool isAbsolute(const std::string& path) { return path.starts_with('/'); }

std::string withoutTrailingSlashes(std::string path) {
    while (path.ends_with('/'))
        path.pop_back();
    return path;
}

/// The path one level up; empty for a path directly under the root.
std::string parentOf(const std::string& path) {
    return withoutTrailingSlashes(path.substr(0, path.rfind('/')));
}

/// Makes sure that a directory just made in `parent` is still there after a power failure.
void syncDirectory(FileOperations& operations, const std::string& parent) {
    const std::string path = parent.empty() ? "/" : parent;
    const auto open = [&] {
        return operations.openAt(AT_FDCWD, path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0);
    };
    const Descriptor directory(uninterrupted(open), operations);
    if (directory.isOpen())
        uninterrupted([&] { return operations.sync(directory.number()); });
}

} // namespace

std::optional<std::string> dataDirectoryPath(const DataDirectoryInputs& inputs) {
    if (isAbsolute(inputs.xdgDataHome))
        return withoutTrailingSlashes(inputs.xdgDataHome) + "/kestrel";
    if (!isAbsolute(inputs.home))
        return std::nullopt;
    return withoutTrailingSlashes(inputs.home) + "/.local/share/kestrel";
}

std::optional<std::string> dataDirectoryPath() {
    return dataDirectoryPath(
        {.xdgDataHome = environmentVariable("XDG_DATA_HOME"), .home = homeFolder()});
}

bool makeDirectories(FileOperations& operations, const std::string& path) {
    const auto make = [&] { return operations.makeDirectory(path.c_str(), ownerOnly); };
    if (uninterrupted(make) != 0) {
        const int error = errno;
        if (error == EEXIST)
            return true;
        const std::string parent = parentOf(path);
        if (error != ENOENT || parent.empty() || !makeDirectories(operations, parent))
            return false;
        if (uninterrupted(make) != 0)
            return errno == EEXIST;
    }
    // The umask can only have taken rights away; where the file system knows no modes there is
    // nothing to give back.
    uninterrupted([&] { return operations.changeModeAt(AT_FDCWD, path.c_str(), ownerOnly); });
    syncDirectory(operations, parentOf(path));
    return true;
}

void syncDirectoryNames(FileOperations& operations, std::string path) {
    struct stat status {};
    const auto look = [&] { return operations.statusOfPath(path.c_str(), status); };
    while (!path.empty() && uninterrupted(look) == 0 && status.st_uid == ::geteuid()) {
        path = parentOf(path);
        syncDirectory(operations, path);
    }
}

} // namespace kestrel::linux_shell
