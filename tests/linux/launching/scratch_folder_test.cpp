#include "shells/linux/launching/scratch_folder.h"

#include "tests/linux/launching/launching_fixture.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace kestrel::linux_shell {
namespace {

namespace fs = std::filesystem;
using std::chrono::hours;
using std::chrono::seconds;

constexpr std::array<ScratchFile, 2> someFiles = {
    {{.name = "run", .bytes = "#!/bin/sh\n", .executable = true}, {.name = "cmd", .bytes = "x"}}};

class ScratchFolderTest : public testing::Test {
  protected:
    ScratchFolderTest() { fs::permissions(folder.path(), fs::perms(0700)); }

    std::vector<std::string> bases() const { return {folder.path()}; }
    std::string make() const { return makeScratchFolder(bases(), someFiles).value_or(""); }
    static unsigned modeOf(const fs::path& path) {
        struct stat status {};
        return ::lstat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0U;
    }
    static void setAge(const fs::path& path, seconds age) {
        const std::time_t then = std::time(nullptr) - age.count();
        const std::array<struct timespec, 2> times = {{{then, 0}, {then, 0}}};
        ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times.data(), AT_SYMLINK_NOFOLLOW), 0);
    }

    TemporaryFolder folder;
};

TEST_F(ScratchFolderTest, IsPrivateAndHoldsTheFilesWhateverTheUmask) {
    for (const mode_t mask : {0000U, 0077U, 0177U, 0777U}) {
        const mode_t umask = ::umask(mask);
        const std::string made = make();
        ::umask(umask);
        ASSERT_TRUE(made.starts_with(folder.path().string() + "/kestrel-launch-"));
        EXPECT_EQ(modeOf(made), 0700U);
        EXPECT_EQ(modeOf(fs::path(made) / "run"), 0700U);
        EXPECT_EQ(modeOf(fs::path(made) / "cmd"), 0600U);
        EXPECT_EQ(readFile(fs::path(made) / "run"), "#!/bin/sh\n");
        EXPECT_EQ(readFile(fs::path(made) / "cmd"), "x");
    }
}

TEST_F(ScratchFolderTest, TwoFoldersDiffer) { EXPECT_NE(make(), make()); }

TEST_F(ScratchFolderTest, RemovingTakesTheFolderAndItsFiles) {
    const std::string made = make();
    ASSERT_TRUE(fs::exists(made));
    removeScratchFolder(made);
    EXPECT_FALSE(fs::exists(made));
}

TEST_F(ScratchFolderTest, UnsuitableBasesArePassedOver) {
    const fs::path odd = folder.path() / "a b";
    const fs::path open = folder.path() / "open";
    const fs::path sticky = folder.path() / "sticky";
    const fs::path file = folder.path() / "file";
    for (const fs::path& each : {odd, open, sticky})
        fs::create_directory(each);
    fs::permissions(open, fs::perms(0777));
    fs::permissions(sticky, fs::perms(01777));
    writeFile(file, "");
    const std::vector<std::string> unsuitable = {
        "", ".", "relative", odd, folder.path() / "missing", file, open, "/proc", "/$HOME", "/~"};
    EXPECT_EQ(makeScratchFolder(unsuitable, someFiles), std::nullopt);
    EXPECT_TRUE(fs::is_empty(odd));
    EXPECT_TRUE(fs::is_empty(open));

    std::vector<std::string> withGood = unsuitable;
    withGood.push_back(sticky);
    const auto made = makeScratchFolder(withGood, someFiles);
    ASSERT_TRUE(made);
    EXPECT_TRUE(made->starts_with(sticky.string()));
}

TEST_F(ScratchFolderTest, AFolderOfAnotherUserIsPassedOverAlsoWhenItIsSticky) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can give folders to others";
    for (const auto mode : {0755, 01755, 01777}) {
        const fs::path base = folder.path() / std::to_string(mode);
        fs::create_directory(base);
        fs::permissions(base, fs::perms(mode));
        ASSERT_EQ(::chown(base.c_str(), 65534, 65534), 0);
        EXPECT_EQ(makeScratchFolder(std::vector{base.string()}, someFiles), std::nullopt) << mode;
        EXPECT_TRUE(fs::is_empty(base)) << mode;
    }
}

TEST_F(ScratchFolderTest, AFileThatCannotBeWrittenLeavesNothingBehind) {
    const std::array<ScratchFile, 3> twice = {
        {{.name = "run", .bytes = ""}, {.name = "cmd", .bytes = ""}, {.name = "run", .bytes = ""}}};
    EXPECT_EQ(makeScratchFolder(bases(), twice), std::nullopt);
    EXPECT_TRUE(fs::is_empty(folder.path()));
}

TEST_F(ScratchFolderTest, SweepingRemovesOldFoldersOfOursOnly) {
    const std::string old = make();
    const std::string fresh = make();
    const fs::path foreign = folder.path() / "other-launch-abc";
    const fs::path wide = folder.path() / "kestrel-launch-wide";
    const fs::path link = folder.path() / "kestrel-launch-link";
    const fs::path file = folder.path() / "kestrel-launch-file";
    const fs::path target = folder.path() / "target";
    for (const fs::path& each : {foreign, wide, target})
        fs::create_directory(each);
    fs::permissions(foreign, fs::perms(0700));
    fs::permissions(wide, fs::perms(0755));
    writeFile(target / "cmd", "precious");
    writeFile(file, "", 0700);
    fs::create_directory_symlink(target, link);
    for (const fs::path& each : {fs::path(old), foreign, wide, link, file})
        setAge(each, hours(2));

    sweepScratchFolders(bases(), hours(1));

    EXPECT_FALSE(fs::exists(old));
    EXPECT_TRUE(fs::exists(fresh));
    EXPECT_TRUE(fs::exists(foreign));
    EXPECT_TRUE(fs::exists(wide));
    EXPECT_TRUE(fs::exists(file));
    EXPECT_TRUE(fs::exists(target / "cmd"));
}

TEST_F(ScratchFolderTest, SweepingKeepsWhatItDoesNotKnow) {
    const std::string old = make();
    writeFile(fs::path(old) / "notes", "of the user");
    setAge(old, hours(2));
    sweepScratchFolders(bases(), hours(1));
    EXPECT_EQ(readFile(fs::path(old) / "notes"), "of the user");
}

TEST_F(ScratchFolderTest, SweepingAMissingBaseDoesNothing) {
    const std::vector<std::string> missing = {"", "relative", folder.path() / "missing"};
    sweepScratchFolders(missing, seconds(0));
    EXPECT_TRUE(fs::is_empty(folder.path()));
}

TEST_F(ScratchFolderTest, TheRuntimeFolderComesFirstAndTheCacheLast) {
    ::setenv("XDG_RUNTIME_DIR", "/run/user/7", 1);
    ::setenv("TMPDIR", "/var/tmp", 1);
    ::setenv("XDG_CACHE_HOME", "/home/u/cache", 1);
    EXPECT_EQ(scratchBases(),
              (std::vector<std::string>{"/run/user/7", "/var/tmp", "/tmp", "/home/u/cache"}));
    ::setenv("XDG_CACHE_HOME", "relative", 1);
    ::setenv("HOME", "/home/u", 1);
    EXPECT_EQ(scratchBases().back(), "/home/u/.cache");
}

} // namespace
} // namespace kestrel::linux_shell
