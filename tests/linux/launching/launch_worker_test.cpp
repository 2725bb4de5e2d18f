#include "shells/linux/launching/launch_worker.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <thread>
#include <vector>

namespace kestrel::linux_shell {
namespace {

constexpr std::chrono::milliseconds shortTimeout{100};

TEST(LaunchWorkerTest, JobsRunInOrderOnOneOtherThread) {
    std::vector<int> order;
    std::vector<std::thread::id> threads;
    {
        LaunchWorker worker;
        for (int i = 0; i < 200; ++i)
            worker.async([&order, &threads, i] {
                order.push_back(i);
                threads.push_back(std::this_thread::get_id());
            });
    }
    ASSERT_EQ(order.size(), 200U);
    for (int i = 0; i < 200; ++i) {
        EXPECT_EQ(order[static_cast<std::size_t>(i)], i);
        EXPECT_EQ(threads[static_cast<std::size_t>(i)], threads.front());
    }
    EXPECT_NE(threads.front(), std::this_thread::get_id());
}

TEST(LaunchWorkerTest, AJobMayHandInAnother) {
    std::promise<void> second;
    LaunchWorker worker;
    worker.async([&] { worker.async([&] { second.set_value(); }); });
    EXPECT_EQ(second.get_future().wait_for(std::chrono::seconds(20)), std::future_status::ready);
}

TEST(LaunchWorkerTest, AHangingJobDoesNotHoldTheProgramBack) {
    auto release = std::make_shared<std::promise<void>>();
    auto released = std::make_shared<std::shared_future<void>>(release->get_future());
    auto ended = std::make_shared<std::promise<void>>();
    auto end = ended->get_future();
    auto worker = std::make_unique<LaunchWorker>(shortTimeout);
    worker->async([released, ended] {
        released->wait();
        ended->set_value();
    });
    worker.reset(); // returns although the job has not ended
    EXPECT_EQ(end.wait_for(std::chrono::seconds(0)), std::future_status::timeout);
    release->set_value();
    EXPECT_EQ(end.wait_for(std::chrono::seconds(20)), std::future_status::ready);
}

TEST(LaunchWorkerTest, JobsBehindAHangingOneRunInOrderOnAnotherThread) {
    auto release = std::make_shared<std::promise<void>>();
    auto released = std::make_shared<std::shared_future<void>>(release->get_future());
    std::promise<void> returned;
    std::promise<void> last;
    std::vector<int> order;
    {
        LaunchWorker worker(shortTimeout);
        worker.async([&order] { order.push_back(0); });
        worker.async([released, &returned] {
            released->wait();
            returned.set_value();
        });
        for (int i = 1; i < 5; ++i)
            worker.async([&order, i] { order.push_back(i); });
        worker.async([&last] { last.set_value(); });
        ASSERT_EQ(last.get_future().wait_for(std::chrono::seconds(20)), std::future_status::ready);
        release->set_value();
        ASSERT_EQ(returned.get_future().wait_for(std::chrono::seconds(20)),
                  std::future_status::ready);
        for (int i = 5; i < 9; ++i)
            worker.async([&order, i] { order.push_back(i); });
    }
    EXPECT_EQ(order, (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST(LaunchWorkerTest, QuittingBehindAHangingJobStillRunsTheOthers) {
    auto release = std::make_shared<std::promise<void>>();
    auto released = std::make_shared<std::shared_future<void>>(release->get_future());
    auto ran = std::make_shared<std::promise<void>>();
    auto worker = std::make_unique<LaunchWorker>(shortTimeout);
    worker->async([released] { released->wait(); });
    worker->async([ran] { ran->set_value(); });
    worker.reset();
    EXPECT_EQ(ran->get_future().wait_for(std::chrono::seconds(20)), std::future_status::ready);
    release->set_value();
}

} // namespace
} // namespace kestrel::linux_shell
