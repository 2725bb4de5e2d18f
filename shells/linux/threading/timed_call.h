#pragma once
// A thread for questions that a file system may never answer: a dead network mount stops whoever
// asks. Whoever may not be stopped asks through this one.

#include <chrono>
#include <functional>
#include <memory>
#include <thread>

namespace kestrel::linux_shell {

/// For one thread at a time.
class PatientThread {
  public:
    PatientThread() = default;

    /// Waits for the job under way; there is none unless run() is waiting for it.
    ~PatientThread();

    PatientThread(const PatientThread&) = delete;
    PatientThread& operator=(const PatientThread&) = delete;

    /// Runs `job` on the other thread and waits for its end, but no longer than `patience`. False
    /// when it did not end in time; it is then left alone with its thread and may outlive
    /// everything here, so it must own what it uses. The next job gets a new thread.
    bool run(std::function<void()> job, std::chrono::milliseconds patience);

  private:
    struct State;

    void start();

    std::shared_ptr<State> state_;
    std::thread thread_;
};

} // namespace kestrel::linux_shell
