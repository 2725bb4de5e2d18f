#pragma once
// The cloud as a directory, `cloud` in the program's data directory, that some file synchroniser
// shares, or a link into a synchronised folder. The user signs in by making it and signs out by
// removing it; the program does neither. One file per key, as in the local store.
//
// Changes by others are noticed only while a Qt event loop runs on the thread that added the first
// observer, and only those that this machine's kernel sees: a network file system that another
// machine writes to stays silent until the next start.

#include "platform/cloud.h"
#include "shells/linux/storage/file_operations.h"
#include "shells/linux/storage/file_store.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace kestrel::linux_shell {

class CloudWatcher;

class FolderCloudStore final : public CloudKeyValueStore {
  public:
    FolderCloudStore(FileOperations& operations, std::string directory, std::string watchedKey);

    std::optional<std::string> dataForKey(std::string_view key) override;

    /// Does nothing while there is no account.
    void setData(std::string_view data, std::string_view key) override;

    /// Writes are durable at once and the synchroniser notices them itself, so there is nothing
    /// left to do. True while there is an account.
    bool synchronize() override;

  private:
    friend class FolderCloud;
    FileStore store_;
    /// Of the value under the watched key, once someone wants to know of its changes.
    CloudWatcher* watcher_ = nullptr;
    std::string watchedKey_;
};

class FolderCloud final : public Cloud {
  public:
    /// `dataDirectory` is absolute, or empty when there is none: then nobody is ever signed in.
    /// Changes of the value under `watchedKey` are reported. `operations` outlives this object.
    FolderCloud(const std::string& dataDirectory, std::string watchedKey,
                FileOperations& operations = systemFileOperations());
    ~FolderCloud() override;
    FolderCloud(const FolderCloud&) = delete;
    FolderCloud& operator=(const FolderCloud&) = delete;

    bool hasIdentityToken() override;
    CloudKeyValueStore* defaultStore() override;

    /// The handlers are called on this thread.
    void addExternalChangeObserver(std::function<void()> handler) override;

  private:
    void report() const;

    std::string directory_;
    FolderCloudStore store_;
    std::vector<std::function<void()>> observers_;
    std::unique_ptr<CloudWatcher> watcher_;
};

} // namespace kestrel::linux_shell
