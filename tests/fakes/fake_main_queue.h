#pragma once
// MainQueue that runs its tasks only when a test says so.

#include "platform/main_queue.h"

#include <deque>
#include <functional>
#include <utility>

namespace kestrel::tests {

class FakeMainQueue final : public MainQueue {
  public:
    std::deque<std::function<void()>> tasks;

    void async(std::function<void()> task) override { tasks.push_back(std::move(task)); }

    /// One turn of the event loop: the tasks that are queued now, not those that they post.
    void runTurn() {
        auto current = std::exchange(tasks, {});
        for (const auto& task : current)
            task();
    }

    /// Turns until nothing is queued.
    void runAll() {
        while (!tasks.empty())
            runTurn();
    }
};

} // namespace kestrel::tests
