#pragma once
// An open file descriptor that closes itself, through the file operations that opened it.

#include "shells/linux/posix/file_operations.h"
#include "shells/linux/posix/uninterrupted.h"

#include <cerrno>
#include <string_view>
#include <utility>

namespace kestrel::linux_shell {

class Descriptor {
  public:
    /// Takes over `number`; a negative one is the failed result of an open.
    explicit Descriptor(int number, FileOperations& operations = systemFileOperations())
        : operations_(&operations), number_(number) {}
    Descriptor(Descriptor&& other) noexcept
        : operations_(other.operations_), number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(operations_, other.operations_);
        std::swap(number_, other.number_);
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { close(); }

    bool isOpen() const { return number_ >= 0; }
    int number() const { return number_; }

    /// Writes all of `bytes`, however little the system takes at a time. False when it takes no
    /// more; some of them may be written then.
    [[nodiscard]] bool writeAll(std::string_view bytes) const {
        while (!bytes.empty()) {
            const ssize_t count = uninterrupted(
                [&] { return operations_->write(number_, bytes.data(), bytes.size()); });
            if (count <= 0)
                return false;
            bytes.remove_prefix(static_cast<std::size_t>(count));
        }
        return true;
    }

    /// False when the system reports at the close that something written earlier was lost. An
    /// interrupted close has closed all the same.
    bool close() {
        return number_ < 0 || operations_->close(std::exchange(number_, -1)) == 0 || errno == EINTR;
    }

  private:
    FileOperations* operations_;
    int number_;
};

} // namespace kestrel::linux_shell
