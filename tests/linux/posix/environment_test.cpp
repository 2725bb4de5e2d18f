#include "shells/linux/posix/environment.h"

#include "tests/linux/posix/scoped_variable.h"

#include <string>

#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

namespace kestrel::tests {
namespace {

using linux_shell::environmentVariable;
using linux_shell::homeFolder;
using linux_shell::userShell;

/// What counts as not set.
constexpr const char* noPaths[] = {nullptr, "", ".", "home/u", "~"};

/// The entry's own text where it is a path, as these functions give it.
std::string pathIn(const char* field, const std::string& otherwise) {
    return field != nullptr && *field == '/' ? field : otherwise;
}

TEST(EnvironmentTest, AVariableHasItsValueAndIsEmptyWhenNotSet) {
    for (const char* const value : {"", "text", "/a b:c=d"}) {
        const ScopedVariable variable("KESTREL_TEST", value);
        EXPECT_EQ(environmentVariable("KESTREL_TEST"), value);
    }
    const ScopedVariable variable("KESTREL_TEST", nullptr);
    EXPECT_EQ(environmentVariable("KESTREL_TEST"), "");
}

TEST(EnvironmentTest, TheEnvironmentComesFirst) {
    const ScopedVariable home("HOME", "/home/of the session");
    const ScopedVariable shell("SHELL", "/opt/shell");
    EXPECT_EQ(homeFolder(), "/home/of the session");
    EXPECT_EQ(userShell(), "/opt/shell");
}

TEST(EnvironmentTest, ThePasswordDatabaseDecidesWhereTheEnvironmentNamesNoAbsolutePath) {
    const passwd* const entry = ::getpwuid(::getuid());
    if (entry == nullptr)
        GTEST_SKIP() << "this user is not in the password database";
    for (const char* const value : noPaths) {
        const ScopedVariable home("HOME", value);
        const ScopedVariable shell("SHELL", value);
        EXPECT_EQ(homeFolder(), pathIn(entry->pw_dir, "")) << testing::PrintToString(value);
        EXPECT_EQ(userShell(), pathIn(entry->pw_shell, "/bin/sh")) << testing::PrintToString(value);
    }
}

TEST(EnvironmentTest, EachAnswerIsThatOfTheMoment) {
    for (const char* const value : {"/home/a", "/home/b"}) {
        const ScopedVariable home("HOME", value);
        EXPECT_EQ(homeFolder(), value);
    }
}

} // namespace
} // namespace kestrel::tests
