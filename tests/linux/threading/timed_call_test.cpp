#include "shells/linux/threading/timed_call.h"

#include <gtest/gtest.h>

#include <future>
#include <memory>

namespace kestrel::linux_shell {
namespace {

constexpr std::chrono::seconds generous{20};

TEST(PatientThreadTest, JobsThatEndInTimeShareOneOtherThread) {
    PatientThread thread;
    std::vector<std::thread::id> threads;
    for (int i = 0; i < 100; ++i)
        EXPECT_TRUE(thread.run([&] { threads.push_back(std::this_thread::get_id()); }, generous));
    ASSERT_EQ(threads.size(), 100U);
    for (const std::thread::id& id : threads)
        EXPECT_EQ(id, threads.front());
    EXPECT_NE(threads.front(), std::this_thread::get_id());
}

TEST(PatientThreadTest, AJobThatHangsIsLeftAloneAndEndsAfterEverythingElse) {
    const auto release = std::make_shared<std::promise<void>>();
    const auto ended = std::make_shared<std::promise<void>>();
    {
        PatientThread thread;
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

} // namespace
} // namespace kestrel::linux_shell
