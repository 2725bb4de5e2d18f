#pragma once
// A call with a time limit. A file system may never answer: a dead network mount stops whoever asks
// it. Whoever may not be stopped asks through this, on another thread.

#include <chrono>
#include <functional>
#include <memory>
#include <thread>

namespace kestrel::linux_shell {

/// For one thread at a time.
class TimedCall {
  public:
    TimedCall() = default;

    /// Waits for the job under way; there is none unless run() is waiting for it.
    ~TimedCall();

    TimedCall(const TimedCall&) = delete;
    TimedCall& operator=(const TimedCall&) = delete;

    /// Runs `job` on the other thread and waits for its end, but no longer than `timeout`. False
    /// when it has not ended in time: it is then left alone with its thread and may outlive
    /// everything here, so it must own what it uses. `late`, of which the same is true, is called
    /// on that thread behind such a job, and behind no other. The next job gets a new thread.
    [[nodiscard]] bool run(std::function<void()> job, std::chrono::milliseconds timeout,
                           std::function<void()> late = {});

  private:
    struct State;

    void start();

    std::shared_ptr<State> state_;
    std::thread thread_;
};

} // namespace kestrel::linux_shell
