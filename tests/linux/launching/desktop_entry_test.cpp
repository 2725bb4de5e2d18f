#include "shells/linux/launching/desktop_entry.h"

#include <gtest/gtest.h>

namespace kestrel::linux_shell {
namespace {

TEST(DesktopEntryTest, WordsBeforeTheCommandLineAreQuotedAndTheirPercentSignsDoubled) {
    struct Row {
        std::vector<std::string> prefix;
        std::string exec;
        std::string expected;
    };
    const std::vector<Row> table = {
        {{}, "vim %f", "vim %f"},
        {{"/usr/bin/xterm", "-e"}, "vim %f", "'/usr/bin/xterm' '-e' vim %f"},
        {{"/opt/my terminal", "--"}, "top", "'/opt/my terminal' '--' top"},
        {{"/opt/100%f/term"}, "top", "'/opt/100%%f/term' top"},
        {{"/opt/it's"}, "top", "'/opt/it'\\''s' top"},
        {{"/opt/$HOME`x`\"\\"}, "top", "'/opt/$HOME`x`\"\\' top"},
    };
    for (const Row& row : table)
        EXPECT_EQ(execBehind(row.prefix, row.exec), row.expected);
}

TEST(DesktopEntryTest, TheLocationOfTheEntryReplacesItsFieldCode) {
    struct Row {
        std::string exec;
        std::string path;
        std::string expected;
    };
    const std::vector<Row> table = {
        {"run %k", "/a/b.desktop", "run '/a/b.desktop'"},
        {"run %k %f", "/a b/100%.desktop", "run '/a b/100%%.desktop' %f"},
        {"run %%k", "/a", "run %%k"},
        {"run %%%k", "/a", "run %%'/a'"},
        {"run %", "/a", "run %"},
        {"run %u", "/a", "run %u"},
        {"", "/a", ""},
    };
    for (const Row& row : table)
        EXPECT_EQ(expandEntryLocation(row.exec, row.path), row.expected) << row.exec;
}

} // namespace
} // namespace kestrel::linux_shell
