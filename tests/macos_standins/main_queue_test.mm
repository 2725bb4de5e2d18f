#include "shells/macos/desktop/main_queue.h"
#include "tests/macos_standins/macos_fixture.h"

#include <memory>

namespace kestrel::tests {
namespace {

class MainQueueTest : public MacosFixture {
  protected:
    macos_shell::DispatchMainQueue queue;
};

TEST_F(MainQueueTest, TasksRunAfterTheCallInTheOrderOfPosting) {
    std::vector<int> order;
    for (int i = 0; i < 3; ++i)
        queue.async([&order, i] { order.push_back(i); });
    EXPECT_TRUE(order.empty());
    runMainQueue();
    EXPECT_EQ(order, (std::vector{0, 1, 2}));
}

TEST_F(MainQueueTest, ATaskOfAnotherThreadRunsOnTheMainOne) {
    bool hasRun = false;
    bool wasOnMain = false;
    bool* const ran = &hasRun;
    bool* const onMain = &wasOnMain;
    dispatch_async(dispatch_get_global_queue(0, 0), ^{
        queue.async([ran, onMain] {
            *onMain = NSThread.isMainThread;
            *ran = true;
        });
    });
    ASSERT_TRUE(recording::runUntil([&] { return hasRun; }));
    EXPECT_TRUE(wasOnMain);
}

TEST_F(MainQueueTest, ATaskIsLetGoOfOnceItHasRun) {
    auto token = std::make_shared<int>(1);
    const std::weak_ptr<int> weak = token;
    @autoreleasepool {
        queue.async([kept = std::move(token)] { EXPECT_EQ(*kept, 1); });
        EXPECT_FALSE(weak.expired());
        runMainQueue();
    }
    EXPECT_TRUE(recording::runUntil([&] { return weak.expired(); }));
}

} // namespace
} // namespace kestrel::tests
