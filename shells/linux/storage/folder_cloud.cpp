#include "shells/linux/storage/folder_cloud.h"

#include "shells/linux/storage/cloud_watcher.h"

#include <utility>

namespace kestrel::linux_shell {

namespace {

std::string cloudDirectory(const std::string& dataDirectory) {
    return dataDirectory.empty() ? std::string() : dataDirectory + "/cloud";
}

} // namespace

FolderCloudStore::FolderCloudStore(CloudFolder& folder, std::string watchedKey)
    : folder_(folder), watchedKey_(std::move(watchedKey)) {}

std::optional<std::string> FolderCloudStore::dataForKey(std::string_view key) {
    auto found = folder_.read(key);
    if (!found)
        return std::string();
    const bool isWatched = watcher_ != nullptr && key == watchedKey_;
    if (found->isHeld && isWatched)
        watcher_->valueIsThere();
    // What cannot be read is there all the same: as bytes that do not decode it is passed over, but
    // not taken for a missing value, which a local list would be put in place of. So is a value
    // that may be on its way.
    const bool isOnItsWay =
        !found->isHeld && isWatched && found->hasFolder && watcher_->valueIsMissing();
    if (!found->data && (found->isHeld || isOnItsWay))
        found->data.emplace();
    return std::move(found->data);
}

// A write that fails has left the stored value as it was, which is all that is asked of it.
void FolderCloudStore::setData(std::string_view data, std::string_view key) {
    if (folder_.write(key, data) && watcher_ != nullptr && key == watchedKey_)
        watcher_->valueIsThere();
}

bool FolderCloudStore::synchronize() { return folder_.exists(); }

FolderCloud::FolderCloud(const std::string& dataDirectory, const std::string& watchedKey,
                         FileOperations& operations, CloudTimeouts timeouts)
    : directory_(cloudDirectory(dataDirectory)),
      folder_(operations, directory_, watchedKey, timeouts),
      store_(folder_, watchedKey) {}

FolderCloud::~FolderCloud() = default;

bool FolderCloud::hasIdentityToken() { return folder_.exists(); }

CloudKeyValueStore* FolderCloud::defaultStore() { return &store_; }

void FolderCloud::addExternalChangeObserver(std::function<void()> handler) {
    observers_.push_back(std::move(handler));
    if (watcher_ || directory_.empty())
        return;
    watcher_ = std::make_unique<CloudWatcher>(folder_, directory_, store_.watchedKey_,
                                              [this] { report(); });
    store_.watcher_ = watcher_.get();
    folder_.whenItAnswersAgain([this] {
        watcher_->listenAgain();
        report();
    });
}

void FolderCloud::report() const {
    // A handler may add another observer.
    const auto observers = observers_;
    for (const auto& observer : observers)
        observer();
}

} // namespace kestrel::linux_shell
