#pragma once
// The system's file operations of a folder that does not answer: while they are held, a call does
// not end.

#include "shells/linux/posix/file_operations.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <utility>

namespace kestrel::tests {

/// To be destroyed after the threads that call it have ended: a test releases it and then waits for
/// what they do next.
class HeldFileOperations final : public linux_shell::FileOperations {
  public:
    /// From now on calls of that name, or all, wait.
    void hold(std::string name = {}) {
        const std::lock_guard lock(mutex_);
        isHeld_ = true;
        heldName_ = std::move(name);
    }

    void release() {
        const std::lock_guard lock(mutex_);
        isHeld_ = false;
        changed_.notify_all();
    }

    /// How many calls were made so far, those that wait included.
    int calls() {
        const std::lock_guard lock(mutex_);
        return calls_;
    }

    int openAt(int directory, const char* name, int flags, mode_t mode) override {
        pass("openAt");
        return FileOperations::openAt(directory, name, flags, mode);
    }
    int statusOfPath(const char* path, struct stat& status) override {
        pass("statusOfPath");
        return FileOperations::statusOfPath(path, status);
    }
    int renameAt(int directory, const char* from, const char* to) override {
        pass("renameAt");
        return FileOperations::renameAt(directory, from, to);
    }

  private:
    void pass(const std::string& name) {
        std::unique_lock lock(mutex_);
        ++calls_;
        // Not for good, or a test that fails would hang.
        changed_.wait_for(lock, std::chrono::minutes(1),
                          [&] { return !isHeld_ || (!heldName_.empty() && heldName_ != name); });
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    std::string heldName_;
    bool isHeld_ = false;
    int calls_ = 0;
};

} // namespace kestrel::tests
