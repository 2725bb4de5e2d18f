// Which changes of the cloud directory reach the observers, with a running event loop.
#include "shells/linux/storage/file_user_defaults.h"
#include "shells/linux/storage/folder_cloud.h"
#include "tests/linux/storage/event_loop.h"
#include "tests/linux/storage/faulty_file_operations.h"
#include "tests/linux/storage/files.h"
#include "tests/linux/storage/long_timeouts.h"
#include "tests/linux/storage/temporary_folder.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mman.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kestrel::tests {
namespace {

namespace fs = std::filesystem;
using linux_shell::FolderCloud;

class CloudWatcherTest : public testing::Test {
  protected:
    TemporaryFolder folder;
    EventLoop loop;
    std::string data = folder / "share/kestrel";
    std::string directory = data + "/cloud";
    std::string file = directory + "/launcherItems";
    FaultyFileOperations operations;
    std::unique_ptr<FolderCloud> cloud;
    /// How often the observer was called, and what it saw the last time.
    int changes = 0;
    std::optional<std::string> seen;
    bool seenAccount = false;

    void signIn() const { fs::create_directories(directory); }

    void startWatching() {
        cloud = std::make_unique<FolderCloud>(data, "launcherItems", operations, longTimeouts);
        cloud->addExternalChangeObserver([this] {
            ++changes;
            seen = cloud->defaultStore()->dataForKey("launcherItems");
            seenAccount = cloud->hasIdentityToken();
        });
        loop.takeInWhatIsThere();
        ASSERT_EQ(changes, 0);
    }

    void signInAndStartWatching() {
        signIn();
        startWatching();
    }

    /// Runs `change` and waits until the observer has been called at least once since.
    [[nodiscard]] bool isReported(const std::function<void()>& change) {
        const int before = changes;
        change();
        return loop.waitUntil([&] { return changes > before; });
    }

    [[nodiscard]] bool isPassedOver(const std::function<void()>& change) {
        const int before = changes;
        change();
        loop.takeInWhatIsThere();
        return changes == before;
    }

    void writeOwn(const std::string& bytes) const {
        cloud->defaultStore()->setData(bytes, "launcherItems");
    }
};

TEST_F(CloudWatcherTest, AReplacedFileIsAChange) {
    signIn();
    writeInPlace(file, "old");
    startWatching();
    EXPECT_TRUE(isReported([&] { replaceFile(file, "new"); }));
    EXPECT_EQ(seen, "new");
}

TEST_F(CloudWatcherTest, AFileRewrittenInPlaceIsAChange) {
    signIn();
    writeInPlace(file, "old");
    startWatching();
    EXPECT_TRUE(isReported([&] { writeInPlace(file, "new"); }));
    EXPECT_EQ(seen, "new");
}

TEST_F(CloudWatcherTest, AFileThatAppearsIsAChange) {
    signInAndStartWatching();
    EXPECT_TRUE(isReported([&] { writeInPlace(file, "new"); }));
    EXPECT_EQ(seen, "new");
}

TEST_F(CloudWatcherTest, ADeletedAndARecreatedFileAreChanges) {
    signIn();
    writeInPlace(file, "old");
    startWatching();
    EXPECT_TRUE(isReported([&] { fs::remove(file); }));
    EXPECT_EQ(seen, std::nullopt);
    EXPECT_TRUE(seenAccount);
    EXPECT_TRUE(isReported([&] { writeInPlace(file, "again"); }));
    EXPECT_EQ(seen, "again");
}

TEST_F(CloudWatcherTest, AFileMovedAwayIsAChange) {
    signIn();
    writeInPlace(file, "old");
    startWatching();
    EXPECT_TRUE(isReported([&] { fs::rename(file, directory + "/launcherItems.bak"); }));
    EXPECT_EQ(seen, std::nullopt);
}

/// Some synchronisers remove the old file before they put the new one there. Whoever looks in
/// between must not take the value for missing, or a local list would be put in its place.
TEST_F(CloudWatcherTest, AFileThatIsRemovedToBeReplacedIsNeverMissing) {
    signIn();
    writeInPlace(file, "old");
    startWatching();
    CloudKeyValueStore& store = *cloud->defaultStore();
    EXPECT_EQ(store.dataForKey("launcherItems"), "old");
    for (const std::string& next : {std::string("one"), std::string("two")}) {
        fs::remove(file);
        EXPECT_EQ(store.dataForKey("launcherItems"), "") << "before the event was taken in";
        EXPECT_TRUE(isPassedOver([] {}));
        EXPECT_EQ(store.dataForKey("launcherItems"), "");
        EXPECT_EQ(store.dataForKey("other"), std::nullopt);
        EXPECT_TRUE(isReported([&] { replaceFile(file, next); }));
        EXPECT_EQ(seen, next);
    }
    const int before = changes;
    fs::remove(file);
    EXPECT_TRUE(loop.waitUntil([&] { return changes > before; }));
    EXPECT_EQ(seen, std::nullopt) << "it stayed away";
    EXPECT_EQ(store.dataForKey("launcherItems"), std::nullopt);
}

TEST_F(CloudWatcherTest, AnOwnFileThatIsRemovedToBeReplacedIsNeverMissing) {
    signInAndStartWatching();
    EXPECT_EQ(cloud->defaultStore()->dataForKey("launcherItems"), std::nullopt);
    writeOwn("own");
    fs::remove(file);
    EXPECT_EQ(cloud->defaultStore()->dataForKey("launcherItems"), "");
    EXPECT_TRUE(isReported([&] { writeInPlace(file, "new"); }));
    EXPECT_EQ(seen, "new");
}

TEST_F(CloudWatcherTest, AFolderThatAppearsMayYetGetItsFile) {
    startWatching();
    EXPECT_TRUE(isReported([&] { signIn(); }));
    EXPECT_EQ(seen, "");
    EXPECT_TRUE(isReported([&] { replaceFile(file, "new"); }));
    EXPECT_EQ(seen, "new");
    EXPECT_TRUE(isReported([&] { fs::remove_all(directory); }));
    EXPECT_TRUE(isReported([&] { signIn(); }));
    EXPECT_EQ(seen, "");
    EXPECT_TRUE(isReported([] {}));
    EXPECT_EQ(seen, std::nullopt) << "it never came";
}

TEST_F(CloudWatcherTest, AHardLinkPutInThePlaceIsAChange) {
    signInAndStartWatching();
    writeInPlace(directory + "/other", "linked");
    EXPECT_TRUE(isReported([&] { fs::create_hard_link(directory + "/other", file); }));
    EXPECT_EQ(seen, "linked");
}

TEST_F(CloudWatcherTest, AFileThatBecomesReadableIsAChange) {
    signIn();
    writeInPlace(file, "old");
    startWatching();
    EXPECT_TRUE(isReported([&] { fs::permissions(file, fs::perms::owner_all); }));
}

TEST_F(CloudWatcherTest, OwnWritesAreNoChanges) {
    signInAndStartWatching();
    EXPECT_TRUE(isPassedOver([&] {
        for (int i = 0; i < 100; ++i)
            writeOwn(std::to_string(i));
    }));
    for (int i = 0; i < 10; ++i)
        EXPECT_TRUE(isPassedOver([&] { writeOwn("again"); }));
    EXPECT_EQ(contentsOf(file), "again");
}

TEST_F(CloudWatcherTest, OwnWritesThatFailAreNoChanges) {
    signInAndStartWatching();
    writeOwn("old");
    FaultyFileOperations counting;
    FolderCloud other(data, "launcherItems", counting, longTimeouts);
    other.defaultStore()->setData("old", "launcherItems");
    ASSERT_TRUE(isReported([&] { writeInPlace(file, "old"); })); // puts an end to what came before
    for (std::size_t i = 0; i < counting.calls.size(); ++i) {
        operations.failOnce(operations.calls.size() + i);
        EXPECT_TRUE(isPassedOver([&] { writeOwn("new"); })) << "call " << i;
    }
}

TEST_F(CloudWatcherTest, AForeignWriteRightAfterAnOwnOneIsAChange) {
    signInAndStartWatching();
    for (int i = 0; i < 20; ++i) {
        EXPECT_TRUE(isReported([&] {
            writeOwn("aaa");
            writeInPlace(file, "bbb");
        }));
        EXPECT_EQ(seen, "bbb");
        EXPECT_TRUE(isReported([&] {
            writeOwn("aaa");
            replaceFile(file, "ccc");
        }));
        EXPECT_EQ(seen, "ccc");
    }
}

TEST_F(CloudWatcherTest, AForeignWriteRightBeforeAnOwnOneIsAChange) {
    signInAndStartWatching();
    EXPECT_TRUE(isReported([&] {
        writeInPlace(file, "bbb");
        writeOwn("aaa");
    }));
    EXPECT_EQ(seen, "aaa");
}

TEST_F(CloudWatcherTest, AForeignWriteOfTheSameBytesIsAChange) {
    signInAndStartWatching();
    EXPECT_TRUE(isPassedOver([&] { writeOwn("same"); }));
    EXPECT_TRUE(isReported([&] { writeInPlace(file, "same"); }));
    EXPECT_TRUE(isReported([&] { replaceFile(file, "same"); }));
    EXPECT_EQ(seen, "same");
}

TEST_F(CloudWatcherTest, OtherFilesAreNoChanges) {
    signInAndStartWatching();
    EXPECT_TRUE(isPassedOver([&] {
        writeInPlace(directory + "/other", "x");
        writeInPlace(directory + "/.syncthing.launcherItems.tmp", "x");
        writeInPlace(data + "/launcherItems", "x");
        fs::create_directory(data + "/elsewhere");
        fs::remove(directory + "/other");
    }));
}

TEST_F(CloudWatcherTest, TheLocalStoreIsNoneOfItsBusiness) {
    startWatching();
    linux_shell::FileUserDefaults defaults(data);
    EXPECT_TRUE(isPassedOver([&] { defaults.setData("[]", "launcherItems"); }));
    EXPECT_TRUE(isPassedOver([&] { defaults.setDate(Date{}, "lastLocalSync"); }));
    EXPECT_TRUE(isReported([&] { signIn(); }));
}

TEST_F(CloudWatcherTest, AnAccountThatAppearsOrVanishesIsAChange) {
    fs::create_directories(data);
    startWatching();
    EXPECT_TRUE(isReported([&] { signIn(); }));
    EXPECT_TRUE(seenAccount);
    EXPECT_TRUE(isReported([&] { writeInPlace(file, "new"); }));
    EXPECT_EQ(seen, "new");
    EXPECT_TRUE(isReported([&] { fs::remove_all(directory); }));
    EXPECT_TRUE(loop.waitUntil([&] { return !seenAccount; }));
    EXPECT_TRUE(isReported([&] { signIn(); }));
    EXPECT_TRUE(seenAccount);
    EXPECT_TRUE(isReported([&] { writeInPlace(file, "again"); }));
    EXPECT_EQ(seen, "again");
}

TEST_F(CloudWatcherTest, EverythingAboveMayAppearLater) {
    startWatching();
    EXPECT_TRUE(isPassedOver([&] { fs::create_directories(data); }));
    EXPECT_TRUE(isReported([&] { signIn(); }));
    EXPECT_TRUE(isReported([&] { writeInPlace(file, "new"); }));
    EXPECT_EQ(seen, "new");
}

TEST_F(CloudWatcherTest, EverythingAtOnceIsNoticedToo) {
    startWatching();
    EXPECT_TRUE(isReported([&] {
        signIn();
        writeInPlace(file, "new");
    }));
    EXPECT_EQ(seen, "new");
}

TEST_F(CloudWatcherTest, TheRemovalOfEverythingAndItsReturnAreChanges) {
    signIn();
    writeInPlace(file, "old");
    startWatching();
    EXPECT_TRUE(isReported([&] { fs::remove_all(folder / "share"); }));
    EXPECT_TRUE(loop.waitUntil([&] { return !seenAccount && !seen; }));
    EXPECT_TRUE(isReported([&] {
        signIn();
        writeInPlace(file, "back");
    }));
    EXPECT_EQ(seen, "back");
    EXPECT_TRUE(isReported([&] { writeInPlace(file, "and alive"); }));
    EXPECT_EQ(seen, "and alive");
}

TEST_F(CloudWatcherTest, ADirectoryRemovedAndMadeAnewInOneGoIsAChange) {
    signIn();
    startWatching();
    EXPECT_TRUE(isReported([&] {
        fs::remove_all(directory);
        signIn();
    }));
    EXPECT_TRUE(isReported([&] { writeInPlace(file, "new"); }));
    EXPECT_EQ(seen, "new");
}

TEST_F(CloudWatcherTest, ADirectoryReplacedByARenameIsAChange) {
    signIn();
    writeInPlace(file, "old");
    startWatching();
    fs::create_directory(data + "/next");
    writeInPlace(data + "/next/launcherItems", "next");
    EXPECT_TRUE(isReported([&] {
        fs::rename(directory, data + "/previous");
        fs::rename(data + "/next", directory);
    }));
    EXPECT_EQ(seen, "next");
    EXPECT_TRUE(isPassedOver([&] { writeInPlace(data + "/previous/launcherItems", "x"); }));
    EXPECT_TRUE(isReported([&] { writeInPlace(file, "new"); }));
    EXPECT_EQ(seen, "new");
}

TEST_F(CloudWatcherTest, AnAncestorMovedAwayIsAChange) {
    signIn();
    startWatching();
    EXPECT_TRUE(isReported([&] { fs::rename(folder / "share", folder / "gone"); }));
    EXPECT_FALSE(seenAccount);
    EXPECT_TRUE(isReported([&] { fs::rename(folder / "gone", folder / "share"); }));
    EXPECT_TRUE(seenAccount);
}

TEST_F(CloudWatcherTest, ALinkedFolderIsWatchedWhereItIs) {
    fs::create_directories(data);
    fs::create_directories(folder / "Sync/kestrel");
    fs::create_directory_symlink("../../Sync/kestrel", directory);
    startWatching();
    EXPECT_TRUE(isReported([&] { replaceFile(folder / "Sync/kestrel/launcherItems", "new"); }));
    EXPECT_EQ(seen, "new");
    EXPECT_TRUE(isPassedOver([&] { writeOwn("own"); }));
    EXPECT_EQ(contentsOf(folder / "Sync/kestrel/launcherItems"), "own");
    EXPECT_TRUE(isReported([&] { fs::remove_all(folder / "Sync"); }));
    EXPECT_TRUE(loop.waitUntil([&] { return !seenAccount; }));
    EXPECT_TRUE(isReported([&] { fs::create_directories(folder / "Sync/kestrel"); }));
    EXPECT_TRUE(seenAccount);
    EXPECT_TRUE(isReported([&] { writeInPlace(folder / "Sync/kestrel/launcherItems", "back"); }));
    EXPECT_EQ(seen, "back");
}

TEST_F(CloudWatcherTest, ALinkPointedElsewhereIsAChange) {
    fs::create_directories(data);
    for (const std::string& name : {std::string("a"), std::string("b")}) {
        fs::create_directory(folder / name);
        writeInPlace(folder / name + "/launcherItems", name);
    }
    fs::create_directory_symlink(folder / "a", directory);
    startWatching();
    EXPECT_TRUE(isReported([&] {
        fs::create_directory_symlink(folder / "b", data + "/new");
        fs::rename(data + "/new", directory);
    }));
    EXPECT_EQ(seen, "b");
    EXPECT_TRUE(isReported([&] { writeInPlace(folder / "b/launcherItems", "b2"); }));
    EXPECT_EQ(seen, "b2");
    EXPECT_TRUE(isPassedOver([&] { writeInPlace(folder / "a/launcherItems", "a2"); }));
    EXPECT_TRUE(isReported([&] {
        fs::remove(directory);
        fs::create_directory_symlink(folder / "a", directory);
    }));
    EXPECT_EQ(seen, "a2");
}

TEST_F(CloudWatcherTest, ALinkedFileIsWatchedWhereItIs) {
    signIn();
    fs::create_directory(folder / "Sync");
    fs::create_symlink(folder / "Sync/list", file);
    startWatching();
    EXPECT_TRUE(isReported([&] { writeInPlace(folder / "Sync/list", "new"); }));
    EXPECT_EQ(seen, "new");
    EXPECT_TRUE(isPassedOver([&] { writeOwn("own"); }));
    EXPECT_EQ(contentsOf(folder / "Sync/list"), "own");
    EXPECT_TRUE(isReported([&] { fs::rename(folder / "Sync", folder / "Gone"); }));
    EXPECT_EQ(seen, "");
    EXPECT_TRUE(isReported([&] { fs::rename(folder / "Gone", folder / "Sync"); }));
    EXPECT_EQ(seen, "own");
}

TEST_F(CloudWatcherTest, LinksThatGoInCirclesAreLeftAloneUntilTheyEnd) {
    fs::create_directories(data);
    fs::create_symlink("cloud2", directory);
    fs::create_symlink("cloud", data + "/cloud2");
    startWatching();
    EXPECT_FALSE(cloud->hasIdentityToken());
    EXPECT_TRUE(isReported([&] {
        fs::remove(data + "/cloud2");
        fs::create_directory(data + "/cloud2");
    }));
    EXPECT_TRUE(seenAccount);
}

/// Gives the process a world of mounts of its own, in which it may mount; false where the system
/// refuses.
bool mayMountForItself() {
    const std::string user = "0 " + std::to_string(::getuid()) + " 1";
    const std::string group = "0 " + std::to_string(::getgid()) + " 1";
    if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
        return false;
    writeInPlace("/proc/self/setgroups", "deny");
    writeInPlace("/proc/self/uid_map", user);
    writeInPlace("/proc/self/gid_map", group);
    return ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

TEST_F(CloudWatcherTest, AMountOverTheFolderIsAChange) {
    signIn();
    writeInPlace(file, "below");
    constexpr int refused = 77;
    const pid_t child = ::fork();
    if (child == 0) {
        if (!mayMountForItself())
            ::_exit(refused);
        startWatching();
        EXPECT_TRUE(isReported(
            [&] { EXPECT_EQ(::mount("tmpfs", directory.c_str(), "tmpfs", 0, "size=64k"), 0); }));
        EXPECT_EQ(seen, "");
        EXPECT_TRUE(isReported([&] { writeInPlace(file, "above"); }));
        EXPECT_EQ(seen, "above");
        EXPECT_TRUE(isReported([&] { EXPECT_EQ(::umount(directory.c_str()), 0); }));
        EXPECT_EQ(seen, "below");
        ::_exit(HasFailure() ? 1 : 0);
    }
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    if (WIFEXITED(status) && WEXITSTATUS(status) == refused)
        GTEST_SKIP() << "the system gives no mounts of our own";
    EXPECT_EQ(status, 0);
}

TEST_F(CloudWatcherTest, ABurstIsReportedOnceAndTheLastStateIsSeen) {
    signInAndStartWatching();
    EXPECT_TRUE(isReported([&] {
        for (int i = 0; i < 10000; ++i)
            replaceFile(file, std::to_string(i));
    }));
    loop.takeInWhatIsThere();
    EXPECT_EQ(seen, "9999");
    EXPECT_LE(changes, 10);
}

TEST_F(CloudWatcherTest, MoreEventsThanTheSystemKeepsLoseNothing) {
    signInAndStartWatching();
    EXPECT_TRUE(isReported([&] {
        for (int i = 0; i < 20000; ++i) {
            const std::string name = directory + "/other" + std::to_string(i % 2);
            writeInPlace(name, "");
        }
        replaceFile(file, "last");
    }));
    loop.takeInWhatIsThere();
    EXPECT_EQ(seen, "last");
    EXPECT_TRUE(isReported([&] { replaceFile(file, "and on"); }));
    EXPECT_EQ(seen, "and on");
}

TEST_F(CloudWatcherTest, ASlowWriterIsReportedWhenItCloses) {
    signIn();
    writeInPlace(file, "old");
    startWatching();
    const int descriptor = ::open(file.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC);
    ASSERT_GE(descriptor, 0);
    EXPECT_TRUE(isPassedOver([&] { EXPECT_EQ(::write(descriptor, "ne", 2), 2); }));
    EXPECT_TRUE(isReported([&] {
        EXPECT_EQ(::write(descriptor, "w", 1), 1);
        ::close(descriptor);
    }));
    EXPECT_EQ(seen, "new");
    EXPECT_EQ(changes, 1);
}

TEST_F(CloudWatcherTest, AWriterThatNeverClosesIsReportedAllTheSame) {
    signIn();
    writeInPlace(file, "old");
    startWatching();
    const int descriptor = ::open(file.c_str(), O_WRONLY | O_CLOEXEC);
    ASSERT_GE(descriptor, 0);
    EXPECT_TRUE(isReported([&] { EXPECT_EQ(::write(descriptor, "new", 3), 3); }));
    EXPECT_EQ(seen, "new");
    EXPECT_TRUE(isReported([&] { EXPECT_EQ(::ftruncate(descriptor, 1), 0); }));
    EXPECT_EQ(seen, "n");
    ::close(descriptor);
}

TEST_F(CloudWatcherTest, AWriterThroughMappedMemoryIsReportedWhenItUnmaps) {
    signIn();
    writeInPlace(file, "old");
    startWatching();
    const int descriptor = ::open(file.c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_GE(descriptor, 0);
    void* const memory = ::mmap(nullptr, 3, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
    ::close(descriptor);
    ASSERT_NE(memory, MAP_FAILED);
    static_cast<char*>(memory)[0] = 'm';
    EXPECT_TRUE(isReported([&] { ::munmap(memory, 3); }));
    EXPECT_EQ(seen, "mld");
}

TEST_F(CloudWatcherTest, EveryObserverIsCalledAndMayAddAnother) {
    signInAndStartWatching();
    int second = 0;
    int third = 0;
    cloud->addExternalChangeObserver([&] {
        if (++second == 1)
            cloud->addExternalChangeObserver([&] { ++third; });
    });
    EXPECT_TRUE(isReported([&] { writeInPlace(file, "one"); }));
    loop.takeInWhatIsThere();
    EXPECT_EQ(second, changes);
    EXPECT_EQ(third, changes - 1);
    EXPECT_TRUE(isReported([&] { writeInPlace(file, "two"); }));
    loop.takeInWhatIsThere();
    EXPECT_EQ(third, changes - 1);
}

TEST_F(CloudWatcherTest, WithoutWatchesTheStoreWorksAllTheSame) {
    signIn();
    const pid_t child = ::fork();
    if (child == 0) {
        // Room for one file at a time, so none for inotify once one is open.
        const int spare = ::open("/", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        FolderCloud unwatched(data, "launcherItems", linux_shell::systemFileOperations(),
                              longTimeouts);
        // A sanitizer looks at the type of an object once, and needs descriptors for it.
        const bool isSignedIn = unwatched.hasIdentityToken();
        FolderCloud(data, "launcherItems").addExternalChangeObserver([] {});
        rlimit plenty{};
        ::getrlimit(RLIMIT_NOFILE, &plenty);
        const rlimit none{static_cast<rlim_t>(spare) + 1, plenty.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &none);
        int calls = 0;
        unwatched.addExternalChangeObserver([&] { ++calls; });
        ::setrlimit(RLIMIT_NOFILE, &plenty);
        ::close(spare);
        writeInPlace(file, "new");
        loop.takeInWhatIsThere();
        const bool works = isSignedIn && unwatched.hasIdentityToken() &&
                           unwatched.defaultStore()->dataForKey("launcherItems") == "new";
        ::_exit(works && calls == 0 ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

} // namespace
} // namespace kestrel::tests
