#pragma once
// What every MainQueue promises, run on the fake and on each system's own.
//
// A Rig offers `MainQueue& queue()` and `void runAll()`, which lets the event loop run until no
// task is left.

#include "platform/main_queue.h"

#include <string>
#include <thread>

#include <gtest/gtest.h>

namespace kestrel::tests {

template <typename Rig>
class MainQueueContract : public testing::Test {
  protected:
    Rig rig;
    std::string ran;

    void post(const std::string& name) {
        rig.queue().async([this, name] { ran += name; });
    }
};

TYPED_TEST_SUITE_P(MainQueueContract);

TYPED_TEST_P(MainQueueContract, ATaskNeverRunsInsideTheCall) {
    this->post("a");
    EXPECT_EQ(this->ran, "");
    this->rig.runAll();
    EXPECT_EQ(this->ran, "a");
}

TYPED_TEST_P(MainQueueContract, TasksRunOnceInTheOrderOfPosting) {
    for (const char* name : {"a", "b", "c"})
        this->post(name);
    this->rig.runAll();
    this->rig.runAll();
    EXPECT_EQ(this->ran, "abc");
}

TYPED_TEST_P(MainQueueContract, ATaskThatATaskPostsRunsAfterThoseThatWait) {
    this->rig.queue().async([this] {
        this->ran += 'a';
        this->post("c");
    });
    this->post("b");
    this->rig.runAll();
    EXPECT_EQ(this->ran, "abc");
}

TYPED_TEST_P(MainQueueContract, ATaskOfAnotherThreadRunsOnTheMainThread) {
    std::thread::id runner;
    std::thread([&] {
        this->rig.queue().async([&] { runner = std::this_thread::get_id(); });
    }).join();
    EXPECT_EQ(runner, std::thread::id());
    this->rig.runAll();
    EXPECT_EQ(runner, std::this_thread::get_id());
}

REGISTER_TYPED_TEST_SUITE_P(MainQueueContract, ATaskNeverRunsInsideTheCall,
                            TasksRunOnceInTheOrderOfPosting,
                            ATaskThatATaskPostsRunsAfterThoseThatWait,
                            ATaskOfAnotherThreadRunsOnTheMainThread);

} // namespace kestrel::tests
