#include "shells/linux/desktop/main_queue.h"

#include "tests/linux/desktop/waiting.h"

#include <gtest/gtest.h>

namespace kestrel::linux_shell {
namespace {

TEST(QtMainQueueTest, TasksLeftWhenItDiesAreDropped) {
    bool hasRun = false;
    {
        QtMainQueue queue;
        queue.async([&] { hasRun = true; });
    }
    settle();
    EXPECT_FALSE(hasRun);
}

} // namespace
} // namespace kestrel::linux_shell
