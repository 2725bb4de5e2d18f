// What wakes the program, counted where it reads: whether the watch has anything to read at all.
#include "shells/linux/storage/path_watch.h"
#include "tests/linux/storage/files.h"
#include "tests/linux/storage/temporary_folder.h"

#include <atomic>
#include <filesystem>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kestrel::tests {
namespace {

namespace fs = std::filesystem;
using linux_shell::PathWatch;

/// A directory that is held open, as by a terminal that stands in it.
class HeldDirectory {
  public:
    explicit HeldDirectory(const std::string& path)
        : descriptor_(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {}
    HeldDirectory(const HeldDirectory&) = delete;
    HeldDirectory& operator=(const HeldDirectory&) = delete;
    ~HeldDirectory() { ::close(descriptor_); }

  private:
    int descriptor_;
};

class PathWatchTest : public testing::Test {
  protected:
    TemporaryFolder folder;
    std::string home = folder / "home";
    std::string share = home + "/.local/share";
    std::string data = share + "/kestrel";
    std::string cloud = data + "/cloud";
    std::string synchronised = home + "/Sync/kestrel";
    std::unique_ptr<PathWatch> watch;

    void startWatching() {
        watch = std::make_unique<PathWatch>(cloud, "launcherItems");
        watch->followPath();
        ASSERT_GE(watch->descriptor(), 0);
        ASSERT_FALSE(wakes([] {}));
    }

    void linkAndStartWatching() {
        fs::create_directories(synchronised);
        fs::create_directories(data);
        fs::create_directory_symlink(synchronised, cloud);
        startWatching();
    }

    [[nodiscard]] bool wakes(const std::function<void()>& change) const {
        change();
        pollfd state{.fd = watch->descriptor(), .events = POLLIN, .revents = 0};
        return ::poll(&state, 1, 0) != 0;
    }

    [[nodiscard]] bool isNoticed(const std::function<void()>& change) const {
        change();
        return watch->readChanges().changed;
    }

    /// The value's directory is there and its changes are seen.
    [[nodiscard]] bool isWatchingTheValue() const {
        return isNoticed([this] { replaceFile(cloud + "/launcherItems", "[]"); });
    }

    /// What goes on all the time in a folder: files made, written, renamed, touched, removed.
    static void useFolder(const std::string& path) {
        writeInPlace(path + "/made", "x");
        replaceFile(path + "/made", "y");
        fs::permissions(path + "/made", fs::perms::owner_all);
        fs::create_directory(path + "/folder");
        fs::rename(path + "/folder", path + "/renamed");
    }

    /// And what goes on less often.
    static void clearFolder(const std::string& path) {
        fs::remove(path + "/made");
        fs::remove(path + "/renamed");
    }

    /// Moves, removes or makes a part of the path, at random.
    void changeSomePart(std::mt19937& random) const {
        const std::vector<std::string> parts{cloud, data, share, home + "/Sync", synchronised};
        const std::string& part = parts[random() % parts.size()];
        std::error_code ignored;
        switch (random() % 4) {
        case 0:
            fs::rename(part, part + "-away", ignored);
            break;
        case 1:
            fs::rename(part + "-away", part, ignored);
            break;
        case 2:
            fs::remove_all(part, ignored);
            break;
        default:
            fs::create_directories(part == cloud ? data : part, ignored);
            fs::create_directory_symlink(synchronised, cloud, ignored);
        }
    }

    void useAll(const std::vector<std::string>& paths) const {
        for (const std::string& path : paths) {
            EXPECT_FALSE(wakes([&] { useFolder(path); })) << path;
            EXPECT_FALSE(wakes([&] { clearFolder(path); })) << path;
        }
    }
};

TEST_F(PathWatchTest, WhatHappensAboveTheCloudFolderDoesNotWake) {
    fs::create_directories(cloud);
    startWatching();
    useAll({folder.path(), home, home + "/.local", share});
    EXPECT_FALSE(wakes([&] { useFolder(data); }));
    EXPECT_TRUE(isWatchingTheValue());
}

TEST_F(PathWatchTest, WithoutACloudFolderWhatHappensAboveTheDataFolderDoesNotWake) {
    fs::create_directories(data);
    startWatching();
    useAll({folder.path(), home, home + "/.local"});
    EXPECT_FALSE(wakes([&] { useFolder(share); }));
    EXPECT_TRUE(isNoticed([&] { fs::create_directory(cloud); }));
}

TEST_F(PathWatchTest, WhatHappensAboveALinkedFolderDoesNotWake) {
    linkAndStartWatching();
    useAll({folder.path(), home, home + "/.local", share, data});
    EXPECT_FALSE(wakes([&] { useFolder(home + "/Sync"); }));
    EXPECT_TRUE(isWatchingTheValue());
}

TEST_F(PathWatchTest, AFolderThatAppearedLeavesThoseAboveItInPeace) {
    fs::create_directories(home);
    startWatching();
    fs::create_directories(data);
    EXPECT_FALSE(watch->readChanges().changed);
    EXPECT_TRUE(isNoticed([&] { fs::create_directory(cloud); }));
    useAll({folder.path(), home, home + "/.local", share});
    EXPECT_FALSE(wakes([&] { useFolder(data); }));
    EXPECT_TRUE(isWatchingTheValue());
}

TEST_F(PathWatchTest, EachFolderOnTheWayMayBeMovedAwayAndBack) {
    fs::create_directories(cloud);
    startWatching();
    for (const std::string& path : {cloud, data, share, home + "/.local", home}) {
        EXPECT_TRUE(isNoticed([&] { fs::rename(path, path + "-away"); })) << path;
        EXPECT_TRUE(isNoticed([&] { fs::rename(path + "-away", path); })) << path;
        EXPECT_TRUE(isWatchingTheValue()) << path;
    }
}

TEST_F(PathWatchTest, EachFolderOnTheWayMayBeRemovedAndMadeAnew) {
    fs::create_directories(cloud);
    startWatching();
    for (const std::string& path : {cloud, data, share, home + "/.local", home}) {
        EXPECT_TRUE(isNoticed([&] { fs::remove_all(path); })) << path;
        EXPECT_TRUE(isNoticed([&] { fs::create_directories(cloud); })) << path;
        EXPECT_TRUE(isWatchingTheValue()) << path;
    }
}

TEST_F(PathWatchTest, EachFolderOnTheWayMayBeRemovedWhileItIsHeldOpen) {
    fs::create_directories(cloud);
    startWatching();
    for (const std::string& path : {cloud, data, share, home + "/.local", home}) {
        const HeldDirectory held(path);
        EXPECT_TRUE(isNoticed([&] { fs::remove_all(path); })) << path;
        EXPECT_TRUE(isNoticed([&] { fs::create_directories(cloud); })) << path;
        EXPECT_TRUE(isWatchingTheValue()) << path;
    }
}

TEST_F(PathWatchTest, AFolderRemovedBitByBitWhileAllIsHeldOpenIsFollowedUpwards) {
    fs::create_directories(cloud);
    startWatching();
    const HeldDirectory first(cloud);
    const HeldDirectory second(data);
    const HeldDirectory third(share);
    EXPECT_TRUE(isNoticed([&] { fs::remove(cloud); }));
    EXPECT_FALSE(isNoticed([&] { fs::remove(data); }));
    EXPECT_FALSE(isNoticed([&] { fs::remove(share); }));
    EXPECT_FALSE(isNoticed([&] { fs::create_directory(share); }));
    EXPECT_TRUE(isNoticed([&] { fs::create_directories(cloud); }));
    EXPECT_TRUE(isWatchingTheValue());
}

TEST_F(PathWatchTest, AnEmptyFolderMayBeReplacedByARename) {
    fs::create_directories(cloud);
    startWatching();
    const HeldDirectory held(cloud);
    fs::create_directory(share + "/next");
    EXPECT_TRUE(isNoticed([&] { fs::rename(share + "/next", cloud); }));
    EXPECT_TRUE(isWatchingTheValue());
    fs::remove_all(cloud);
    EXPECT_TRUE(watch->readChanges().changed);
    const HeldDirectory heldData(data);
    fs::create_directories(share + "/next/cloud");
    EXPECT_TRUE(isNoticed([&] { fs::rename(share + "/next", data); }));
    EXPECT_TRUE(isWatchingTheValue());
}

TEST_F(PathWatchTest, FoldersMayChangePlaces) {
    fs::create_directories(cloud);
    fs::create_directories(share + "/other/cloud");
    startWatching();
    const std::string other = share + "/other";
    EXPECT_TRUE(isNoticed([&] {
        EXPECT_EQ(::renameat2(AT_FDCWD, data.c_str(), AT_FDCWD, other.c_str(), RENAME_EXCHANGE), 0);
    }));
    EXPECT_TRUE(isWatchingTheValue());
}

TEST_F(PathWatchTest, ALinkMayComeGoBeMovedAndBePointedElsewhere) {
    linkAndStartWatching();
    fs::create_directories(home + "/Other");
    EXPECT_TRUE(isWatchingTheValue());
    EXPECT_TRUE(isNoticed([&] { fs::remove(cloud); }));
    EXPECT_TRUE(isNoticed([&] { fs::create_directory_symlink(home + "/Other", cloud); }));
    EXPECT_TRUE(isWatchingTheValue());
    EXPECT_TRUE(isNoticed([&] { fs::rename(cloud, data + "/moved"); }));
    EXPECT_TRUE(isNoticed([&] { fs::rename(data + "/moved", cloud); }));
    EXPECT_TRUE(isNoticed([&] {
        fs::create_directory_symlink(synchronised, data + "/next");
        fs::rename(data + "/next", cloud);
    }));
    EXPECT_TRUE(isWatchingTheValue());
    EXPECT_TRUE(isNoticed([&] {
        fs::remove(cloud);
        fs::create_directory(cloud);
    }));
    EXPECT_TRUE(isWatchingTheValue());
}

TEST_F(PathWatchTest, TheEndOfALinkMayComeAndGoHeldOpenOrNot) {
    linkAndStartWatching();
    for (const std::string& path : {synchronised, home + "/Sync"}) {
        EXPECT_TRUE(isNoticed([&] { fs::remove_all(path); })) << path;
        EXPECT_TRUE(isNoticed([&] { fs::create_directories(synchronised); })) << path;
        EXPECT_TRUE(isWatchingTheValue()) << path;
        const HeldDirectory held(path);
        EXPECT_TRUE(isNoticed([&] { fs::remove_all(path); })) << path;
        EXPECT_TRUE(isNoticed([&] { fs::create_directories(synchronised); })) << path;
        EXPECT_TRUE(isNoticed([&] { fs::rename(path, path + "-away"); })) << path;
        EXPECT_TRUE(isNoticed([&] { fs::rename(path + "-away", path); })) << path;
        EXPECT_TRUE(isWatchingTheValue()) << path;
    }
}

TEST_F(PathWatchTest, ALinkAboveTheDataFolderMayBePointedElsewhere) {
    fs::create_directories(home + "/disk/kestrel/cloud");
    fs::create_directories(home + "/other/kestrel/cloud");
    fs::create_directories(home + "/.local");
    fs::create_directory_symlink("../disk", share);
    startWatching();
    EXPECT_TRUE(isWatchingTheValue());
    EXPECT_TRUE(isNoticed([&] {
        fs::create_directory_symlink("../other", home + "/next");
        fs::rename(home + "/next", share);
    }));
    EXPECT_TRUE(isWatchingTheValue());
    EXPECT_TRUE(fs::exists(home + "/other/kestrel/cloud/launcherItems"));
}

TEST_F(PathWatchTest, AFileInThePlaceOfTheFolderMayMakeRoomForIt) {
    fs::create_directories(data);
    writeInPlace(cloud, "a file");
    startWatching();
    EXPECT_TRUE(isNoticed([&] {
        fs::remove(cloud);
        fs::create_directory(cloud);
    }));
    EXPECT_TRUE(isWatchingTheValue());
}

TEST_F(PathWatchTest, TheRightsOfTheFolderAreAChangeOfItsOwn) {
    fs::create_directories(cloud);
    startWatching();
    EXPECT_TRUE(isNoticed([&] { fs::permissions(cloud, fs::perms::none); }));
    EXPECT_TRUE(isNoticed([&] { fs::permissions(cloud, fs::perms::owner_all); }));
    EXPECT_TRUE(isWatchingTheValue());
}

TEST_F(PathWatchTest, WhateverIsDoneWhileThePathIsFollowedTheEndIsWatched) {
    linkAndStartWatching();
    std::mt19937 random(1); // NOLINT(cert-msc32-c,cert-msc51-cpp): to be repeatable
    for (int round = 0; round < 100; ++round) {
        std::atomic<bool> done{false};
        std::thread other([&] {
            for (int i = 0; i < 8; ++i)
                changeSomePart(random);
            done = true;
        });
        while (!done)
            watch->readChanges();
        other.join();
        watch->readChanges();
        if (fs::is_directory(cloud)) {
            ASSERT_TRUE(isWatchingTheValue()) << "round " << round;
        } else {
            ASSERT_TRUE(isNoticed([&] {
                fs::remove(cloud);
                fs::create_directories(synchronised);
                fs::create_directories(data);
                fs::create_directory_symlink(synchronised, cloud);
            })) << "round "
                << round;
        }
    }
}

/// Root may read everything, so this is tried as somebody else.
TEST_F(PathWatchTest, AFolderThatBecomesReadableIsNoticedFromTheOneAbove) {
    fs::create_directories(cloud);
    fs::permissions(cloud, fs::perms::none);
    const pid_t child = ::fork();
    if (child == 0) {
        constexpr uid_t nobody = 65534;
        for (const std::string& path : {folder.path(), home, home + "/.local", share, data, cloud})
            if (::geteuid() == 0 && ::chown(path.c_str(), nobody, nobody) != 0)
                ::_exit(2);
        if (::geteuid() == 0 && ::setuid(nobody) != 0)
            ::_exit(2);
        PathWatch unreadable(cloud, "launcherItems");
        unreadable.followPath();
        fs::permissions(cloud, fs::perms::owner_all);
        const bool isSeen = unreadable.readChanges().changed;
        replaceFile(cloud + "/launcherItems", "[]");
        ::_exit(isSeen && unreadable.readChanges().changed ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

} // namespace
} // namespace kestrel::tests
