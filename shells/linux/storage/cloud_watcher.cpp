#include "shells/linux/storage/cloud_watcher.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <chrono>
#include <utility>

#include <fcntl.h>

namespace kestrel::linux_shell {

namespace {

/// How long an unfinished rewriting in place may keep its changes to itself.
constexpr std::chrono::milliseconds rewriteTimeout{500};
/// How long a synchroniser may take between the two halves of a replacement.
constexpr std::chrono::seconds arrivalTimeout{3};

std::unique_ptr<QTimer> makeTimer(const std::function<void()>& expired) {
    auto timer = std::make_unique<QTimer>();
    timer->setSingleShot(true);
    QObject::connect(timer.get(), &QTimer::timeout, timer.get(), expired);
    return timer;
}

} // namespace

CloudWatcher::CloudWatcher(CloudFolder& folder, std::string directory, std::string key,
                           std::function<void()> changed)
    : folder_(folder),
      path_(std::make_shared<PathWatch>(std::move(directory), std::move(key))),
      changed_(std::move(changed)) {
    if (path_->descriptor() < 0)
        return;
    notifier_ = std::make_unique<QSocketNotifier>(path_->descriptor(), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                     [this] { read(&PathWatch::readChanges); });
    rewriteTimer_ = makeTimer([this] { changed_(); });
    arrivalTimer_ = makeTimer([this] {
        isExpected_ = false;
        changed_();
    });
    watchMounts();
    folder_.ask([path = path_](FileStore&) { return path->followPath(); });
}

CloudWatcher::~CloudWatcher() = default;

void CloudWatcher::read(const std::function<PathChange(PathWatch&)>& changes) {
    if (const auto change =
            folder_.ask([path = path_, changes](FileStore&) { return changes(*path); }))
        takeIn(*change);
    else
        listen(false);
}

/// What is not read stays readable: the event loop would not rest.
void CloudWatcher::listen(bool on) {
    for (QSocketNotifier* notifier : {notifier_.get(), mountNotifier_.get()})
        if (notifier != nullptr)
            notifier->setEnabled(on);
}

void CloudWatcher::takeIn(const PathChange& change) {
    if (change.ofDirectory) {
        arrivalTimer_->stop();
        isExpected_ = true;
    }
    if (change.vanished) {
        isExpected_ = true;
        arrivalTimer_->start(arrivalTimeout);
    }
    if (change.changed)
        rewriteTimer_->stop();
    if (change.beingWritten && !rewriteTimer_->isActive())
        rewriteTimer_->start(rewriteTimeout);
    if (change.changed)
        changed_();
}

void CloudWatcher::valueIsThere() {
    if (arrivalTimer_)
        arrivalTimer_->stop();
    isExpected_ = true;
}

bool CloudWatcher::valueIsMissing() {
    if (!arrivalTimer_ || !isExpected_)
        return false;
    if (!arrivalTimer_->isActive())
        arrivalTimer_->start(arrivalTimeout);
    return true;
}

/// A synchroniser's folder may be a file system that is mounted after the start. inotify says
/// nothing of a mount over a watched directory, but the list of mounts does.
void CloudWatcher::watchMounts() {
    mounts_ = Descriptor(::open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC));
    if (!mounts_.isOpen())
        return;
    mountNotifier_ =
        std::make_unique<QSocketNotifier>(mounts_.number(), QSocketNotifier::Exception);
    QObject::connect(mountNotifier_.get(), &QSocketNotifier::activated, mountNotifier_.get(),
                     [this] {
                         read([](PathWatch& path) {
                             const bool isAnother = path.followPath();
                             return PathChange{.changed = isAnother, .ofDirectory = isAnother};
                         });
                     });
}

} // namespace kestrel::linux_shell
