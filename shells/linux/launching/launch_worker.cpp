#include "shells/linux/launching/launch_worker.h"

#include "shells/linux/launching/glib_ptr.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <utility>

namespace kestrel::linux_shell {

namespace {

constexpr auto patience = std::chrono::seconds(2);

} // namespace

struct LaunchWorker::State {
    GlibMainContext context{g_main_context_new()};
    std::mutex mutex;
    std::condition_variable finished;
    std::deque<std::function<void()>> jobs;
    bool stopping = false;
    bool done = false;

    /// Runs what is queued; false once there is nothing left and the owner is gone.
    bool runJobs() {
        for (;;) {
            std::function<void()> job;
            {
                const std::lock_guard lock(mutex);
                if (jobs.empty())
                    return !stopping;
                job = std::move(jobs.front());
                jobs.pop_front();
            }
            job();
        }
    }

    void run() {
        g_main_context_push_thread_default(context.get());
        while (runJobs())
            g_main_context_iteration(context.get(), TRUE);
        g_main_context_pop_thread_default(context.get());
        const std::lock_guard lock(mutex);
        done = true;
        finished.notify_all();
    }
};

LaunchWorker::LaunchWorker()
    : state_(std::make_shared<State>()), thread_([state = state_] { state->run(); }) {}

LaunchWorker::~LaunchWorker() {
    bool done = false;
    {
        std::unique_lock lock(state_->mutex);
        state_->stopping = true;
        g_main_context_wakeup(state_->context.get());
        done = state_->finished.wait_for(lock, patience, [this] { return state_->done; });
    }
    if (done)
        thread_.join();
    else
        thread_.detach();
}

void LaunchWorker::async(std::function<void()> job) {
    {
        const std::lock_guard lock(state_->mutex);
        state_->jobs.push_back(std::move(job));
    }
    g_main_context_wakeup(state_->context.get());
}

} // namespace kestrel::linux_shell
