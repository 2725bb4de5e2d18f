// What a write leaves when any of its system calls fails, and when the process ends at any of them.
#include "shells/linux/storage/file_store.h"
#include "shells/linux/storage/temporary_name.h"
#include "tests/linux/storage/faulty_file_operations.h"
#include "tests/linux/storage/files.h"
#include "tests/linux/storage/temporary_folder.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kestrel::tests {
namespace {

namespace fs = std::filesystem;
using linux_shell::FileStore;
using linux_shell::MissingDirectory;
using linux_shell::systemFileOperations;
using Names = std::vector<std::string>;

enum class StoredBefore { nothingThere, valueThere, valueBehindALink, staleTemporaryThere };

void PrintTo(StoredBefore start, std::ostream* out) {
    const char* const names[] = {"nothing there", "a value there", "a value behind a link",
                                 "a stale temporary there"};
    *out << names[static_cast<int>(start)];
}

/// One directory prepared for a write of "new", and what may be found afterwards.
class Scene {
  public:
    explicit Scene(StoredBefore start) : start_(start) {
        if (start == StoredBefore::nothingThere)
            return;
        old = "old";
        fs::create_directories(directory);
        if (start == StoredBefore::valueBehindALink) {
            fs::create_directory(folder / "common");
            writeInPlace(folder / "common/list", *old);
            fs::create_symlink("../../common/list", directory + "/launcherItems");
            return;
        }
        writeInPlace(directory + "/launcherItems", *old);
        if (start == StoredBefore::staleTemporaryThere) {
            stale = linux_shell::nextTemporaryName("launcherItems");
            writeInPlace(directory + "/" + *stale, "half");
        }
    }

    TemporaryFolder folder;
    std::string directory = folder / "share/kestrel";
    std::optional<std::string> old;
    std::optional<std::string> stale;

    [[nodiscard]] FileStore store(linux_shell::FileOperations& operations) const {
        return {operations, directory, MissingDirectory::create};
    }

    [[nodiscard]] std::optional<std::string> value() const {
        return store(systemFileOperations()).read("launcherItems");
    }

    /// Names that are neither the value nor the stale temporary of before.
    [[nodiscard]] Names litter() const {
        Names names;
        for (const std::string& name : namesIn(directory))
            if (name != "launcherItems" && name != stale)
                names.push_back(name);
        for (const std::string& name : namesIn(folder / "common"))
            if (name != "list")
                names.push_back(name);
        return names;
    }

    void expectAHealthyWriteToCleanUp() {
        FaultyFileOperations healthy;
        EXPECT_TRUE(store(healthy).write("launcherItems", "third"));
        EXPECT_EQ(value(), "third");
        stale.reset();
        EXPECT_EQ(litter(), Names{});
        EXPECT_EQ(fs::is_symlink(directory + "/launcherItems"),
                  start_ == StoredBefore::valueBehindALink);
    }

  private:
    StoredBefore start_;
};

class FileStoreFaultsTest : public testing::TestWithParam<StoredBefore> {
  protected:
    /// How many calls a write makes when all goes well.
    static int callsOfAWrite() {
        const Scene scene(GetParam());
        FaultyFileOperations operations;
        EXPECT_TRUE(scene.store(operations).write("launcherItems", "new"));
        EXPECT_EQ(scene.value(), "new");
        return static_cast<int>(operations.calls.size());
    }
};

TEST_P(FileStoreFaultsTest, OneFailedCallLeavesAWholeValueAndNoLitter) {
    const int count = callsOfAWrite();
    ASSERT_GT(count, 8);
    int failedWrites = 0;
    for (const int error : {EIO, ENOSPC, EACCES, EROFS, EDQUOT, EMFILE, ESTALE}) {
        for (int i = 0; i < count; ++i) {
            Scene scene(GetParam());
            FaultyFileOperations operations;
            operations.fault = Fault::failOnce;
            operations.faultAt = i;
            operations.error = error;
            const bool stored = scene.store(operations).write("launcherItems", "new");
            SCOPED_TRACE(operations.calls[static_cast<std::size_t>(i)] + ", call " +
                         std::to_string(i) + ": " + std::strerror(error));
            EXPECT_EQ(scene.value(), stored ? "new" : scene.old);
            EXPECT_EQ(scene.litter(), Names{});
            scene.expectAHealthyWriteToCleanUp();
            failedWrites += stored ? 0 : 1;
        }
    }
    EXPECT_GT(failedWrites, 7 * 4);
}

TEST_P(FileStoreFaultsTest, AnInterruptedCallCostsNothing) {
    const int count = callsOfAWrite();
    for (int i = 0; i < count; ++i) {
        const Scene scene(GetParam());
        FaultyFileOperations operations;
        operations.fault = Fault::failOnce;
        operations.faultAt = i;
        operations.error = EINTR;
        EXPECT_TRUE(scene.store(operations).write("launcherItems", "new"))
            << operations.calls[static_cast<std::size_t>(i)] << ", call " << i;
        EXPECT_EQ(scene.value(), "new");
    }
}

TEST_P(FileStoreFaultsTest, ASystemThatGoesOnFailingLeavesAWholeValue) {
    const int count = callsOfAWrite();
    for (const int error : {EIO, ENOSPC, EROFS}) {
        for (int i = 0; i < count; ++i) {
            Scene scene(GetParam());
            FaultyFileOperations operations;
            operations.fault = Fault::failFromThereOn;
            operations.faultAt = i;
            operations.error = error;
            const bool stored = scene.store(operations).write("launcherItems", "new");
            SCOPED_TRACE(operations.calls[static_cast<std::size_t>(i)] + ", call " +
                         std::to_string(i) + ": " + std::strerror(error));
            EXPECT_EQ(scene.value(), stored ? "new" : scene.old);
            scene.expectAHealthyWriteToCleanUp();
        }
    }
}

TEST_P(FileStoreFaultsTest, AProcessKilledAtAnyCallLeavesAWholeValue) {
    const int count = callsOfAWrite();
    int leftBehind = 0;
    for (const Fault fault : {Fault::killBefore, Fault::killAfter}) {
        for (int i = 0; i < count; ++i) {
            Scene scene(GetParam());
            const pid_t child = ::fork();
            if (child == 0) {
                FaultyFileOperations operations;
                operations.fault = fault;
                operations.faultAt = i;
                scene.store(operations).write("launcherItems", "new");
                ::_exit(0);
            }
            int status = 0;
            ASSERT_EQ(::waitpid(child, &status, 0), child);
            ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << "call " << i;
            SCOPED_TRACE("killed at call " + std::to_string(i));
            const std::optional<std::string> value = scene.value();
            EXPECT_TRUE(value == scene.old || value == "new") << value.value_or("nothing");
            leftBehind += scene.litter().empty() ? 0 : 1;
            scene.expectAHealthyWriteToCleanUp();
        }
    }
    EXPECT_GT(leftBehind, 0) << "no kill hit the write in its middle";
}

TEST_P(FileStoreFaultsTest, AFailedReadGivesNothingRatherThanAPart) {
    const Scene scene(GetParam());
    FaultyFileOperations healthy;
    EXPECT_EQ(scene.store(healthy).read("launcherItems"), scene.old);
    for (int i = 0; i < static_cast<int>(healthy.calls.size()); ++i) {
        FaultyFileOperations operations;
        operations.fault = Fault::failOnce;
        operations.faultAt = i;
        const std::optional<std::string> value = scene.store(operations).read("launcherItems");
        const std::string& call = operations.calls[static_cast<std::size_t>(i)];
        EXPECT_EQ(value, call == "close" ? scene.old : std::nullopt) << call;
    }
}

INSTANTIATE_TEST_SUITE_P(Starts, FileStoreFaultsTest,
                         testing::Values(StoredBefore::nothingThere, StoredBefore::valueThere,
                                         StoredBefore::valueBehindALink,
                                         StoredBefore::staleTemporaryThere));

} // namespace
} // namespace kestrel::tests
