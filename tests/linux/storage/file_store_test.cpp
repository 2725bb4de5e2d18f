#include "shells/linux/storage/file_store.h"
#include "shells/linux/storage/temporary_name.h"
#include "tests/linux/storage/faulty_file_operations.h"
#include "tests/linux/storage/files.h"
#include "tests/linux/storage/temporary_folder.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kestrel::tests {
namespace {

namespace fs = std::filesystem;
using linux_shell::FileStore;
using linux_shell::MissingDirectory;
using linux_shell::systemFileOperations;
using Names = std::vector<std::string>;

class FileStoreTest : public testing::Test {
  protected:
    TemporaryFolder folder;
    std::string directory = folder / "data";
    std::string file = directory + "/launcherItems";
    FileStore store{systemFileOperations(), directory, MissingDirectory::create};

    void makeDirectory() const { fs::create_directory(directory); }
};

TEST_F(FileStoreTest, WhatIsWrittenIsRead) {
    for (const std::string& data : {std::string("[]"), std::string(), std::string("a\0b\xFF\n", 5),
                                    std::string(3000000, 'x')}) {
        EXPECT_TRUE(store.write("launcherItems", data));
        EXPECT_EQ(store.read("launcherItems"), data);
        EXPECT_EQ(contentsOf(file), data);
    }
    EXPECT_EQ(namesIn(directory), Names{"launcherItems"});
}

TEST_F(FileStoreTest, ReadingMakesNoDirectory) {
    EXPECT_EQ(store.read("launcherItems"), std::nullopt);
    EXPECT_FALSE(store.exists());
    EXPECT_FALSE(fs::exists(directory));
}

TEST_F(FileStoreTest, AStoreThatMayNotMakeItsDirectoryWritesNothing) {
    FileStore strict{systemFileOperations(), directory, MissingDirectory::fail};
    EXPECT_FALSE(strict.write("launcherItems", "[]"));
    EXPECT_FALSE(fs::exists(directory));
    makeDirectory();
    EXPECT_TRUE(strict.exists());
    EXPECT_TRUE(strict.write("launcherItems", "[]"));
    EXPECT_EQ(contentsOf(file), "[]");
}

TEST_F(FileStoreTest, WithoutADirectoryNothingIsReadOrWritten) {
    const fs::path before = fs::current_path();
    fs::current_path(folder.path());
    writeInPlace(folder / "launcherItems", "not ours");
    FileStore none{systemFileOperations(), "", MissingDirectory::create};
    EXPECT_FALSE(none.exists());
    EXPECT_EQ(none.read("launcherItems"), std::nullopt);
    EXPECT_FALSE(none.write("launcherItems", "[]"));
    fs::current_path(before);
    EXPECT_EQ(contentsOf(folder / "launcherItems"), "not ours");
    EXPECT_EQ(namesIn(folder.path()), Names{"launcherItems"});
}

TEST_F(FileStoreTest, KeysThatCannotNameAFileAreMissing) {
    makeDirectory();
    writeInPlace(folder / "outside", "outside");
    writeInPlace(directory + "/.hidden", "hidden");
    for (const std::string& key :
         {std::string(), std::string("."), std::string(".."), std::string("../outside"),
          std::string("a/b"), std::string(".hidden"), std::string("a\0b", 3)}) {
        EXPECT_EQ(store.read(key), std::nullopt) << key;
        EXPECT_FALSE(store.write(key, "new")) << key;
    }
    EXPECT_EQ(namesIn(directory), Names{".hidden"});
    EXPECT_EQ(contentsOf(folder / "outside"), "outside");
}

TEST_F(FileStoreTest, FilesAreForTheOwnerAloneWhateverTheUmask) {
    for (const mode_t mask : {mode_t{0}, mode_t{077}, mode_t{0777}}) {
        fs::remove_all(directory);
        const mode_t old = ::umask(mask);
        const bool stored = store.write("launcherItems", "[]");
        ::umask(old);
        EXPECT_TRUE(stored) << mask;
        EXPECT_EQ(modeOf(directory), 0700) << mask;
        EXPECT_EQ(modeOf(file), 0600) << mask;
    }
}

TEST_F(FileStoreTest, AFifoNeitherHangsTheReaderNorIsReplaced) {
    makeDirectory();
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
    EXPECT_EQ(store.read("launcherItems"), std::nullopt);
    EXPECT_FALSE(store.write("launcherItems", "[]"));
    EXPECT_TRUE(fs::is_fifo(file));
    EXPECT_EQ(namesIn(directory), Names{"launcherItems"});
}

TEST_F(FileStoreTest, AFifoIsNotReplacedWhenACallFailsEither) {
    makeDirectory();
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
    FaultyFileOperations operations;
    FileStore faulty{operations, directory, MissingDirectory::fail};
    EXPECT_FALSE(faulty.write("launcherItems", "[]"));
    const std::size_t count = operations.calls.size();
    ASSERT_GT(count, 2U);
    for (std::size_t i = 0; i < count; ++i) {
        operations.failOnce(operations.calls.size() + i);
        EXPECT_FALSE(faulty.write("launcherItems", "[]")) << operations.calls[i];
        EXPECT_TRUE(fs::is_fifo(file)) << operations.calls[i];
    }
}

TEST_F(FileStoreTest, ADirectoryInTheFilesPlaceIsKept) {
    makeDirectory();
    fs::create_directory(file);
    writeInPlace(file + "/inside", "kept");
    EXPECT_EQ(store.read("launcherItems"), std::nullopt);
    EXPECT_FALSE(store.write("launcherItems", "[]"));
    EXPECT_EQ(contentsOf(file + "/inside"), "kept");
    EXPECT_EQ(namesIn(directory), Names{"launcherItems"});
}

TEST_F(FileStoreTest, AFileInTheDirectorysPlaceIsKept) {
    writeInPlace(directory, "a file");
    EXPECT_FALSE(store.exists());
    EXPECT_EQ(store.read("launcherItems"), std::nullopt);
    EXPECT_FALSE(store.write("launcherItems", "[]"));
    EXPECT_EQ(contentsOf(directory), "a file");
}

TEST_F(FileStoreTest, AnEmptyFileIsAnEmptyValue) {
    makeDirectory();
    writeInPlace(file, "");
    EXPECT_EQ(store.read("launcherItems"), "");
}

TEST_F(FileStoreTest, AFileBeyondTheLimitIsNotReadAndNotWritten) {
    makeDirectory();
    writeInPlace(file, "");
    fs::resize_file(file, FileStore::maximumSize + 1);
    EXPECT_EQ(store.read("launcherItems"), std::nullopt);
    EXPECT_FALSE(store.write("launcherItems", std::string(FileStore::maximumSize + 1, 'x')));
    EXPECT_EQ(fs::file_size(file), FileStore::maximumSize + 1);
}

TEST_F(FileStoreTest, TheSizeThatTheSystemReportsIsNotTrusted) {
    FileStore system{systemFileOperations(), "/proc/self", MissingDirectory::fail};
    const auto status = system.read("status"); // reported as empty
    ASSERT_TRUE(status);
    EXPECT_NE(status->find("Pid:"), std::string::npos);
}

TEST_F(FileStoreTest, ALinkIsFollowedAndStaysALink) {
    makeDirectory();
    fs::create_directory(folder / "common");
    writeInPlace(folder / "common/list", "old");
    for (const std::string& target : {folder / "common/list", std::string("../common/list")}) {
        fs::remove(file);
        fs::create_symlink(target, file);
        EXPECT_TRUE(store.write("launcherItems", "new " + target));
        EXPECT_TRUE(fs::is_symlink(file)) << target;
        EXPECT_EQ(contentsOf(folder / "common/list"), "new " + target);
        EXPECT_EQ(store.read("launcherItems"), "new " + target);
        EXPECT_EQ(namesIn(folder / "common"), Names{"list"});
        EXPECT_EQ(namesIn(directory), Names{"launcherItems"});
    }
}

TEST_F(FileStoreTest, LinksAreFollowedOneAfterTheOther) {
    makeDirectory();
    fs::create_directory(folder / "a");
    fs::create_symlink("../a/second", file);
    fs::create_symlink("third", folder / "a/second");
    EXPECT_EQ(store.read("launcherItems"), std::nullopt);
    EXPECT_TRUE(store.write("launcherItems", "new"));
    EXPECT_EQ(contentsOf(folder / "a/third"), "new");
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_TRUE(fs::is_symlink(folder / "a/second"));
}

TEST_F(FileStoreTest, LinksThatLeadNowhereAreKeptAndNothingIsWritten) {
    makeDirectory();
    fs::create_directory(folder / "a");
    for (const std::string& target :
         {folder / "missing/list", std::string("launcherItems"), std::string("../a/"),
          std::string(".."), folder / "a", std::string("/dev/null")}) {
        fs::remove(file);
        fs::create_symlink(target, file);
        EXPECT_FALSE(store.write("launcherItems", "new")) << target;
        EXPECT_EQ(fs::read_symlink(file), target);
        EXPECT_EQ(namesIn(directory), Names{"launcherItems"}) << target;
        EXPECT_EQ(namesIn(folder / "a"), Names{}) << target;
    }
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST_F(FileStoreTest, TheDirectoryMayBeALink) {
    fs::create_directory(folder / "real");
    fs::create_directory_symlink("real", directory);
    EXPECT_TRUE(store.exists());
    EXPECT_TRUE(store.write("launcherItems", "[]"));
    EXPECT_TRUE(fs::is_symlink(directory));
    EXPECT_EQ(contentsOf(folder / "real/launcherItems"), "[]");
}

TEST_F(FileStoreTest, StaleTemporariesGoWithTheNextWriteAndOthersStay) {
    makeDirectory();
    const std::string stale = linux_shell::nextTemporaryName("launcherItems");
    const std::string otherKey = linux_shell::nextTemporaryName("lastLocalSync");
    std::string otherMachine = linux_shell::nextTemporaryName("launcherItems");
    char& digit = otherMachine[std::string(".launcherItems.kestrel-").size()];
    digit = digit == '0' ? '1' : '0';
    Names kept{".syncthing.launcherItems.tmp", ".launcherItems.AbCdEf", otherKey, otherMachine};
    for (const std::string& name : kept)
        writeInPlace(directory + "/" + name, "half");
    writeInPlace(directory + "/" + stale, "half");
    EXPECT_TRUE(store.write("launcherItems", "[]"));
    kept.emplace_back("launcherItems");
    std::ranges::sort(kept);
    EXPECT_EQ(namesIn(directory), kept);
}

/// Another session of the user writes at the worst moment, and takes our temporary for a stale one.
class AmongOtherSessions final : public linux_shell::FileOperations {
  public:
    explicit AmongOtherSessions(int times) : times_(times) {}

    int renameAt(int directory, const char* from, const char* to) override {
        if (times_-- > 0)
            unlinkAt(directory, from);
        return FileOperations::renameAt(directory, from, to);
    }

  private:
    int times_;
};

TEST_F(FileStoreTest, AWriteWhoseTemporaryAnotherSessionRemovesIsMadeAgain) {
    ASSERT_TRUE(store.write("launcherItems", "old"));
    AmongOtherSessions busy(2);
    EXPECT_TRUE(FileStore(busy, directory, MissingDirectory::create).write("launcherItems", "new"));
    EXPECT_EQ(contentsOf(file), "new");
    AmongOtherSessions endless(1000);
    EXPECT_FALSE(
        FileStore(endless, directory, MissingDirectory::create).write("launcherItems", "x"));
    EXPECT_EQ(contentsOf(file), "new");
    EXPECT_EQ(namesIn(directory), Names{"launcherItems"});
}

TEST_F(FileStoreTest, ATemporaryThatAnotherProcessIsWritingStays) {
    makeDirectory();
    const std::string name = directory + "/" + linux_shell::nextTemporaryName("launcherItems");
    writeInPlace(name, "half");
    const int other = ::open(name.c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(systemFileOperations().lock(other), 0);
    EXPECT_TRUE(store.write("launcherItems", "[]"));
    EXPECT_EQ(contentsOf(name), "half");
    ::close(other);
    EXPECT_TRUE(store.write("launcherItems", "[]"));
    EXPECT_EQ(namesIn(directory), Names{"launcherItems"});
}

TEST_F(FileStoreTest, AFileTooLargeForTheProcessLeavesTheOldOne) {
    ASSERT_TRUE(store.write("launcherItems", "old"));
    const pid_t child = ::fork();
    if (child == 0) {
        const rlimit limit{1000, 1000};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        ::_exit(store.write("launcherItems", std::string(5000, 'x')) ? 1 : 0);
    }
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(store.read("launcherItems"), "old");
    EXPECT_EQ(namesIn(directory), Names{"launcherItems"});
}

TEST_F(FileStoreTest, AFullFileSystemLeavesTheOldValue) {
    makeDirectory();
    if (::mount("tmpfs", directory.c_str(), "tmpfs", 0, "size=64k") != 0)
        GTEST_SKIP() << "mounting a small file system is not permitted here";
    EXPECT_TRUE(store.write("launcherItems", "old"));
    EXPECT_FALSE(store.write("launcherItems", std::string(100000, 'x')));
    EXPECT_EQ(store.read("launcherItems"), "old");
    EXPECT_EQ(namesIn(directory), Names{"launcherItems"});
    EXPECT_EQ(::umount(directory.c_str()), 0);
}

TEST_F(FileStoreTest, AReadOnlyFileSystemLeavesTheOldValue) {
    makeDirectory();
    if (::mount("tmpfs", directory.c_str(), "tmpfs", 0, "size=64k") != 0)
        GTEST_SKIP() << "mounting a small file system is not permitted here";
    EXPECT_TRUE(store.write("launcherItems", "old"));
    EXPECT_EQ(::mount(nullptr, directory.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr), 0);
    EXPECT_FALSE(store.write("launcherItems", "new"));
    EXPECT_EQ(store.read("launcherItems"), "old");
    EXPECT_EQ(::umount(directory.c_str()), 0);
}

TEST_F(FileStoreTest, AFileThatTheUserMayNotReadGivesNothing) {
    ASSERT_TRUE(store.write("launcherItems", "secret"));
    ASSERT_EQ(::chmod(file.c_str(), 0), 0);
    ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
    ASSERT_EQ(::chmod(directory.c_str(), 0755), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        if (::geteuid() == 0 && ::setuid(65534) != 0)
            ::_exit(2);
        ::_exit(store.read("launcherItems") ? 1 : 0);
    }
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

} // namespace
} // namespace kestrel::tests
