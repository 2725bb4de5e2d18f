#include "shells/linux/storage/folder_cloud.h"
#include "tests/linux/storage/files.h"
#include "tests/linux/storage/long_timeouts.h"
#include "tests/linux/storage/temporary_folder.h"

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace kestrel::tests {
namespace {

namespace fs = std::filesystem;
using linux_shell::FolderCloud;
using Names = std::vector<std::string>;

class FolderCloudTest : public testing::Test {
  protected:
    TemporaryFolder folder;
    std::string directory = folder / "cloud";
    FolderCloud cloud{folder.path(), "launcherItems", linux_shell::systemFileOperations(),
                      longTimeouts};
};

TEST_F(FolderCloudTest, AnAccountIsADirectory) {
    EXPECT_FALSE(cloud.hasIdentityToken());
    fs::create_directory(directory);
    EXPECT_TRUE(cloud.hasIdentityToken());
    fs::remove(directory);
    EXPECT_FALSE(cloud.hasIdentityToken());
}

TEST_F(FolderCloudTest, AnAccountMayBeALinkToADirectory) {
    fs::create_directory_symlink(folder / "Sync", directory);
    EXPECT_FALSE(cloud.hasIdentityToken());
    fs::create_directory(folder / "Sync");
    EXPECT_TRUE(cloud.hasIdentityToken());
    cloud.defaultStore()->setData("[]", "launcherItems");
    EXPECT_EQ(contentsOf(folder / "Sync/launcherItems"), "[]");
    EXPECT_TRUE(fs::is_symlink(directory));
}

TEST_F(FolderCloudTest, AFileIsNoAccount) {
    writeInPlace(directory, "a file");
    EXPECT_FALSE(cloud.hasIdentityToken());
    fs::remove(directory);
    ASSERT_EQ(::mkfifo(directory.c_str(), 0600), 0);
    EXPECT_FALSE(cloud.hasIdentityToken());
}

TEST_F(FolderCloudTest, WithoutAnAccountNothingIsReadOrMade) {
    EXPECT_EQ(cloud.defaultStore()->dataForKey("launcherItems"), std::nullopt);
    cloud.defaultStore()->setData("[]", "launcherItems");
    EXPECT_FALSE(cloud.defaultStore()->synchronize());
    EXPECT_EQ(namesIn(folder.path()), Names{});
}

TEST_F(FolderCloudTest, AValueThatCannotBeReadIsThereWithoutBytes) {
    fs::create_directories(directory + "/launcherItems");
    EXPECT_EQ(cloud.defaultStore()->dataForKey("launcherItems"), "");
    fs::remove(directory + "/launcherItems");
    EXPECT_EQ(cloud.defaultStore()->dataForKey("launcherItems"), std::nullopt);
    fs::create_symlink("launcherItems", directory + "/launcherItems");
    EXPECT_EQ(cloud.defaultStore()->dataForKey("launcherItems"), "");
}

TEST_F(FolderCloudTest, ALinkWhoseEndIsMissingIsAMissingValue) {
    fs::create_directory(directory);
    fs::create_symlink(folder / "elsewhere", directory + "/launcherItems");
    EXPECT_EQ(cloud.defaultStore()->dataForKey("launcherItems"), std::nullopt);
}

TEST_F(FolderCloudTest, ALinkToNowhereIsNotFollowedIntoBeing) {
    fs::create_directory_symlink(folder / "Sync", directory);
    cloud.defaultStore()->setData("[]", "launcherItems");
    EXPECT_EQ(namesIn(folder.path()), Names{"cloud"});
}

TEST_F(FolderCloudTest, WithoutADataDirectoryNobodyIsSignedIn) {
    FolderCloud none{"", "launcherItems"};
    none.addExternalChangeObserver([] {});
    none.defaultStore()->setData("[]", "launcherItems");
    EXPECT_FALSE(none.hasIdentityToken());
    EXPECT_FALSE(none.defaultStore()->synchronize());
    EXPECT_EQ(none.defaultStore()->dataForKey("launcherItems"), std::nullopt);
    EXPECT_FALSE(fs::exists("/cloud"));
}

TEST_F(FolderCloudTest, TheStoreStaysTheSameObject) {
    EXPECT_NE(cloud.defaultStore(), nullptr);
    EXPECT_EQ(cloud.defaultStore(), cloud.defaultStore());
}

} // namespace
} // namespace kestrel::tests
