#include "shells/linux/storage/cloud_watcher.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <chrono>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace kestrel::linux_shell {

namespace {

/// How long an unfinished rewriting in place may keep its changes to itself.
constexpr std::chrono::milliseconds patience{500};

} // namespace

CloudWatcher::CloudWatcher(std::string directory, std::string key, std::function<void()> changed)
    : path_(std::move(directory), std::move(key)), changed_(std::move(changed)) {
    if (path_.descriptor() < 0)
        return;
    notifier_ = std::make_unique<QSocketNotifier>(path_.descriptor(), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                     [this] { takeIn(path_.readChanges()); });
    patience_ = std::make_unique<QTimer>();
    patience_->setSingleShot(true);
    QObject::connect(patience_.get(), &QTimer::timeout, patience_.get(), [this] { changed_(); });
    watchMounts();
}

CloudWatcher::~CloudWatcher() {
    mountNotifier_.reset();
    if (mounts_ >= 0)
        ::close(mounts_);
}

void CloudWatcher::takeIn(const PathChange& change) {
    if (change.changed)
        patience_->stop();
    if (change.beingWritten && !patience_->isActive())
        patience_->start(patience);
    if (change.changed)
        changed_();
}

/// A synchroniser's folder may be a file system that is mounted after the start. inotify says
/// nothing of a mount over a watched directory, but the list of mounts does.
void CloudWatcher::watchMounts() {
    mounts_ = ::open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC);
    if (mounts_ < 0)
        return;
    mountNotifier_ = std::make_unique<QSocketNotifier>(mounts_, QSocketNotifier::Exception);
    QObject::connect(mountNotifier_.get(), &QSocketNotifier::activated, mountNotifier_.get(),
                     [this] { takeIn({.changed = path_.followPath()}); });
}

} // namespace kestrel::linux_shell
