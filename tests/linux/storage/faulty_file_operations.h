#pragma once
// The system's file operations, counted, with a fault at a chosen call: it fails with an errno of
// choice, or the process is killed just before or just after it.

#include "shells/linux/posix/file_operations.h"

#include <cerrno>
#include <csignal>
#include <string>
#include <vector>

#include <fcntl.h>

namespace kestrel::tests {

enum class Fault {
    none,
    failOnce,
    failFromThereOn,
    killBefore,
    killAfter,
};

class FaultyFileOperations final : public linux_shell::FileOperations {
  public:
    Fault fault = Fault::none;
    /// The call that the fault strikes, counted from zero.
    int faultAt = 0;
    int error = EIO;
    /// Every write takes one byte only.
    bool writesAreShort = false;

    /// The names of the calls made.
    std::vector<std::string> calls;

    int openAt(int directory, const char* name, int flags, mode_t mode) override {
        return run("openAt", [&] { return Base::openAt(directory, name, flags, mode); });
    }
    int close(int descriptor) override {
        // As on a real system the descriptor is gone even when the call fails.
        if (!strikes())
            return run("close", [&] { return Base::close(descriptor); });
        Base::close(descriptor);
        return run("close", [] { return 0; });
    }
    ssize_t read(int descriptor, char* buffer, std::size_t size) override {
        return run("read", [&] { return Base::read(descriptor, buffer, size); });
    }
    ssize_t write(int descriptor, const char* bytes, std::size_t size) override {
        const std::size_t count = writesAreShort && size > 1 ? 1 : size;
        return run("write", [&] { return Base::write(descriptor, bytes, count); });
    }
    /// Does not wait for the disk, which only a power failure could tell.
    int sync(int descriptor) override {
        return run("sync", [&] { return ::fcntl(descriptor, F_GETFD) < 0 ? -1 : 0; });
    }
    int lock(int descriptor) override {
        return run("lock", [&] { return Base::lock(descriptor); });
    }
    int status(int descriptor, struct stat& status) override {
        return run("status", [&] { return Base::status(descriptor, status); });
    }
    int statusAt(int directory, const char* name, struct stat& status) override {
        return run("statusAt", [&] { return Base::statusAt(directory, name, status); });
    }
    int statusOfPath(const char* path, struct stat& status) override {
        return run("statusOfPath", [&] { return Base::statusOfPath(path, status); });
    }
    int changeModeAt(int directory, const char* name, mode_t mode) override {
        return run("changeModeAt", [&] { return Base::changeModeAt(directory, name, mode); });
    }
    ssize_t readLinkAt(int directory, const char* name, char* buffer, std::size_t size) override {
        return run("readLinkAt", [&] { return Base::readLinkAt(directory, name, buffer, size); });
    }
    int renameAt(int directory, const char* from, const char* to) override {
        return run("renameAt", [&] { return Base::renameAt(directory, from, to); });
    }
    int unlinkAt(int directory, const char* name) override {
        return run("unlinkAt", [&] { return Base::unlinkAt(directory, name); });
    }
    int makeDirectory(const char* path, mode_t mode) override {
        return run("makeDirectory", [&] { return Base::makeDirectory(path, mode); });
    }
    std::vector<std::string> list(int directory) override {
        std::vector<std::string> names;
        run("list", [&] {
            names = Base::list(directory);
            return 0;
        });
        return names;
    }

  private:
    using Base = linux_shell::FileOperations;

    [[nodiscard]] bool strikes() const {
        const int next = static_cast<int>(calls.size());
        return (fault == Fault::failOnce && next == faultAt) ||
               (fault == Fault::failFromThereOn && next >= faultAt);
    }

    template <typename Call>
    auto run(const char* name, Call call) -> decltype(call()) {
        const bool fails = strikes();
        const bool here = static_cast<int>(calls.size()) == faultAt;
        calls.emplace_back(name);
        if (here && fault == Fault::killBefore)
            std::raise(SIGKILL);
        if (fails) {
            errno = error;
            return -1;
        }
        const auto result = call();
        if (here && fault == Fault::killAfter)
            std::raise(SIGKILL);
        return result;
    }
};

} // namespace kestrel::tests
