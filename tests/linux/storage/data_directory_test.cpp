#include "shells/linux/storage/data_directory.h"
#include "tests/linux/posix/scoped_variable.h"
#include "tests/linux/storage/files.h"
#include "tests/linux/storage/temporary_folder.h"

#include <filesystem>
#include <optional>
#include <ostream>
#include <string>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace kestrel::tests {
namespace {

using linux_shell::dataDirectoryPath;
using linux_shell::makeDirectories;
using linux_shell::systemFileOperations;

struct PathCase {
    linux_shell::DataDirectoryInputs inputs;
    std::optional<std::string> expected;
};

void PrintTo(const PathCase& value, std::ostream* out) {
    *out << "XDG_DATA_HOME='" << value.inputs.xdgDataHome << "' home '" << value.inputs.home << "'";
}

class DataDirectoryPathTest : public testing::TestWithParam<PathCase> {};

TEST_P(DataDirectoryPathTest, FollowsTheRules) {
    EXPECT_EQ(dataDirectoryPath(GetParam().inputs), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, DataDirectoryPathTest,
    testing::Values(PathCase{{"/data", "/home/u"}, "/data/kestrel"},
                    PathCase{{"/data/", "/home/u"}, "/data/kestrel"},
                    PathCase{{"/data", ""}, "/data/kestrel"},
                    PathCase{{"/", "/home/u"}, "/kestrel"},
                    PathCase{{"", "/home/u"}, "/home/u/.local/share/kestrel"},
                    PathCase{{"", "/home/u//"}, "/home/u/.local/share/kestrel"},
                    PathCase{{"data", "/home/u"}, "/home/u/.local/share/kestrel"},
                    PathCase{{"./data", "/home/u"}, "/home/u/.local/share/kestrel"},
                    PathCase{{"~/data", "/home/u"}, "/home/u/.local/share/kestrel"},
                    PathCase{{"", "/"}, "/.local/share/kestrel"}, PathCase{{"", ""}, std::nullopt},
                    PathCase{{"data", "home"}, std::nullopt}));

TEST(DataDirectoryTest, TheEnvironmentDecides) {
    const ScopedVariable data("XDG_DATA_HOME", "/data");
    const ScopedVariable home("HOME", "/home/u");
    EXPECT_EQ(dataDirectoryPath(), "/data/kestrel");
}

TEST(DataDirectoryTest, AnUnsetVariableGivesTheHomeFolder) {
    const ScopedVariable data("XDG_DATA_HOME", nullptr);
    const ScopedVariable home("HOME", "/home/u");
    EXPECT_EQ(dataDirectoryPath(), "/home/u/.local/share/kestrel");
}

TEST(DataDirectoryTest, WithoutAHomeVariableThePasswordEntryDecides) {
    const ScopedVariable data("XDG_DATA_HOME", nullptr);
    const ScopedVariable home("HOME", nullptr);
    const std::optional<std::string> path = dataDirectoryPath();
    if (!path)
        GTEST_SKIP() << "this user has no home folder in the password database";
    EXPECT_TRUE(path->starts_with('/')) << *path;
    EXPECT_TRUE(path->ends_with("/.local/share/kestrel")) << *path;
}

class MakeDirectoriesTest : public testing::TestWithParam<mode_t> {
  protected:
    TemporaryFolder folder;
};

TEST_P(MakeDirectoriesTest, AllThatWereMissingAreForTheOwnerAlone) {
    const mode_t old = ::umask(GetParam());
    const bool made = makeDirectories(systemFileOperations(), folder / "a/b/kestrel");
    ::umask(old);
    EXPECT_TRUE(made);
    for (const char* const name : {"a", "a/b", "a/b/kestrel"})
        EXPECT_EQ(modeOf(folder / name), 0700) << name;
}

TEST_P(MakeDirectoriesTest, OnesThatExistAreLeftAsTheyAre) {
    std::filesystem::create_directories(folder / "a/kestrel");
    ASSERT_EQ(::chmod((folder / "a").c_str(), 0750), 0);
    ASSERT_EQ(::chmod((folder / "a/kestrel").c_str(), 0755), 0);
    const mode_t old = ::umask(GetParam());
    EXPECT_TRUE(makeDirectories(systemFileOperations(), folder / "a/kestrel"));
    ::umask(old);
    EXPECT_EQ(modeOf(folder / "a"), 0750);
    EXPECT_EQ(modeOf(folder / "a/kestrel"), 0755);
}

INSTANTIATE_TEST_SUITE_P(Umasks, MakeDirectoriesTest,
                         testing::Values(mode_t{0}, mode_t{022}, mode_t{077}, mode_t{0777}));

TEST(DataDirectoryTest, AFileOnTheWayMakesItImpossible) {
    const TemporaryFolder folder;
    writeInPlace(folder / "file", "");
    EXPECT_FALSE(makeDirectories(systemFileOperations(), folder / "file/kestrel"));
    EXPECT_FALSE(makeDirectories(systemFileOperations(), folder / "file/a/kestrel"));
}

} // namespace
} // namespace kestrel::tests
