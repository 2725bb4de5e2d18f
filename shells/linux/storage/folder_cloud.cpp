#include "shells/linux/storage/folder_cloud.h"

#include "shells/linux/storage/cloud_watcher.h"

#include <utility>

namespace kestrel::linux_shell {

namespace {

std::string cloudDirectory(const std::string& dataDirectory) {
    return dataDirectory.empty() ? std::string() : dataDirectory + "/cloud";
}

} // namespace

FolderCloudStore::FolderCloudStore(FileOperations& operations, std::string directory,
                                   std::string watchedKey)
    : store_(operations, std::move(directory), MissingDirectory::fail),
      watchedKey_(std::move(watchedKey)) {}

std::optional<std::string> FolderCloudStore::dataForKey(std::string_view key) {
    auto data = store_.read(key);
    const bool isHeld = data || store_.holds(key);
    const bool isWatched = watcher_ != nullptr && key == watchedKey_;
    if (isHeld && isWatched)
        watcher_->valueIsThere();
    // What cannot be read is there all the same: as bytes that do not decode it is passed over, but
    // not taken for a missing value, which a local list would be put in place of. So is a value
    // that may be on its way.
    if (!data && (isHeld || (isWatched && store_.exists() && watcher_->valueIsMissing())))
        data.emplace();
    return data;
}

// A write that fails has left the stored value as it was, which is all that is asked of it.
void FolderCloudStore::setData(std::string_view data, std::string_view key) {
    if (store_.write(key, data) && watcher_ != nullptr && key == watchedKey_)
        watcher_->valueIsThere();
}

bool FolderCloudStore::synchronize() { return store_.exists(); }

FolderCloud::FolderCloud(const std::string& dataDirectory, std::string watchedKey,
                         FileOperations& operations)
    : directory_(cloudDirectory(dataDirectory)),
      store_(operations, directory_, std::move(watchedKey)) {}

FolderCloud::~FolderCloud() = default;

bool FolderCloud::hasIdentityToken() { return store_.store_.exists(); }

CloudKeyValueStore* FolderCloud::defaultStore() { return &store_; }

void FolderCloud::addExternalChangeObserver(std::function<void()> handler) {
    observers_.push_back(std::move(handler));
    if (watcher_ || directory_.empty())
        return;
    watcher_ = std::make_unique<CloudWatcher>(directory_, store_.watchedKey_, [this] { report(); });
    store_.watcher_ = watcher_.get();
}

void FolderCloud::report() const {
    // A handler may add another observer.
    const auto observers = observers_;
    for (const auto& observer : observers)
        observer();
}

} // namespace kestrel::linux_shell
