#include "shells/linux/desktop/main_queue.h"

#include "tests/linux/desktop/waiting.h"

#include <gmock/gmock.h>

#include <memory>
#include <thread>
#include <vector>

namespace kestrel::linux_shell {
namespace {

TEST(QtMainQueueTest, RunsTasksLaterInTheOrderOfPosting) {
    QtMainQueue queue;
    std::vector<int> ran;
    queue.async([&] { ran.push_back(1); });
    queue.async([&] { ran.push_back(2); });
    EXPECT_TRUE(ran.empty());
    settle();
    EXPECT_EQ(ran, (std::vector<int>{1, 2}));
}

TEST(QtMainQueueTest, TaskPostedByATaskWaitsForTheNextTurn) {
    QtMainQueue queue;
    std::vector<int> ran;
    queue.async([&] {
        queue.async([&] { ran.push_back(2); });
        ran.push_back(1);
    });
    EXPECT_TRUE(waitUntil([&] { return ran.size() == 2; }));
    EXPECT_EQ(ran, (std::vector<int>{1, 2}));
}

TEST(QtMainQueueTest, TaskOfAnotherThreadRunsOnTheMainOne) {
    QtMainQueue queue;
    std::thread::id ranOn;
    std::thread([&] { queue.async([&] { ranOn = std::this_thread::get_id(); }); }).join();
    EXPECT_EQ(ranOn, std::thread::id());
    EXPECT_TRUE(waitUntil([&] { return ranOn != std::thread::id(); }));
    EXPECT_EQ(ranOn, std::this_thread::get_id());
}

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
