// What a write leaves when any of its system calls fails, and when the process ends at any of them.
#include "shells/linux/storage/file_store.h"
#include "shells/linux/storage/temporary_name.h"
#include "tests/linux/storage/faulty_file_operations.h"
#include "tests/linux/storage/memory_disk.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kestrel::tests {
namespace {

using linux_shell::FileStore;
using linux_shell::MissingDirectory;
using Names = std::vector<std::string>;

enum class StoredBefore { nothingThere, valueThere, valueBehindALink, staleTemporaryThere };

void PrintTo(StoredBefore start, std::ostream* out) {
    const char* const names[] = {"nothing there", "a value there", "a value behind a link",
                                 "a stale temporary there"};
    *out << names[static_cast<int>(start)];
}

/// A disk prepared for a write of "new", and what may be found on it afterwards.
class Scene {
  public:
    explicit Scene(StoredBefore start) {
        if (start == StoredBefore::nothingThere)
            return;
        old = "old";
        const bool isLinked = start == StoredBefore::valueBehindALink;
        disk.addFile(isLinked ? "/common/list" : file, *old);
        if (isLinked)
            disk.addLink(file, "../../common/list");
        if (start == StoredBefore::staleTemporaryThere) {
            stale = linux_shell::nextTemporaryName("launcherItems");
            disk.addFile(directory + "/" + *stale, "half");
        }
    }

    std::string directory = "/share/kestrel";
    std::string file = directory + "/launcherItems";
    MemoryDisk disk;
    FaultyFileOperations operations{disk};
    std::optional<std::string> old;
    std::optional<std::string> stale;

    [[nodiscard]] FileStore store() { return {operations, directory, MissingDirectory::create}; }

    bool write(const std::string& data) { return store().write("launcherItems", data); }

    [[nodiscard]] std::optional<std::string> value() const { return disk.contents(file); }

    /// Names that are neither the value nor the stale temporary of before.
    [[nodiscard]] Names litter() const {
        Names names = disk.names(directory);
        std::ranges::copy(disk.names("/common"), std::back_inserter(names));
        std::erase_if(names, [this](const std::string& name) {
            return name == "launcherItems" || name == "list" || name == stale;
        });
        return names;
    }

    void expectAHealthyWriteToCleanUp() {
        operations.failsFrom = FaultyFileOperations::never;
        EXPECT_TRUE(write("third"));
        EXPECT_EQ(value(), "third");
        stale.reset();
        EXPECT_EQ(litter(), Names{});
        const bool isLinked = !disk.names("/common").empty();
        EXPECT_EQ(disk.contents("/common/list"), isLinked ? value() : std::nullopt);
    }

    [[nodiscard]] std::string failure() const {
        return std::string(operations.calls[operations.failsFrom]) + ", call " +
               std::to_string(operations.failsFrom) + ": " + std::strerror(operations.error);
    }
};

class FileStoreFaultsTest : public testing::TestWithParam<StoredBefore> {
  protected:
    /// The calls of a write when all goes well.
    static std::vector<std::string_view> callsOfAWrite() {
        Scene scene(GetParam());
        EXPECT_TRUE(scene.write("new"));
        EXPECT_EQ(scene.value(), "new");
        EXPECT_GT(scene.operations.calls.size(), 8U);
        return scene.operations.calls;
    }
};

TEST_P(FileStoreFaultsTest, OneFailedCallLeavesAWholeValueAndNoLitter) {
    const std::size_t count = callsOfAWrite().size();
    for (const int error : {EIO, ENOSPC, EACCES, EROFS, EDQUOT, EMFILE, ESTALE}) {
        for (std::size_t i = 0; i < count; ++i) {
            Scene scene(GetParam());
            scene.operations.failOnce(i, error);
            const bool isStored = scene.write("new");
            SCOPED_TRACE(scene.failure());
            EXPECT_EQ(scene.value(), isStored ? "new" : scene.old);
            EXPECT_EQ(scene.litter(), Names{});
            scene.expectAHealthyWriteToCleanUp();
        }
    }
}

TEST_P(FileStoreFaultsTest, NothingIsStoredUnlessTheFileIsOnTheDiskUnderItsName) {
    const auto calls = callsOfAWrite();
    const auto rename =
        static_cast<std::size_t>(std::ranges::find(calls, "renameAt") - calls.begin());
    ASSERT_LT(rename, calls.size());
    for (std::size_t i = rename - 3; i <= rename; ++i) {
        Scene scene(GetParam());
        scene.operations.failOnce(i);
        EXPECT_FALSE(scene.write("new")) << scene.failure();
        EXPECT_EQ(scene.value(), scene.old) << scene.failure();
    }
}

TEST_P(FileStoreFaultsTest, AnInterruptedCallCostsNothing) {
    const std::size_t count = callsOfAWrite().size();
    for (std::size_t i = 0; i < count; ++i) {
        Scene scene(GetParam());
        scene.operations.failOnce(i, EINTR);
        EXPECT_TRUE(scene.write("new")) << scene.failure();
        EXPECT_EQ(scene.value(), "new");
    }
}

TEST_P(FileStoreFaultsTest, ASystemThatGoesOnFailingLeavesAWholeValue) {
    const std::size_t count = callsOfAWrite().size();
    for (const int error : {EIO, ENOSPC, EROFS}) {
        for (std::size_t i = 0; i < count; ++i) {
            Scene scene(GetParam());
            scene.operations.failsFrom = i;
            scene.operations.error = error;
            const bool isStored = scene.write("new");
            SCOPED_TRACE(scene.failure());
            EXPECT_EQ(scene.value(), isStored ? "new" : scene.old);
            scene.expectAHealthyWriteToCleanUp();
        }
    }
}

TEST_P(FileStoreFaultsTest, AProcessKilledAtAnyCallLeavesAWholeValue) {
    const std::size_t count = callsOfAWrite().size();
    int leftBehind = 0;
    for (std::size_t i = 0; i < count; ++i) {
        Scene scene(GetParam());
        scene.operations.failsFrom = i;
        scene.write("new");
        SCOPED_TRACE(scene.failure());
        EXPECT_TRUE(scene.value() == scene.old || scene.value() == "new");
        leftBehind += scene.litter().empty() ? 0 : 1;
        scene.expectAHealthyWriteToCleanUp();
    }
    EXPECT_GT(leftBehind, 0) << "no kill hit the write in its middle";
}

TEST_P(FileStoreFaultsTest, AFailedReadGivesNothingRatherThanAPart) {
    Scene healthy(GetParam());
    EXPECT_EQ(healthy.store().read("launcherItems"), healthy.old);
    for (std::size_t i = 0; i < healthy.operations.calls.size(); ++i) {
        Scene scene(GetParam());
        scene.operations.failOnce(i);
        const std::optional<std::string> value = scene.store().read("launcherItems");
        EXPECT_EQ(value, scene.operations.calls[i] == "close" ? scene.old : std::nullopt)
            << scene.failure();
    }
}

INSTANTIATE_TEST_SUITE_P(Starts, FileStoreFaultsTest,
                         testing::Values(StoredBefore::nothingThere, StoredBefore::valueThere,
                                         StoredBefore::valueBehindALink,
                                         StoredBefore::staleTemporaryThere));

} // namespace
} // namespace kestrel::tests
