#pragma once
// File operations, the system's or those of a disk in memory, that note each call and let chosen
// ones fail. To a disk, a process that has ended is one whose calls all fail from there on.

#include "shells/linux/posix/file_operations.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel::tests {

class FaultyFileOperations final : public linux_shell::FileOperations {
  public:
    explicit FaultyFileOperations(FileOperations& base = linux_shell::systemFileOperations())
        : base_(base) {}

    static constexpr std::size_t never = std::string::npos;

    /// The names of the calls made.
    std::vector<std::string_view> calls;

    /// The calls from this one on fail, up to but not including the other one, counted from zero.
    std::size_t failsFrom = never;
    std::size_t failsTo = never;
    int error = EIO;

    /// A write takes no more, in bytes.
    std::size_t longestWrite = never;

    void failOnce(std::size_t call, int withError = EIO) {
        failsFrom = call;
        failsTo = call + 1;
        error = withError;
    }

    int openAt(int directory, const char* name, int flags, mode_t mode) override {
        return run("openAt", [&] { return base_.openAt(directory, name, flags, mode); });
    }
    int close(int descriptor) override {
        // As on a real system the descriptor is gone even when the call fails.
        const int result = base_.close(descriptor);
        return run("close", [result] { return result; });
    }
    ssize_t read(int descriptor, char* buffer, std::size_t size) override {
        return run("read", [&] { return base_.read(descriptor, buffer, size); });
    }
    ssize_t write(int descriptor, const char* bytes, std::size_t size) override {
        const std::size_t count = std::min(size, longestWrite);
        return run("write", [&] { return base_.write(descriptor, bytes, count); });
    }
    int sync(int descriptor) override {
        return run("sync", [&] { return base_.sync(descriptor); });
    }
    int lock(int descriptor) override {
        return run("lock", [&] { return base_.lock(descriptor); });
    }
    int status(int descriptor, struct stat& status) override {
        return run("status", [&] { return base_.status(descriptor, status); });
    }
    int statusAt(int directory, const char* name, struct stat& status) override {
        return run("statusAt", [&] { return base_.statusAt(directory, name, status); });
    }
    int statusOfPath(const char* path, struct stat& status) override {
        return run("statusOfPath", [&] { return base_.statusOfPath(path, status); });
    }
    int changeModeAt(int directory, const char* name, mode_t mode) override {
        return run("changeModeAt", [&] { return base_.changeModeAt(directory, name, mode); });
    }
    ssize_t readLinkAt(int directory, const char* name, char* buffer, std::size_t size) override {
        return run("readLinkAt", [&] { return base_.readLinkAt(directory, name, buffer, size); });
    }
    int renameAt(int directory, const char* from, const char* to) override {
        return run("renameAt", [&] { return base_.renameAt(directory, from, to); });
    }
    int unlinkAt(int directory, const char* name) override {
        return run("unlinkAt", [&] { return base_.unlinkAt(directory, name); });
    }
    int makeDirectory(const char* path, mode_t mode) override {
        return run("makeDirectory", [&] { return base_.makeDirectory(path, mode); });
    }
    std::vector<std::string> list(int directory) override {
        std::vector<std::string> names;
        run("list", [&] {
            names = base_.list(directory);
            return 0;
        });
        return names;
    }

  private:
    template <typename Call>
    auto run(std::string_view name, Call call) -> decltype(call()) {
        const std::size_t number = calls.size();
        calls.push_back(name);
        if (number < failsFrom || number >= failsTo)
            return call();
        errno = error;
        return -1;
    }

    FileOperations& base_;
};

} // namespace kestrel::tests
