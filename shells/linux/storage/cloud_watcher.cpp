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
/// How long a synchroniser may take between the two halves of a replacement.
constexpr std::chrono::seconds arrivalLimit{3};

std::unique_ptr<QTimer> makeTimer(const std::function<void()>& expired) {
    auto timer = std::make_unique<QTimer>();
    timer->setSingleShot(true);
    QObject::connect(timer.get(), &QTimer::timeout, timer.get(), expired);
    return timer;
}

} // namespace

CloudWatcher::CloudWatcher(std::string directory, std::string key, std::function<void()> changed)
    : path_(std::move(directory), std::move(key)), changed_(std::move(changed)) {
    if (path_.descriptor() < 0)
        return;
    notifier_ = std::make_unique<QSocketNotifier>(path_.descriptor(), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                     [this] { takeIn(path_.readChanges()); });
    patience_ = makeTimer([this] { changed_(); });
    arrival_ = makeTimer([this] {
        isExpected_ = false;
        changed_();
    });
    watchMounts();
}

CloudWatcher::~CloudWatcher() {
    mountNotifier_.reset();
    if (mounts_ >= 0)
        ::close(mounts_);
}

void CloudWatcher::takeIn(const PathChange& change) {
    if (change.ofDirectory) {
        arrival_->stop();
        isExpected_ = true;
    }
    if (change.vanished) {
        isExpected_ = true;
        arrival_->start(arrivalLimit);
    }
    if (change.changed)
        patience_->stop();
    if (change.beingWritten && !patience_->isActive())
        patience_->start(patience);
    if (change.changed)
        changed_();
}

void CloudWatcher::valueIsThere() {
    if (arrival_)
        arrival_->stop();
    isExpected_ = true;
}

bool CloudWatcher::valueIsMissing() {
    if (!arrival_ || !isExpected_)
        return false;
    if (!arrival_->isActive())
        arrival_->start(arrivalLimit);
    return true;
}

/// A synchroniser's folder may be a file system that is mounted after the start. inotify says
/// nothing of a mount over a watched directory, but the list of mounts does.
void CloudWatcher::watchMounts() {
    mounts_ = ::open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC);
    if (mounts_ < 0)
        return;
    mountNotifier_ = std::make_unique<QSocketNotifier>(mounts_, QSocketNotifier::Exception);
    QObject::connect(mountNotifier_.get(), &QSocketNotifier::activated, mountNotifier_.get(),
                     [this] {
                         const bool isAnother = path_.followPath();
                         takeIn({.changed = isAnother, .ofDirectory = isAnother});
                     });
}

} // namespace kestrel::linux_shell
