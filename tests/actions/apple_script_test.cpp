#include "actions/apple_script.h"

#include <gtest/gtest.h>

namespace kestrel {
namespace {

TEST(AppleScriptTest, TheScriptHasFourLinesByteForByte) {
    EXPECT_EQ(terminalScript("ls -l"), "tell application \"Terminal\"\n"
                                       "    activate\n"
                                       "    do script \"ls -l\"\n"
                                       "end tell");
}

TEST(AppleScriptTest, TheScriptAroundACommandIs66BytesLong) {
    EXPECT_EQ(terminalScript("").size(), 66U);
}

TEST(AppleScriptTest, ADoubleQuoteGetsOneBackslashBeforeIt) {
    EXPECT_EQ(escapedForAppleScript("echo \"hi\""), "echo \\\"hi\\\"");
}

TEST(AppleScriptTest, ABackslashIsDoubled) { EXPECT_EQ(escapedForAppleScript("a\\b"), "a\\\\b"); }

TEST(AppleScriptTest, ABackslashBeforeAQuoteEndsUpAsThreeBackslashesBeforeIt) {
    EXPECT_EQ(escapedForAppleScript("\\\""), "\\\\\\\"");
}

TEST(AppleScriptTest, ACommandOfSeveralLinesGoesInUnchanged) {
    EXPECT_EQ(escapedForAppleScript("cd /tmp\nls\t-l\r\n"), "cd /tmp\nls\t-l\r\n");
    EXPECT_NE(terminalScript("one\ntwo").find("do script \"one\ntwo\"\nend tell"),
              std::string::npos);
}

TEST(AppleScriptTest, NothingElseIsEscaped) {
    const std::string text = "$HOME `id` 'x' ~ % \x01 \u00E9 \u4E2D";
    EXPECT_EQ(escapedForAppleScript(text), text);
}

TEST(AppleScriptTest, TheTaskIsOsascriptWithExactlyTwoArguments) {
    EXPECT_EQ(terminalTask("ls"), (Task{.executable = "/usr/bin/osascript",
                                        .arguments = {"-e", terminalScript("ls")}}));
}

} // namespace
} // namespace kestrel
