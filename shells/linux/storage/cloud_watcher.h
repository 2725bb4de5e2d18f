#pragma once
// Watches a value of the cloud directory from the Qt event loop and calls back when someone else
// has changed it. Sleeps in the loop between events: nothing is polled.

#include "shells/linux/posix/descriptor.h"
#include "shells/linux/storage/cloud_folder.h"
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
    /// close it is reported about twice a second. A value that is removed is reported when it stays
    /// away. Without inotify `changed` is never called. `folder` is that of `directory` and
    /// outlives this object: what may wait for the file system is asked through it.
    CloudWatcher(CloudFolder& folder, std::string directory, std::string key,
                 std::function<void()> changed);
    ~CloudWatcher();
    CloudWatcher(const CloudWatcher&) = delete;
    CloudWatcher& operator=(const CloudWatcher&) = delete;

    /// To be told at every look at the value what it found.
    void valueIsThere();

    /// True when the value may be on its way and nothing is to be put in its place: a synchroniser
    /// may remove the old file before it puts the new one there, and make the directory before the
    /// file in it. When it has not come after some seconds that is reported as a change, and from
    /// then on this is false.
    bool valueIsMissing();

    /// To be told when a silent folder answers again. What has happened in it meanwhile, or was
    /// being looked at when it fell silent, is not reported.
    void listenAgain() { listen(true); }

  private:
    void read(const std::function<PathChange(PathWatch&)>& changes);
    void takeIn(const PathChange& change);
    void listen(bool on);
    void watchMounts();

    CloudFolder& folder_;
    /// Belongs to the folder's thread while the folder is asked.
    std::shared_ptr<PathWatch> path_;
    std::function<void()> changed_;
    std::unique_ptr<QSocketNotifier> notifier_;
    /// Runs while someone writes into the file.
    std::unique_ptr<QTimer> rewriteTimer_;
    /// Runs while an expected value is missing.
    std::unique_ptr<QTimer> arrivalTimer_;
    bool isExpected_ = false;
    /// The list of mounts, where it can be read.
    Descriptor mounts_{-1};
    std::unique_ptr<QSocketNotifier> mountNotifier_;
};

} // namespace kestrel::linux_shell
