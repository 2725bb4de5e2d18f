// The storage ports' contracts on the files of the Linux shell.
#include "shells/linux/storage/file_user_defaults.h"
#include "shells/linux/storage/folder_cloud.h"
#include "tests/contract/cloud_contract.h"
#include "tests/contract/user_defaults_contract.h"
#include "tests/linux/storage/event_loop.h"
#include "tests/linux/storage/faulty_file_operations.h"
#include "tests/linux/storage/files.h"
#include "tests/linux/storage/long_timeouts.h"
#include "tests/linux/storage/temporary_folder.h"

#include <filesystem>
#include <memory>
#include <string>

#include <gtest/gtest.h>

namespace kestrel::tests {
namespace {

void makeNextCallFail(FaultyFileOperations& operations) {
    operations.failOnce(operations.calls.size());
}

class FileUserDefaultsRig {
  public:
    UserDefaults& defaults() { return *defaults_; }
    void makeNextWriteFail() { makeNextCallFail(operations_); }
    void startAnew() { defaults_ = make(); }

  private:
    std::unique_ptr<UserDefaults> make() {
        return std::make_unique<linux_shell::FileUserDefaults>(folder_ / "kestrel", operations_);
    }

    TemporaryFolder folder_;
    FaultyFileOperations operations_;
    std::unique_ptr<UserDefaults> defaults_ = make();
};

class FolderCloudRig {
  public:
    Cloud& cloud() { return cloud_; }
    void signIn() { std::filesystem::create_directory(folder_ / "cloud"); }
    void signOut() { std::filesystem::remove_all(folder_ / "cloud"); }
    void makeNextWriteFail() { makeNextCallFail(operations_); }
    void changeFromOutside(const std::string& key, const std::string& bytes) {
        replaceFile(folder_ / "cloud/" + key, bytes);
    }
    void deliver() { loop_.takeInWhatIsThere(); }

  private:
    EventLoop loop_;
    TemporaryFolder folder_;
    FaultyFileOperations operations_;
    linux_shell::FolderCloud cloud_{folder_.path(), "launcherItems", operations_, longTimeouts};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Files, UserDefaultsContract, FileUserDefaultsRig);
INSTANTIATE_TYPED_TEST_SUITE_P(Files, CloudContract, FolderCloudRig);

} // namespace
} // namespace kestrel::tests
