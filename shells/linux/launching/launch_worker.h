#pragma once
// The one thread on which everything is launched, so that a click returns at once however slow the
// disk, the session bus or the start of a child is. Jobs run one after the other, in order.
//
// The thread iterates its own GLib main context, which is its thread-default one: answers to GIO's
// asynchronous calls made in a job arrive on the same thread, whatever event loop the program has.

#include <functional>
#include <memory>
#include <thread>

namespace kestrel::linux_shell {

class LaunchWorker {
  public:
    LaunchWorker();

    /// Finishes the jobs handed in so far, so that quitting right after a click still launches. A
    /// job that hangs (a dead network mount) holds the program back for two seconds at most; it
    /// is then abandoned and touches nothing of this object.
    ~LaunchWorker();

    LaunchWorker(const LaunchWorker&) = delete;
    LaunchWorker& operator=(const LaunchWorker&) = delete;

    /// May be called on any thread. A job must own what it uses: it may outlive everything here.
    void async(std::function<void()> job);

  private:
    struct State;

    std::shared_ptr<State> state_;
    std::thread thread_;
};

} // namespace kestrel::linux_shell
