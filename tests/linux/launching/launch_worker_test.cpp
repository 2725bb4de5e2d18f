#include "shells/linux/launching/launch_worker.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <thread>
#include <vector>

namespace kestrel::linux_shell {
namespace {

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
    auto worker = std::make_unique<LaunchWorker>();
    worker->async([released, ended] {
        released->wait();
        ended->set_value();
    });
    worker.reset(); // returns although the job has not ended
    EXPECT_EQ(end.wait_for(std::chrono::seconds(0)), std::future_status::timeout);
    release->set_value();
    EXPECT_EQ(end.wait_for(std::chrono::seconds(20)), std::future_status::ready);
}

} // namespace
} // namespace kestrel::linux_shell
