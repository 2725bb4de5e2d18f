#pragma once
// Watches a value of the cloud directory from the Qt event loop and calls back when someone else
// has changed it. Sleeps in the loop between events: nothing is polled.

#include "shells/linux/storage/path_watch.h"

#include <functional>
#include <memory>
#include <string>

class QSocketNotifier;
class QTimer;

namespace kestrel::linux_shell {

class CloudWatcher {
  public:
    /// Calls `changed` on this thread, from the event loop, once for everything found in one go.
    /// A file rewritten in place is reported when its writer closes it; a writer that does not
    /// close it is reported about twice a second. Without inotify `changed` is never called.
    CloudWatcher(std::string directory, std::string key, std::function<void()> changed);
    ~CloudWatcher();
    CloudWatcher(const CloudWatcher&) = delete;
    CloudWatcher& operator=(const CloudWatcher&) = delete;

  private:
    void takeIn(const PathChange& change);
    void watchMounts();

    PathWatch path_;
    std::function<void()> changed_;
    std::unique_ptr<QSocketNotifier> notifier_;
    std::unique_ptr<QTimer> patience_;
    /// The list of mounts, open; -1 where it cannot be read.
    int mounts_ = -1;
    std::unique_ptr<QSocketNotifier> mountNotifier_;
};

} // namespace kestrel::linux_shell
