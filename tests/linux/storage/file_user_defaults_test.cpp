#include "shells/linux/storage/file_user_defaults.h"
#include "tests/linux/storage/files.h"
#include "tests/linux/storage/temporary_folder.h"

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kestrel::tests {
namespace {

using linux_shell::FileUserDefaults;
using Names = std::vector<std::string>;
using namespace std::chrono_literals;

class FileUserDefaultsTest : public testing::Test {
  protected:
    TemporaryFolder folder;
    std::string directory = folder / "share/kestrel";
    FileUserDefaults defaults{directory};

    std::string storedDate(Date date) {
        defaults.setDate(date, "lastLocalSync");
        return contentsOf(directory + "/lastLocalSync").value_or("nothing");
    }
};

TEST_F(FileUserDefaultsTest, EachKeyIsOneFile) {
    defaults.setData("[]", "launcherItems");
    defaults.setDate(Date{}, "lastLocalSync");
    EXPECT_EQ(namesIn(directory), (Names{"lastLocalSync", "launcherItems"}));
    EXPECT_EQ(contentsOf(directory + "/launcherItems"), "[]");
    EXPECT_EQ(modeOf(directory), 0700);
    EXPECT_EQ(modeOf(directory + "/launcherItems"), 0600);
    EXPECT_EQ(modeOf(directory + "/lastLocalSync"), 0600);
}

TEST_F(FileUserDefaultsTest, DatesAreWrittenInUtcToTheSecond) {
    using std::chrono::sys_days;
    using namespace std::chrono;
    EXPECT_EQ(storedDate(Date{}), "1970-01-01T00:00:00Z");
    EXPECT_EQ(storedDate(sys_days(2026y / November / 21) + 1h + 55min + 6s),
              "2026-11-21T01:55:06Z");
    EXPECT_EQ(storedDate(sys_days(2024y / February / 29) + 23h + 59min + 59s + 999ms),
              "2024-02-29T23:59:59Z");
    EXPECT_EQ(storedDate(Date{} - 1ms), "1969-12-31T23:59:59Z");
    EXPECT_EQ(storedDate(sys_days(2262y / January / 1)), "2262-01-01T00:00:00Z");
}

TEST_F(FileUserDefaultsTest, NothingIsMadeByReading) {
    EXPECT_EQ(defaults.dataForKey("launcherItems"), std::nullopt);
    EXPECT_EQ(namesIn(folder.path()), Names{});
}

TEST_F(FileUserDefaultsTest, BytesThatAreNoListAreHandedOutAsTheyAre) {
    std::filesystem::create_directories(directory);
    for (const std::string& bytes :
         {std::string(), std::string("{broken"), std::string("\0\xFF", 2)}) {
        writeInPlace(directory + "/launcherItems", bytes);
        EXPECT_EQ(defaults.dataForKey("launcherItems"), bytes);
    }
}

TEST_F(FileUserDefaultsTest, ADirectoryInTheValuesPlaceHoldsNoData) {
    std::filesystem::create_directories(directory + "/launcherItems");
    EXPECT_EQ(defaults.dataForKey("launcherItems"), std::nullopt);
    defaults.setData("[]", "launcherItems");
    EXPECT_TRUE(std::filesystem::is_directory(directory + "/launcherItems"));
    EXPECT_EQ(namesIn(directory), Names{"launcherItems"});
}

TEST_F(FileUserDefaultsTest, WithoutADirectoryItIsEmptyAndTakesNothing) {
    FileUserDefaults none{""};
    none.setData("[]", "launcherItems");
    none.setDate(Date{}, "lastLocalSync");
    EXPECT_EQ(none.dataForKey("launcherItems"), std::nullopt);
    EXPECT_FALSE(std::filesystem::exists("/launcherItems"));
    EXPECT_FALSE(std::filesystem::exists("launcherItems"));
}

} // namespace
} // namespace kestrel::tests
