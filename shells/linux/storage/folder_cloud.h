#pragma once
// The cloud as a directory, `cloud` in the program's data directory, that some file synchroniser
// shares, or a link into a synchronised folder. The user signs in by making it and signs out by
// removing it; the program does neither. One file per key, as in the local store.
//
// A folder that does not answer, as on a network that is down, counts as no account until it does;
// its first answer then is a change from outside. One that has answered before and falls silent
// keeps its account: what is saved meanwhile is written when it answers again.
//
// Changes by others are noticed only while a Qt event loop runs on the thread that added the first
// observer, and only those that this machine's kernel sees: a network file system that another
// machine writes to stays silent until the next start.

#include "platform/cloud.h"
#include "shells/linux/posix/file_operations.h"
#include "shells/linux/storage/cloud_folder.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace kestrel::linux_shell {

class CloudWatcher;

class FolderCloudStore final : public CloudKeyValueStore {
  public:
    /// `folder` outlives it.
    FolderCloudStore(CloudFolder& folder, std::string watchedKey);

    /// While the folder is silent every value is one that cannot be read.
    std::optional<std::string> dataForKey(std::string_view key) override;

    /// Does nothing while there is no account.
    void setData(std::string_view data, std::string_view key) override;

    /// Writes are durable at once and the synchroniser notices them itself, so there is nothing
    /// left to do. True while there is an account.
    bool synchronize() override;

  private:
    friend class FolderCloud;
    CloudFolder& folder_;
    /// Of the value under the watched key, once someone wants to know of its changes.
    CloudWatcher* watcher_ = nullptr;
    std::string watchedKey_;
};

class FolderCloud final : public Cloud {
  public:
    /// `dataDirectory` is absolute, or empty when there is none: then nobody is ever signed in.
    /// Changes of the value under `watchedKey` are reported. `operations` outlives this object and
    /// what it has asked of a folder that does not answer.
    FolderCloud(const std::string& dataDirectory, const std::string& watchedKey,
                FileOperations& operations = systemFileOperations(), CloudTimeouts timeouts = {});
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
    CloudFolder folder_;
    FolderCloudStore store_;
    std::vector<std::function<void()>> observers_;
    std::unique_ptr<CloudWatcher> watcher_;
};

} // namespace kestrel::linux_shell
