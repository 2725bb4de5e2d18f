#pragma once
// An open file descriptor that closes itself, through the file operations that opened it.

#include "shells/linux/posix/file_operations.h"

#include <cerrno>
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

    [[nodiscard]] bool isOpen() const { return number_ >= 0; }
    [[nodiscard]] int number() const { return number_; }

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
