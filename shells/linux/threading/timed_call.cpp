#include "shells/linux/threading/timed_call.h"

#include <condition_variable>
#include <mutex>
#include <utility>

namespace kestrel::linux_shell {

struct TimedCall::State {
    std::mutex mutex;
    std::condition_variable changed;
    std::function<void()> job;
    std::function<void()> late; ///< set when nobody waits for the job any longer
    bool busy = false;
    bool stopping = false;

    void run() {
        std::unique_lock lock(mutex);
        for (;;) {
            changed.wait(lock, [this] { return job || stopping; });
            if (!job)
                return;
            const std::function<void()> current = std::exchange(job, nullptr);
            lock.unlock();
            current();
            lock.lock();
            busy = false;
            changed.notify_all();
            if (late) {
                lock.unlock();
                late();
                return;
            }
        }
    }
};

TimedCall::~TimedCall() {
    if (!state_)
        return;
    {
        const std::lock_guard lock(state_->mutex);
        state_->stopping = true;
    }
    state_->changed.notify_all();
    thread_.join();
}

void TimedCall::start() {
    state_ = std::make_shared<State>();
    thread_ = std::thread([state = state_] { state->run(); });
}

bool TimedCall::run(std::function<void()> job, std::chrono::milliseconds timeout,
                    std::function<void()> late) {
    if (!state_)
        start();
    std::unique_lock lock(state_->mutex);
    state_->job = std::move(job);
    state_->busy = true;
    state_->changed.notify_all();
    if (state_->changed.wait_for(lock, timeout, [this] { return !state_->busy; }))
        return true;
    state_->stopping = true;
    state_->late = std::move(late);
    lock.unlock();
    thread_.detach();
    state_.reset();
    return false;
}

} // namespace kestrel::linux_shell
