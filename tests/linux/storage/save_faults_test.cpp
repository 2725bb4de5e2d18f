// What any failing system call of a save costs: at most that save. The list on the screen stays,
// what is stored stays whole, and the next save stores everything.
#include "tests/linux/storage/disk_scenes.h"
#include "tests/linux/storage/disk_session.h"
#include "tests/linux/storage/memory_disk.h"

#include <cerrno>
#include <cstring>
#include <string>

#include <gtest/gtest.h>

namespace kestrel::tests {
namespace {

constexpr int errors[] = {EIO,    ENOSPC, EACCES, EROFS, EMFILE, ENFILE,
                          EDQUOT, ESTALE, ENOMEM, EPERM, EFBIG,  ENAMETOOLONG};

class SaveFaultsTest : public testing::TestWithParam<Start> {
  protected:
    Titles before = GetParam() == Start::nothing ? Titles{} : Titles{"Old"};

    static Titles with(Titles titles, const std::string& title) {
        titles.push_back(title);
        return titles;
    }

    /// How many calls a save makes after the start.
    static int callsOfASave() {
        MemoryDisk disk = diskFor(GetParam());
        DiskSession session(disk, dataDirectory);
        disk.calls = 0;
        session.add("New");
        EXPECT_GT(disk.calls, 15);
        return disk.calls;
    }

    /// The program has started and then saves while some calls fail.
    void expectOnlyThatSaveIsLost(int first, int count, int error) const {
        SCOPED_TRACE("call " + std::to_string(first) + ": " + std::strerror(error));
        MemoryDisk disk = diskFor(GetParam());
        DiskSession session(disk, dataDirectory);
        disk.calls = 0;
        disk.failsFrom = first;
        disk.failsTo = first + count;
        disk.error = error;
        session.add("New");
        const Titles after = with(before, "New");
        EXPECT_EQ(session.shown(), after);
        EXPECT_EQ(disk.openFiles(), 0U);
        for (const std::string& path : {localList, cloudList}) {
            const auto stored = titlesIn(disk, path);
            EXPECT_TRUE(stored == after || stored == before ||
                        stored == titlesIn(diskFor(GetParam()), path))
                << path;
        }
        disk.failsFrom = MemoryDisk::never;
        expectNextSaveToWork(session, disk, with(after, "Later"));
    }

    static void expectNextSaveToWork(DiskSession& session, const MemoryDisk& disk,
                                     const Titles& wanted) {
        session.add(wanted.back());
        EXPECT_EQ(session.shown(), wanted);
        expectStored(disk, wanted);
        EXPECT_EQ(temporariesOn(disk), Titles{});
    }

    static void expectStored(const MemoryDisk& disk, const Titles& wanted) {
        EXPECT_EQ(titlesIn(disk, localList), wanted);
        const bool hasCloud = !diskFor(GetParam()).names(dataDirectory + "/cloud").empty() ||
                              GetParam() == Start::cloudWithoutList;
        EXPECT_EQ(titlesIn(disk, cloudList), hasCloud ? std::optional(wanted) : std::nullopt);
    }
};

TEST_P(SaveFaultsTest, OneFailingCallCostsAtMostThatSave) {
    const int count = callsOfASave();
    for (const int error : errors)
        for (int call = 0; call < count; ++call)
            expectOnlyThatSaveIsLost(call, 1, error);
}

TEST_P(SaveFaultsTest, ASystemThatGoesOnFailingCostsAtMostThatSave) {
    const int count = callsOfASave();
    for (const int error : errors)
        for (int call = 0; call < count; ++call)
            expectOnlyThatSaveIsLost(call, 1'000'000, error);
}

TEST_P(SaveFaultsTest, ReloadsThatFailLeaveTheListOnTheScreen) {
    MemoryDisk disk = diskFor(GetParam());
    DiskSession session(disk, dataDirectory);
    session.add("New");
    const Titles shown = session.shown();
    disk.calls = 0;
    session.reload();
    const int count = disk.calls;
    for (const int error : errors)
        for (int call = 0; call < count; ++call) {
            SCOPED_TRACE("call " + std::to_string(call) + ": " + std::strerror(error));
            disk.calls = 0;
            disk.failsFrom = call;
            disk.failsTo = call + 1;
            disk.error = error;
            session.reload();
            EXPECT_EQ(session.shown(), shown);
            EXPECT_EQ(titlesIn(disk, localList), shown);
        }
    disk.failsFrom = MemoryDisk::never;
    expectNextSaveToWork(session, disk, with(shown, "Later"));
}

TEST_P(SaveFaultsTest, WritesThatTakeLittleAtATimeStoreEverything) {
    MemoryDisk disk = diskFor(GetParam());
    disk.longestWrite = 7;
    DiskSession session(disk, dataDirectory);
    expectNextSaveToWork(session, disk, with(before, "New"));
}

TEST_P(SaveFaultsTest, AnInterruptedCallCostsNothing) {
    const int count = callsOfASave();
    for (int call = 0; call < count; ++call) {
        SCOPED_TRACE("call " + std::to_string(call));
        MemoryDisk disk = diskFor(GetParam());
        DiskSession session(disk, dataDirectory);
        disk.calls = 0;
        disk.failsFrom = call;
        disk.failsTo = call + 1;
        disk.error = EINTR;
        session.add("New");
        expectStored(disk, with(before, "New"));
    }
}

INSTANTIATE_TEST_SUITE_P(Starts, SaveFaultsTest,
                         testing::Values(Start::listAlone, Start::listAndCloud, Start::nothing,
                                         Start::listsBehindLinks, Start::staleTemporaries,
                                         Start::cloudWithoutList, Start::cloudWithAnotherList));

} // namespace
} // namespace kestrel::tests
