// What any failing system call of a save costs: at most that save. The list on the screen stays,
// what is stored stays whole, and the next save stores everything.
#include "tests/linux/storage/disk_scenes.h"
#include "tests/linux/storage/disk_session.h"
#include "tests/linux/storage/faulty_file_operations.h"
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
    static std::size_t callsOfASave() {
        MemoryDisk disk = diskFor(GetParam());
        FaultyFileOperations operations(disk);
        DiskSession session(operations, dataDirectory);
        operations.calls.clear();
        session.add("New");
        EXPECT_GT(operations.calls.size(), 15U);
        return operations.calls.size();
    }

    /// The program has started and then saves while some calls fail.
    void expectOnlyThatSaveIsLost(std::size_t first, std::size_t count, int error) const {
        SCOPED_TRACE("call " + std::to_string(first) + ": " + std::strerror(error));
        MemoryDisk disk = diskFor(GetParam());
        FaultyFileOperations operations(disk);
        DiskSession session(operations, dataDirectory);
        operations.calls.clear();
        operations.failsFrom = first;
        operations.failsTo = first + count;
        operations.error = error;
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
        operations.failsFrom = FaultyFileOperations::never;
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
    const std::size_t count = callsOfASave();
    for (const int error : errors)
        for (std::size_t call = 0; call < count; ++call)
            expectOnlyThatSaveIsLost(call, 1, error);
}

TEST_P(SaveFaultsTest, ASystemThatGoesOnFailingCostsAtMostThatSave) {
    const std::size_t count = callsOfASave();
    for (const int error : errors)
        for (std::size_t call = 0; call < count; ++call)
            expectOnlyThatSaveIsLost(call, 1'000'000, error);
}

TEST_P(SaveFaultsTest, ReloadsThatFailLeaveTheListOnTheScreen) {
    MemoryDisk disk = diskFor(GetParam());
    FaultyFileOperations operations(disk);
    DiskSession session(operations, dataDirectory);
    session.add("New");
    const Titles shown = session.shown();
    operations.calls.clear();
    session.reload();
    const std::size_t count = operations.calls.size();
    for (const int error : errors)
        for (std::size_t call = 0; call < count; ++call) {
            SCOPED_TRACE("call " + std::to_string(call) + ": " + std::strerror(error));
            operations.calls.clear();
            operations.failOnce(call, error);
            session.reload();
            EXPECT_EQ(session.shown(), shown);
            EXPECT_EQ(titlesIn(disk, localList), shown);
        }
    operations.failsFrom = FaultyFileOperations::never;
    expectNextSaveToWork(session, disk, with(shown, "Later"));
}

TEST_P(SaveFaultsTest, WritesThatTakeLittleAtATimeStoreEverything) {
    MemoryDisk disk = diskFor(GetParam());
    FaultyFileOperations operations(disk);
    operations.longestWrite = 7;
    DiskSession session(operations, dataDirectory);
    expectNextSaveToWork(session, disk, with(before, "New"));
}

TEST_P(SaveFaultsTest, AnInterruptedCallCostsNothing) {
    const std::size_t count = callsOfASave();
    for (std::size_t call = 0; call < count; ++call) {
        SCOPED_TRACE("call " + std::to_string(call));
        MemoryDisk disk = diskFor(GetParam());
        FaultyFileOperations operations(disk);
        DiskSession session(operations, dataDirectory);
        operations.calls.clear();
        operations.failOnce(call, EINTR);
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
