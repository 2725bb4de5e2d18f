// What a power cut may leave of a save, whenever it comes and whatever of the unsynced data reached
// the disk before it: the list as it was or as it became, whole, in each of the files.
#include "tests/linux/storage/disk_scenes.h"
#include "tests/linux/storage/disk_session.h"
#include "tests/linux/storage/faulty_file_operations.h"
#include "tests/linux/storage/memory_disk.h"

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kestrel::tests {
namespace {

class PowerCutTest : public testing::TestWithParam<Start> {
  protected:
    Titles before = GetParam() == Start::nothing ? Titles{} : Titles{"Old"};
    Titles after = [this] {
        Titles titles = before;
        titles.emplace_back("New");
        return titles;
    }();

    /// The program starts and adds an item, and is gone before call number `end`.
    static MemoryDisk afterRun(std::size_t end) {
        MemoryDisk disk = diskFor(GetParam());
        FaultyFileOperations operations(disk);
        operations.failsFrom = end;
        DiskSession(operations, dataDirectory).add("New");
        return disk;
    }

    static std::size_t callsOfARun() {
        MemoryDisk disk = diskFor(GetParam());
        FaultyFileOperations operations(disk);
        DiskSession(operations, dataDirectory).add("New");
        EXPECT_GT(operations.calls.size(), 20U);
        return operations.calls.size();
    }

    /// The next start shows one of `lists`, and adding to it works and clears up.
    static void expectOneOf(const std::vector<Titles>& lists, MemoryDisk disk) {
        DiskSession session(disk, dataDirectory);
        const Titles shown = session.shown();
        EXPECT_TRUE(std::ranges::find(lists, shown) != lists.end())
            << testing::PrintToString(shown);
        session.add("Later");
        Titles later = shown;
        later.emplace_back("Later");
        EXPECT_EQ(titlesIn(disk, localList), later);
        EXPECT_EQ(temporariesOn(disk), Titles{});
        for (MemoryDisk& left : disk.afterPowerCut())
            EXPECT_EQ(DiskSession(left, dataDirectory).shown(), later);
    }

    void expectSound(const std::vector<Titles>& lists, const MemoryDisk& disk) {
        for (const std::string& path : {localList, cloudList}) {
            const auto stored = titlesIn(disk, path);
            const bool isOld = stored == titlesIn(diskFor(GetParam()), path);
            EXPECT_TRUE(isOld || stored == before || stored == after) << path;
        }
        const auto date = disk.contents(dataDirectory + "/lastLocalSync");
        EXPECT_TRUE(!date || date->size() == std::string("2026-11-21T01:55:06Z").size());
        expectOneOf(lists, disk);
    }
};

TEST_P(PowerCutTest, LeavesTheOldListOrTheNewOne) {
    const std::size_t count = callsOfARun();
    std::size_t states = 0;
    for (std::size_t end = 0; end <= count; ++end) {
        SCOPED_TRACE("cut before call " + std::to_string(end));
        for (const MemoryDisk& left : afterRun(end).afterPowerCut()) {
            expectSound({before, after}, left);
            ++states;
            if (HasFailure())
                FAIL() << left.fingerprint();
        }
    }
    EXPECT_GT(states, count + 20) << "no cut found anything unsynced";
}

TEST_P(PowerCutTest, LeavesTheNewListOnceTheSaveHasReturned) {
    for (const MemoryDisk& left : afterRun(FaultyFileOperations::never).afterPowerCut()) {
        expectSound({after}, left);
        if (HasFailure())
            FAIL() << left.fingerprint();
    }
}

TEST_P(PowerCutTest, LeavesWhatWasSavedAfterAKill) {
    const std::size_t count = callsOfARun();
    for (std::size_t end = 0; end <= count; ++end) {
        SCOPED_TRACE("killed before call " + std::to_string(end));
        MemoryDisk disk = afterRun(end);
        DiskSession session(disk, dataDirectory);
        session.add("Later");
        const Titles saved = session.shown();
        for (MemoryDisk& left : disk.afterPowerCut())
            ASSERT_EQ(DiskSession(left, dataDirectory).shown(), saved) << left.fingerprint();
    }
}

TEST(PowerCutAmongSavesTest, LeavesAListOfThatTimeEvenWhereDirectoriesCannotBeSynced) {
    for (std::size_t end = 0;; ++end) {
        SCOPED_TRACE("cut before call " + std::to_string(end));
        MemoryDisk disk = diskFor(Start::listAlone);
        disk.refusesToSyncDirectories = true;
        FaultyFileOperations operations(disk);
        operations.failsFrom = end;
        linux_shell::FileUserDefaults defaults(dataDirectory, operations);
        for (const char* const title : {"Second", "Third"})
            defaults.setData(listOf({title}), "launcherItems");
        for (const MemoryDisk& left : disk.afterPowerCut()) {
            const auto stored = titlesIn(left, localList);
            ASSERT_TRUE(stored == Titles{"Old"} || stored == Titles{"Second"} ||
                        stored == Titles{"Third"})
                << left.fingerprint();
        }
        if (operations.calls.size() <= end)
            break;
    }
}

TEST(PowerCutAmongSavesTest, LeavesWhatWasSavedToAFolderThatWasTakenAwayAndMadeAnew) {
    MemoryDisk disk = diskFor(Start::listAlone);
    linux_shell::FileUserDefaults defaults(dataDirectory, disk);
    defaults.setData(listOf({"Second"}), "launcherItems");
    for (const std::string& taken : {dataDirectory, std::string("/home/user/.local")}) {
        disk.remove(taken);
        defaults.setData(listOf({"Third"}), "launcherItems");
        for (const MemoryDisk& left : disk.afterPowerCut())
            EXPECT_EQ(titlesIn(left, localList), Titles{"Third"}) << left.fingerprint();
    }
}

INSTANTIATE_TEST_SUITE_P(Starts, PowerCutTest,
                         testing::Values(Start::listAlone, Start::listAndCloud, Start::nothing,
                                         Start::listsBehindLinks, Start::staleTemporaries,
                                         Start::cloudWithoutList, Start::cloudWithAnotherList));

} // namespace
} // namespace kestrel::tests
