#pragma once
// Where everything is launched: off the main thread, so that a click returns at once however slow
// the disk, the session bus or the start of a child is. Jobs run one after the other, in order.
//
// The thread iterates its own GLib main context, which is its thread-default one: answers to GIO's
// asynchronous calls made in a job arrive on the same thread, whatever event loop the program has.

#include <chrono>
#include <functional>
#include <memory>

namespace kestrel::linux_shell {

class LaunchWorker {
  public:
    static constexpr std::chrono::milliseconds defaultTimeout{2000};

    /// A job that takes longer than `timeout` hangs.
    explicit LaunchWorker(std::chrono::milliseconds timeout = defaultTimeout);

    /// Finishes the jobs handed in so far, so that quitting right after a click still launches,
    /// but holds the program back for little more than the timeout.
    ~LaunchWorker();

    LaunchWorker(const LaunchWorker&) = delete;
    LaunchWorker& operator=(const LaunchWorker&) = delete;

    /// May be called on any thread. A job must own what it uses: one that hangs (a dead network
    /// mount) is left alone with its thread, touches nothing of this object and may outlive
    /// everything here. The jobs behind it then run on another thread.
    void async(std::function<void()> job);

  private:
    struct State;

    std::shared_ptr<State> state_;
};

} // namespace kestrel::linux_shell
