#pragma once
// The main thread's queue. It outlives everything that posts to it.

#include <functional>

namespace kestrel {

class MainQueue {
  public:
    virtual ~MainQueue() = default;

    /// Runs `task` on the main thread after the current work, without delay, in the order of
    /// posting. May be called on any thread; never runs the task inside the call. A task still
    /// queued when the event loop ends is dropped unrun.
    virtual void async(std::function<void()> task) = 0;
};

} // namespace kestrel
