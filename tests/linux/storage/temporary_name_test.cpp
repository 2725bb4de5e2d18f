#include "shells/linux/storage/temporary_name.h"

#include <string>

#include <gtest/gtest.h>

namespace kestrel::tests {
namespace {

using linux_shell::isTemporaryOfThisMachine;
using linux_shell::isTemporaryOfThisProcess;
using linux_shell::nextTemporaryName;

TEST(TemporaryNameTest, NamesAreHiddenAndDiffer) {
    const std::string first = nextTemporaryName("launcherItems");
    EXPECT_TRUE(first.starts_with(".launcherItems.kestrel-")) << first;
    EXPECT_TRUE(first.ends_with(".tmp")) << first;
    EXPECT_NE(first, nextTemporaryName("launcherItems"));
}

TEST(TemporaryNameTest, OwnNamesAreRecognised) {
    const std::string name = nextTemporaryName("launcherItems");
    EXPECT_TRUE(isTemporaryOfThisMachine(name, "launcherItems"));
    EXPECT_TRUE(isTemporaryOfThisProcess(name));
    EXPECT_FALSE(isTemporaryOfThisMachine(name, "lastLocalSync"));
}

TEST(TemporaryNameTest, AnEarlierRunOnThisMachineIsNotThisProcess) {
    std::string name = nextTemporaryName("launcherItems");
    char& digit = name[std::string(".launcherItems.kestrel-12345678-").size()];
    digit = digit == '0' ? '1' : '0';
    EXPECT_TRUE(isTemporaryOfThisMachine(name, "launcherItems")) << name;
    EXPECT_FALSE(isTemporaryOfThisProcess(name)) << name;
}

TEST(TemporaryNameTest, AnotherMachineIsNotThisOne) {
    std::string name = nextTemporaryName("launcherItems");
    char& digit = name[std::string(".launcherItems.kestrel-").size()];
    digit = digit == '0' ? '1' : '0';
    EXPECT_FALSE(isTemporaryOfThisMachine(name, "launcherItems")) << name;
    EXPECT_FALSE(isTemporaryOfThisProcess(name)) << name;
}

TEST(TemporaryNameTest, NamesOfOtherProgramsAreNotOurs) {
    const std::string own = nextTemporaryName("launcherItems");
    for (const std::string& name :
         {std::string("launcherItems"), std::string(".launcherItems.tmp"),
          std::string(".launcherItems.AbCdEf"), std::string(".launcherItems.AbCdEf.tmp"),
          std::string(".syncthing.launcherItems.tmp"), std::string(".launcherItems.~1a2b"),
          std::string("launcherItems.part"), std::string(), std::string("."), own.substr(1),
          own + "~", "." + own, own.substr(0, own.size() - 4),
          own.substr(0, own.rfind('-') + 1) + ".tmp", own.substr(0, own.rfind('-') + 1) + "x.tmp"})
        EXPECT_FALSE(isTemporaryOfThisMachine(name, "launcherItems")) << name;
    for (const std::string& name : {own.substr(1), own + "~", own.substr(0, own.size() - 4),
                                    own.substr(0, own.rfind('-') + 1) + ".tmp", std::string()})
        EXPECT_FALSE(isTemporaryOfThisProcess(name)) << name;
}

} // namespace
} // namespace kestrel::tests
