#include "shells/linux/launching/scratch_folder.h"

#include "shells/linux/posix/descriptor.h"
#include "shells/linux/posix/environment.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <ctime>

namespace kestrel::linux_shell {

namespace {

constexpr std::string_view namePrefix = "kestrel-launch-";

/// Every name that this program puts into a scratch folder. The scripts in terminal/ remove the
/// same ones.
constexpr std::array<const char*, 6> fileNames = {"run",    "shell",   "cmd",
                                                  "bashrc", ".zshenv", "init.fish"};

Descriptor openFolder(const std::string& path, int flags = 0) {
    return Descriptor(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | flags));
}

bool hasPlainCharacters(std::string_view path) {
    return path.starts_with('/') && std::ranges::all_of(path, [](char character) {
               return (character >= 'a' && character <= 'z') ||
                      (character >= 'A' && character <= 'Z') ||
                      (character >= '0' && character <= '9') || character == '/' ||
                      character == '.' || character == '_' || character == '-';
           });
}

/// Whether another user could rename our folder away and put his own in its place.
bool isSafeFolder(const struct stat& status) {
    // What a sticky folder holds is safe from all but the folder's own owner.
    const bool ours = status.st_uid == ::getuid() || status.st_uid == 0;
    const bool othersWrite = (status.st_mode & (S_IWGRP | S_IWOTH)) != 0;
    const bool sticky = (status.st_mode & S_ISVTX) != 0;
    return S_ISDIR(status.st_mode) && ours && (!othersWrite || sticky);
}

bool isSuitableBase(const std::string& base) {
    struct stat status {};
    struct statvfs system {};
    return hasPlainCharacters(base) && ::stat(base.c_str(), &status) == 0 && isSafeFolder(status) &&
           ::statvfs(base.c_str(), &system) == 0 && (system.f_flag & ST_NOEXEC) == 0;
}

bool writeFile(int folder, const ScratchFile& file) {
    const std::string name(file.name);
    const mode_t mode = file.executable ? 0700 : 0600;
    const Descriptor output(
        ::openat(folder, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
    // The umask can only have taken rights away.
    return output.isOpen() && ::fchmod(output.number(), mode) == 0 && output.writeAll(file.bytes);
}

bool fill(const std::string& folder, std::span<const ScratchFile> files) {
    const Descriptor opened = openFolder(folder, O_NOFOLLOW);
    return opened.isOpen() && std::ranges::all_of(files, [&](const ScratchFile& file) {
               return writeFile(opened.number(), file);
           });
}

/// Whether `name` in the open folder `base` is one of ours, private, and older than `age`.
bool isLeftover(int base, const std::string& name, std::chrono::seconds age) {
    struct stat status {};
    return name.starts_with(namePrefix) &&
           ::fstatat(base, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
           S_ISDIR(status.st_mode) && status.st_uid == ::getuid() &&
           (status.st_mode & 07777) == 0700 && std::time(nullptr) - status.st_mtime >= age.count();
}

} // namespace

std::vector<std::string> scratchBases() {
    std::string cache = environmentVariable("XDG_CACHE_HOME");
    if (!cache.starts_with('/'))
        cache = homeFolder() + "/.cache";
    return {environmentVariable("XDG_RUNTIME_DIR"), environmentVariable("TMPDIR"), "/tmp", cache};
}

std::optional<std::string> makeScratchFolder(std::span<const std::string> bases,
                                             std::span<const ScratchFile> files) {
    for (const std::string& base : bases) {
        if (!isSuitableBase(base))
            continue;
        std::string folder = base + '/' + std::string(namePrefix) + "XXXXXX";
        if (::mkdtemp(folder.data()) == nullptr)
            continue;
        if (::chmod(folder.c_str(), 0700) == 0 && fill(folder, files))
            return folder;
        removeScratchFolder(folder);
    }
    return std::nullopt;
}

void removeScratchFolder(const std::string& folder) {
    const Descriptor opened = openFolder(folder, O_NOFOLLOW);
    if (!opened.isOpen())
        return;
    for (const char* name : fileNames)
        ::unlinkat(opened.number(), name, 0);
    ::rmdir(folder.c_str());
}

void sweepScratchFolders(std::span<const std::string> bases, std::chrono::seconds age) {
    for (const std::string& base : bases) {
        if (!hasPlainCharacters(base))
            continue;
        const Descriptor folder = openFolder(base);
        for (const std::string& name : systemFileOperations().list(folder.number()))
            if (isLeftover(folder.number(), name, age))
                removeScratchFolder(std::string(base).append("/").append(name));
    }
}

} // namespace kestrel::linux_shell
