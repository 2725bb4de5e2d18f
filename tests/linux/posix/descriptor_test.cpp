#include "shells/linux/posix/descriptor.h"
#include "shells/linux/posix/uninterrupted.h"

#include <algorithm>
#include <cerrno>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>

namespace kestrel::tests {
namespace {

using linux_shell::Descriptor;
using linux_shell::uninterrupted;

/// Nothing real: what is closed and written is noted, and each call has a chosen result.
class NotedOperations final : public linux_shell::FileOperations {
  public:
    std::vector<int> closed;
    int closeError = 0;

    std::string written;
    std::size_t longestWrite = 100;
    /// The errors of the next writes; with 0 a write takes no byte.
    std::vector<int> writeErrors;

    int close(int descriptor) override {
        closed.push_back(descriptor);
        errno = closeError;
        return closeError == 0 ? 0 : -1;
    }

    ssize_t write(int /*descriptor*/, const char* bytes, std::size_t size) override {
        if (!writeErrors.empty()) {
            errno = writeErrors.front();
            writeErrors.erase(writeErrors.begin());
            return errno == 0 ? 0 : -1;
        }
        const std::size_t count = std::min(size, longestWrite);
        written.append(bytes, count);
        return static_cast<ssize_t>(count);
    }
};

TEST(DescriptorTest, ClosesOnceWhenItsLifeEnds) {
    NotedOperations operations;
    {
        Descriptor first(7, operations);
        EXPECT_TRUE(first.isOpen());
        EXPECT_EQ(first.number(), 7);
        const Descriptor second(std::move(first));
        EXPECT_EQ(second.number(), 7);
        EXPECT_EQ(operations.closed, std::vector<int>{});
    }
    EXPECT_EQ(operations.closed, std::vector{7});
}

TEST(DescriptorTest, OneThatIsNotOpenClosesNothing) {
    NotedOperations operations;
    {
        Descriptor failed(-1, operations);
        EXPECT_FALSE(failed.isOpen());
        EXPECT_TRUE(failed.close());
    }
    EXPECT_EQ(operations.closed, std::vector<int>{});
}

TEST(DescriptorTest, AssigningClosesWhatWasOpenBefore) {
    NotedOperations operations;
    {
        Descriptor descriptor(7, operations);
        descriptor = Descriptor(8, operations);
        EXPECT_EQ(operations.closed, std::vector{7});
        EXPECT_EQ(descriptor.number(), 8);
    }
    EXPECT_EQ(operations.closed, (std::vector{7, 8}));
}

TEST(DescriptorTest, AFailedCloseIsToldAndNotMadeAgain) {
    for (const int error : {EIO, ENOSPC, EINTR}) {
        NotedOperations operations;
        operations.closeError = error;
        {
            Descriptor descriptor(7, operations);
            EXPECT_EQ(descriptor.close(), error == EINTR) << "an interrupted close has closed";
            EXPECT_FALSE(descriptor.isOpen());
        }
        EXPECT_EQ(operations.closed, std::vector{7});
    }
}

TEST(DescriptorTest, BelongsToTheSystemUnlessToldOtherwise) {
    int number = -1;
    {
        const Descriptor null(::open("/dev/null", O_RDONLY | O_CLOEXEC));
        ASSERT_TRUE(null.isOpen());
        number = null.number();
        EXPECT_NE(::fcntl(number, F_GETFD), -1);
    }
    EXPECT_EQ(::fcntl(number, F_GETFD), -1);
}

TEST(UninterruptedTest, ACallIsMadeAgainOnlyWhileItIsInterrupted) {
    int calls = 0;
    EXPECT_EQ(uninterrupted([&calls] {
                  errno = EINTR;
                  return ++calls < 4 ? -1 : 5;
              }),
              5);
    EXPECT_EQ(calls, 4);
    EXPECT_EQ(uninterrupted([&calls] {
                  ++calls;
                  errno = EIO;
                  return -1;
              }),
              -1);
    EXPECT_EQ(errno, EIO);
    EXPECT_EQ(calls, 5);
}

TEST(DescriptorTest, WritesEverythingHoweverLittleIsTakenAtATime) {
    for (const std::size_t longest : {1U, 3U, 100U}) {
        NotedOperations operations;
        operations.longestWrite = longest;
        operations.writeErrors = {EINTR, EINTR};
        const Descriptor descriptor(7, operations);
        EXPECT_TRUE(descriptor.writeAll("some bytes"));
        EXPECT_EQ(operations.written, "some bytes");
        EXPECT_TRUE(descriptor.writeAll(""));
    }
}

TEST(DescriptorTest, SaysSoWhenTheSystemTakesNoMore) {
    for (const int error : {EIO, ENOSPC, 0}) {
        NotedOperations operations;
        operations.writeErrors = {error};
        EXPECT_FALSE(Descriptor(7, operations).writeAll("bytes")) << error;
        EXPECT_EQ(operations.written, "");
    }
}

} // namespace
} // namespace kestrel::tests
