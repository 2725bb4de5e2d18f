#include "shells/linux/posix/file_operations.h"

#include <cerrno>
#include <csignal>
#include <ctime>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace kestrel::linux_shell {

int FileOperations::openAt(int directory, const char* name, int flags, mode_t mode) {
    return ::openat(directory, name, flags, mode);
}

int FileOperations::close(int descriptor) { return ::close(descriptor); }

ssize_t FileOperations::read(int descriptor, char* buffer, std::size_t size) {
    return ::read(descriptor, buffer, size);
}

ssize_t FileOperations::write(int descriptor, const char* bytes, std::size_t size) {
    // Where the user's limit for a file's size is met the system does not only fail the call: it
    // sends a signal that ends the program, unless that is held back and taken in here.
    sigset_t signals;
    sigset_t before;
    ::sigemptyset(&signals);
    ::sigaddset(&signals, SIGXFSZ);
    ::pthread_sigmask(SIG_BLOCK, &signals, &before);
    const ssize_t count = ::write(descriptor, bytes, size);
    const int error = errno;
    if (count < 0 && error == EFBIG) {
        const timespec atOnce{};
        ::sigtimedwait(&signals, nullptr, &atOnce);
    }
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    errno = error;
    return count;
}

int FileOperations::sync(int descriptor) { return ::fsync(descriptor); }

int FileOperations::lock(int descriptor) { return ::flock(descriptor, LOCK_EX | LOCK_NB); }

int FileOperations::status(int descriptor, struct stat& status) {
    return ::fstat(descriptor, &status);
}

int FileOperations::statusAt(int directory, const char* name, struct stat& status) {
    return ::fstatat(directory, name, &status, AT_SYMLINK_NOFOLLOW);
}

int FileOperations::statusOfPath(const char* path, struct stat& status) {
    return ::stat(path, &status);
}

int FileOperations::changeModeAt(int directory, const char* name, mode_t mode) {
    return ::fchmodat(directory, name, mode, 0);
}

ssize_t FileOperations::readLinkAt(int directory, const char* name, char* buffer,
                                   std::size_t size) {
    return ::readlinkat(directory, name, buffer, size);
}

int FileOperations::renameAt(int directory, const char* from, const char* to) {
    return ::renameat(directory, from, directory, to);
}

int FileOperations::unlinkAt(int directory, const char* name) {
    return ::unlinkat(directory, name, 0);
}

int FileOperations::makeDirectory(const char* path, mode_t mode) { return ::mkdir(path, mode); }

std::vector<std::string> FileOperations::list(int directory) {
    std::vector<std::string> names;
    // A stream takes its descriptor over, so it gets one of its own.
    const int own = ::openat(directory, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (own < 0)
        return names;
    DIR* const stream = ::fdopendir(own);
    if (stream == nullptr) {
        ::close(own);
        return names;
    }
    // The stream belongs to this call, so nobody else can move it.
    while (const dirent* const entry = ::readdir(stream))
        names.emplace_back(entry->d_name);
    ::closedir(stream);
    return names;
}

FileOperations& systemFileOperations() {
    static FileOperations operations;
    return operations;
}

} // namespace kestrel::linux_shell
