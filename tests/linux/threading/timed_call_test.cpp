#include "shells/linux/threading/timed_call.h"

#include <gtest/gtest.h>

#include <future>
#include <memory>

namespace kestrel::linux_shell {
namespace {

constexpr std::chrono::seconds generous{20};

TEST(TimedCallTest, JobsThatEndInTimeShareOneOtherThread) {
    TimedCall thread;
    std::vector<std::thread::id> threads;
    for (int i = 0; i < 100; ++i)
        EXPECT_TRUE(thread.run([&] { threads.push_back(std::this_thread::get_id()); }, generous));
    ASSERT_EQ(threads.size(), 100U);
    for (const std::thread::id& id : threads)
        EXPECT_EQ(id, threads.front());
    EXPECT_NE(threads.front(), std::this_thread::get_id());
}

TEST(TimedCallTest, AJobThatHangsIsLeftAloneAndEndsAfterEverythingElse) {
    const auto release = std::make_shared<std::promise<void>>();
    const auto ended = std::make_shared<std::promise<void>>();
    {
        TimedCall thread;
        EXPECT_FALSE(thread.run(
            [release, ended] {
                release->get_future().wait();
                ended->set_value();
            },
            std::chrono::milliseconds(1)));
        bool ran = false;
        EXPECT_TRUE(thread.run([&ran] { ran = true; }, generous));
        EXPECT_TRUE(ran);
    }
    release->set_value();
    EXPECT_EQ(ended->get_future().wait_for(generous), std::future_status::ready);
}

TEST(TimedCallTest, TheOtherThreadTellsOfAJobThatEndsLate) {
    const auto release = std::make_shared<std::promise<void>>();
    const auto late = std::make_shared<std::promise<std::thread::id>>();
    const auto jobsThread = std::make_shared<std::thread::id>();
    {
        TimedCall call;
        EXPECT_FALSE(call.run(
            [release, jobsThread] {
                release->get_future().wait();
                *jobsThread = std::this_thread::get_id();
            },
            std::chrono::milliseconds(1), [late] { late->set_value(std::this_thread::get_id()); }));
    }
    auto told = late->get_future();
    EXPECT_EQ(told.wait_for(std::chrono::seconds(0)), std::future_status::timeout);
    release->set_value();
    ASSERT_EQ(told.wait_for(generous), std::future_status::ready);
    EXPECT_EQ(told.get(), *jobsThread);
}

TEST(TimedCallTest, AJobEndsEitherInTimeOrLate) {
    for (int i = 0; i < 200; ++i) {
        const auto late = std::make_shared<std::promise<void>>();
        auto told = late->get_future();
        bool isInTime = false;
        {
            TimedCall call;
            isInTime =
                call.run([] {}, std::chrono::milliseconds(i % 2), [late] { late->set_value(); });
        }
        if (isInTime)
            EXPECT_EQ(told.wait_for(std::chrono::seconds(0)), std::future_status::timeout);
        else
            EXPECT_EQ(told.wait_for(generous), std::future_status::ready);
    }
}

} // namespace
} // namespace kestrel::linux_shell
