#include "shells/linux/launching/launch_worker.h"

#include "shells/linux/glib/glib_ptr.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

namespace kestrel::linux_shell {

namespace {

using Clock = std::chrono::steady_clock;
using Lock = std::unique_lock<std::mutex>;

} // namespace

/// Shared with the threads: one that runs the jobs, those that it has replaced and, while jobs wait
/// behind a running one, a watchdog that may have to replace it. The mutex guards all that changes.
struct LaunchWorker::State : std::enable_shared_from_this<State> {
    explicit State(std::chrono::milliseconds limit) : timeout(limit) {}

    const std::chrono::milliseconds timeout;
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::function<void()>> jobs;
    GMainContext* context = nullptr; ///< of the thread that runs the jobs, and which one that is
    Clock::time_point started;       ///< when the running job has begun
    bool busy = false;
    bool hasWatchdog = false;
    bool stopping = false;
    bool done = false;

    void startWatchdog() {
        if (busy && !jobs.empty() && !std::exchange(hasWatchdog, true))
            std::thread([state = shared_from_this()] { state->watch(); }).detach();
    }

    void runJob(Lock& lock) {
        std::function<void()> job = std::move(jobs.front());
        jobs.pop_front();
        busy = true;
        started = Clock::now();
        startWatchdog();
        changed.notify_all();
        lock.unlock();
        job();
        job = nullptr;
        lock.lock();
    }

    /// Until the end, or until another thread has replaced this one.
    void runJobs() {
        const GlibMainContext own(g_main_context_new());
        g_main_context_push_thread_default(own.get());
        Lock lock(mutex);
        context = own.get();
        while (!jobs.empty() || !stopping) {
            if (jobs.empty()) {
                lock.unlock();
                g_main_context_iteration(own.get(), TRUE);
                lock.lock();
                continue;
            }
            runJob(lock);
            if (context != own.get())
                break;
            busy = false;
            changed.notify_all();
        }
        if (context == own.get()) {
            context = nullptr;
            done = true;
            changed.notify_all();
        }
        lock.unlock();
        g_main_context_pop_thread_default(own.get());
    }

    /// Waits until nothing waits any longer. True when the running job takes too long for that.
    bool mustReplace() {
        Lock lock(mutex);
        while (!jobs.empty()) {
            if (busy && Clock::now() >= started + timeout) {
                context = nullptr;
                busy = hasWatchdog = false;
                return true;
            }
            changed.wait_until(lock, busy ? started + timeout : Clock::now() + timeout);
        }
        hasWatchdog = false;
        return false;
    }

    void watch() {
        if (mustReplace())
            runJobs();
    }
};

LaunchWorker::LaunchWorker(std::chrono::milliseconds timeout)
    : state_(std::make_shared<State>(timeout)) {
    std::thread([state = state_] { state->runJobs(); }).detach();
}

LaunchWorker::~LaunchWorker() {
    Lock lock(state_->mutex);
    state_->stopping = true;
    if (state_->context != nullptr)
        g_main_context_wakeup(state_->context);
    state_->changed.wait_for(lock, state_->timeout + state_->timeout / 4,
                             [this] { return state_->done; });
}

void LaunchWorker::async(std::function<void()> job) {
    const std::lock_guard lock(state_->mutex);
    state_->jobs.push_back(std::move(job));
    if (state_->context != nullptr)
        g_main_context_wakeup(state_->context);
    state_->startWatchdog();
}

} // namespace kestrel::linux_shell
