// A cloud folder whose file system does not answer, and what it costs: neither the start nor a save
// waits for it, and no list is lost by it.
#include "shells/linux/storage/file_user_defaults.h"
#include "shells/linux/storage/folder_cloud.h"
#include "store/items_manager.h"
#include "tests/linux/storage/disk_scenes.h"
#include "tests/linux/storage/event_loop.h"
#include "tests/linux/storage/files.h"
#include "tests/linux/storage/held_file_operations.h"
#include "tests/linux/storage/long_timeouts.h"
#include "tests/linux/storage/temporary_folder.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include <gtest/gtest.h>

namespace kestrel::tests {
namespace {

namespace fs = std::filesystem;
using linux_shell::CloudTimeouts;
using linux_shell::FolderCloud;

// A folder that is held falls silent soon. One that answers may be taken for silent on a busy
// machine, which changes nothing of what is stored in the end.
constexpr CloudTimeouts shortTimeouts{.first = std::chrono::milliseconds(10),
                                      .later = std::chrono::milliseconds(10)};
constexpr CloudTimeouts shortLaterTimeouts{.first = std::chrono::minutes(1),
                                           .later = std::chrono::milliseconds(200)};

class SilentCloudTest : public testing::Test {
  protected:
    HeldFileOperations operations; // outlives what still waits for it
    TemporaryFolder folder;
    EventLoop loop;
    FakeMainQueue mainQueue;
    CallLog log;
    FakeClock clock;
    FakeWorkspace workspace{log};
    FakeTerminal terminal{log};
    linux_shell::FileUserDefaults defaults{folder.path()};
    std::string local = folder / "launcherItems";
    std::string directory = folder / "cloud";
    std::string remote = directory + "/launcherItems";
    std::unique_ptr<FolderCloud> cloud;
    std::unique_ptr<ItemsManager> manager;

    void SetUp() override { fs::create_directory(directory); }

    void TearDown() override {
        operations.release();
        manager.reset();
        cloud.reset();
    }

    void start(CloudTimeouts timeouts) {
        cloud = std::make_unique<FolderCloud>(folder.path(), "launcherItems", operations, timeouts);
        manager = std::make_unique<ItemsManager>(
            ItemsManagerPorts{mainQueue, defaults, *cloud, clock, workspace, terminal});
        mainQueue.runAll();
    }

    void add(const std::string& title) {
        manager->items.append(appItem(title));
        manager->save();
    }

    Titles shown() const { return titles(manager->items); }

    static std::optional<Titles> storedAt(const std::string& path) {
        const auto bytes = contentsOf(path);
        const auto items = bytes ? decodeItems(*bytes) : std::nullopt;
        if (!items)
            return std::nullopt;
        Titles found;
        for (const LauncherItem& item : *items)
            found.push_back(item.title);
        return found;
    }

    bool isEverywhere(const Titles& list) const {
        return shown() == list && storedAt(local) == list && storedAt(remote) == list;
    }

    /// Runs the event loop and the main queue until the list is shown and stored in both stores.
    [[nodiscard]] bool comesToBeEverywhere(const Titles& list) {
        return loop.waitUntil([&] {
            mainQueue.runAll();
            return isEverywhere(list);
        });
    }

    /// Waits until a folder that was silent has been loaded again, and nothing is under way.
    [[nodiscard]] bool answersAgain() {
        bool isAnswered = false;
        cloud->addExternalChangeObserver([&isAnswered] { isAnswered = true; });
        return loop.waitUntil([&] {
            mainQueue.runAll();
            return isAnswered;
        });
    }
};

TEST_F(SilentCloudTest, AFolderThatHasNotAnsweredIsNoAccountAndIsAskedOnce) {
    writeInPlace(remote, listOf({"Cloud"}));
    operations.hold();
    FolderCloud silent(folder.path(), "launcherItems", operations, shortTimeouts);
    EXPECT_FALSE(silent.hasIdentityToken());
    for (int i = 0; i < 3; ++i) {
        EXPECT_FALSE(silent.hasIdentityToken());
        EXPECT_FALSE(silent.defaultStore()->synchronize());
        EXPECT_EQ(silent.defaultStore()->dataForKey("launcherItems"), "") << "not: a missing value";
        silent.defaultStore()->setData(listOf({"Other"}), "launcherItems");
    }
    EXPECT_EQ(operations.calls(), 1);
    operations.release();
    EXPECT_TRUE(loop.waitUntil([&] { return silent.hasIdentityToken(); }));
    EXPECT_EQ(storedAt(remote), Titles{"Cloud"}) << "what nobody took in is not written later";
}

TEST_F(SilentCloudTest, TheLocalListIsShownUntilTheFolderAnswersAndThenThatOfTheCloud) {
    writeInPlace(local, listOf({"Local"}));
    writeInPlace(remote, listOf({"Cloud"}));
    operations.hold();
    start(shortTimeouts);
    EXPECT_EQ(shown(), Titles{"Local"});
    EXPECT_EQ(storedAt(local), Titles{"Local"});
    operations.release();
    EXPECT_TRUE(comesToBeEverywhere({"Cloud"}));
}

TEST_F(SilentCloudTest, AFolderWithoutAListGetsTheLocalOneWhenItAnswers) {
    writeInPlace(local, listOf({"Local"}));
    operations.hold();
    start(shortTimeouts);
    EXPECT_EQ(shown(), Titles{"Local"});
    operations.release();
    EXPECT_TRUE(comesToBeEverywhere({"Local"}));
}

TEST_F(SilentCloudTest, AFolderThatTurnsOutToBeMissingIsNoAccount) {
    fs::remove(directory);
    writeInPlace(local, listOf({"Local"}));
    operations.hold();
    start(shortTimeouts);
    operations.release();
    EXPECT_TRUE(answersAgain());
    mainQueue.runAll();
    EXPECT_EQ(shown(), Titles{"Local"});
    EXPECT_FALSE(fs::exists(directory));
}

TEST_F(SilentCloudTest, WhatIsSavedBeforeTheFirstAnswerIsSavedHere) {
    writeInPlace(remote, listOf({"Cloud"}));
    operations.hold();
    start(shortTimeouts);
    add("New");
    EXPECT_EQ(storedAt(local), Titles{"New"});
    EXPECT_EQ(storedAt(remote), Titles{"Cloud"});
    operations.release();
    EXPECT_TRUE(comesToBeEverywhere({"Cloud"}));
}

TEST_F(SilentCloudTest, AReadThatIsGivenUpIsNoMissingValue) {
    writeInPlace(local, listOf({"Local"}));
    writeInPlace(remote, listOf({"Cloud"}));
    operations.hold("openAt");
    start(shortLaterTimeouts);
    EXPECT_EQ(shown(), Titles{"Local"});
    EXPECT_EQ(storedAt(remote), Titles{"Cloud"});
    operations.release();
    EXPECT_TRUE(comesToBeEverywhere({"Cloud"}));
}

TEST_F(SilentCloudTest, AWriteThatIsGivenUpNeverOvertakesALaterOne) {
    for (const char* const call : {"renameAt", "openAt", "statusOfPath"}) {
        SCOPED_TRACE(call);
        fs::remove_all(directory);
        fs::create_directory(directory);
        writeInPlace(remote, listOf({"Old"}));
        start(shortLaterTimeouts);
        ASSERT_TRUE(comesToBeEverywhere({"Old"}));
        operations.hold(call);
        add("One");
        add("Two");
        EXPECT_EQ(storedAt(local), (Titles{"Old", "One", "Two"}));
        EXPECT_EQ(storedAt(remote), Titles{"Old"});
        operations.release();
        EXPECT_TRUE(comesToBeEverywhere({"Old", "One", "Two"}));
        ASSERT_TRUE(loop.waitUntil([&] { return namesIn(directory) == Titles{"launcherItems"}; }))
            << "the temporaries are gone";
        TearDown();
    }
}

TEST_F(SilentCloudTest, TheEndOfTheProgramWaitsForAWriteThatEndsAtLast) {
    writeInPlace(remote, listOf({"Old"}));
    start(shortLaterTimeouts);
    ASSERT_TRUE(comesToBeEverywhere({"Old"}));
    operations.hold("renameAt");
    add("One");
    add("Two");
    EXPECT_EQ(storedAt(remote), Titles{"Old"});
    operations.release();
    manager.reset();
    cloud.reset();
    EXPECT_EQ(storedAt(remote), (Titles{"Old", "One", "Two"}));
}

TEST_F(SilentCloudTest, ChangesByOthersWhileItIsSilentAreSeenWhenItAnswers) {
    writeInPlace(remote, listOf({"Old"}));
    start(shortLaterTimeouts);
    ASSERT_TRUE(comesToBeEverywhere({"Old"}));
    operations.hold("openAt");
    replaceFile(remote, listOf({"One"}));
    ASSERT_TRUE(loop.waitUntil([&] {
        mainQueue.runAll(); // reads, in vain
        return cloud->defaultStore()->dataForKey("launcherItems") == "";
    }));
    replaceFile(remote, listOf({"Two"}));
    loop.takeInWhatIsThere();
    operations.release();
    EXPECT_TRUE(comesToBeEverywhere({"Two"}));
}

} // namespace
} // namespace kestrel::tests
