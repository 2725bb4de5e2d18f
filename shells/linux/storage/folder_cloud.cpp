#include "shells/linux/storage/folder_cloud.h"

#include "shells/linux/storage/cloud_watcher.h"

#include <utility>

namespace kestrel::linux_shell {

namespace {

std::string cloudDirectory(const std::string& dataDirectory) {
    return dataDirectory.empty() ? std::string() : dataDirectory + "/cloud";
}

} // namespace

FolderCloudStore::FolderCloudStore(FileOperations& operations, std::string directory)
    : store_(operations, std::move(directory), MissingDirectory::fail) {}

std::optional<std::string> FolderCloudStore::dataForKey(std::string_view key) {
    return store_.read(key);
}

// A write that fails has left the stored value as it was, which is all that is asked of it.
void FolderCloudStore::setData(std::string_view data, std::string_view key) {
    store_.write(key, data);
}

bool FolderCloudStore::synchronize() { return store_.exists(); }

FolderCloud::FolderCloud(const std::string& dataDirectory, std::string watchedKey,
                         FileOperations& operations)
    : directory_(cloudDirectory(dataDirectory)),
      watchedKey_(std::move(watchedKey)),
      store_(operations, directory_) {}

FolderCloud::~FolderCloud() = default;

bool FolderCloud::hasIdentityToken() { return store_.store_.exists(); }

CloudKeyValueStore* FolderCloud::defaultStore() { return &store_; }

void FolderCloud::addExternalChangeObserver(std::function<void()> handler) {
    observers_.push_back(std::move(handler));
    if (!watcher_ && !directory_.empty())
        watcher_ = std::make_unique<CloudWatcher>(directory_, watchedKey_, [this] { report(); });
}

void FolderCloud::report() const {
    // A handler may add another observer.
    const auto observers = observers_;
    for (const auto& observer : observers)
        observer();
}

} // namespace kestrel::linux_shell
