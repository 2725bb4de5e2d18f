// Each kind of launch, as it reaches the system.
#include "actions/apple_script.h"
#include "actions/execute.h"
#include "shells/macos/foundation/text.h"
#include "shells/macos/launching/terminal.h"
#include "shells/macos/launching/workspace.h"
#include "tests/macos_standins/macos_fixture.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace kestrel::tests {
namespace {

constexpr const char* openApplication =
    "NSWorkspace openApplicationAtURL:configuration:completionHandler: ";

class LaunchingTest : public MacosFixture {
  protected:
    macos_shell::AppKitWorkspace workspace;
    macos_shell::AppleScriptTerminal terminal;

    void launch(ItemType type, std::optional<std::string> path,
                std::optional<std::string> command = std::nullopt) {
        const LauncherItem item{
            .title = "One", .type = type, .path = std::move(path), .command = std::move(command)};
        execute(item, workspace, terminal);
    }
};

TEST_F(LaunchingTest, AnApplicationOpensWithAFreshConfigurationAndNoHandler) {
    launch(ItemType::app, "/Applications/Two Words.app");
    EXPECT_EQ(recording::lines(),
              Lines{std::string(openApplication) +
                    "file:///Applications/Two%20Words.app default configuration, no handler"});
}

TEST_F(LaunchingTest, AFileOpensWithTheApplicationThatTheSystemChooses) {
    launch(ItemType::commandFile, "/tmp/deploy.command");
    EXPECT_EQ(recording::lines(), Lines{"NSWorkspace openURL: file:///tmp/deploy.command"});
}

TEST_F(LaunchingTest, APathThatBeginsWithATildeIsTakenLiterally) {
    launch(ItemType::commandFile, "~/deploy.command");
    const Lines lines = recording::lines();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_TRUE(lines[0].ends_with("/~/deploy.command")) << lines[0];
}

TEST_F(LaunchingTest, NothingHappensWithoutTheTextThatTheKindUses) {
    launch(ItemType::app, std::nullopt, "ls");
    launch(ItemType::app, "", "ls");
    launch(ItemType::commandFile, "", "ls");
    launch(ItemType::inlineCommand, "/bin/ls");
    launch(ItemType::inlineCommand, "/bin/ls", "");
    EXPECT_EQ(recording::lines(), Lines{});
}

TEST_F(LaunchingTest, AFailedOpeningIsSilent) {
    recording::failOpening([NSError errorWithDomain:NSCocoaErrorDomain code:256 userInfo:nil]);
    EXPECT_NO_THROW(launch(ItemType::app, "/nowhere.app"));
    EXPECT_NO_THROW(launch(ItemType::commandFile, "/nowhere"));
    EXPECT_EQ(recording::lines().size(), 2U);
}

TEST_F(LaunchingTest, AnInlineCommandIsHandedToOsascript) {
    launch(ItemType::inlineCommand, std::nullopt, "echo \"a\\b\"");
    EXPECT_EQ(recording::lines(),
              Lines{"NSTask launchAndReturnError: /usr/bin/osascript -e "
                    "tell application \"Terminal\"\n    activate\n    do script "
                    "\"echo \\\"a\\\\b\\\"\"\nend tell"});
}

TEST_F(LaunchingTest, ATaskThatCannotBeStartedLeavesNoTrace) {
    recording::runInstead(@"/usr/bin/osascript", @"/nonexistent/osascript");
    EXPECT_NO_THROW(launch(ItemType::inlineCommand, std::nullopt, "ls"));
    EXPECT_EQ(recording::count("NSTask launchAndReturnError:"), 1);
}

TEST_F(LaunchingTest, ACommandWithANulStartsNothing) {
    launch(ItemType::inlineCommand, std::nullopt, std::string("echo a\0 b", 9));
    EXPECT_EQ(recording::count("NSTask launchAndReturnError:"), 0);
}

/// A program in the place of osascript that writes down its arguments.
class ArgumentsTest : public LaunchingTest {
  protected:
    void SetUp() override {
        std::ofstream(folder_ / "tool") << "#!/bin/sh\nprintf '%s\\0' \"$@\" > \"$0.part\" && mv "
                                           "\"$0.part\" \"$0.arguments\"\n";
        std::filesystem::permissions(folder_ / "tool", std::filesystem::perms::owner_all);
        recording::runInstead(@"/usr/bin/osascript", macos_shell::toNSString(tool()));
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    std::string tool() const { return folder_ / "tool"; }

    /// The arguments of one run, each ended by a zero byte.
    std::string argumentsFor(const std::string& command) {
        const std::string file = tool() + ".arguments";
        std::filesystem::remove(file);
        launch(ItemType::inlineCommand, std::nullopt, command);
        EXPECT_TRUE(recording::runUntil([&] { return std::filesystem::exists(file); }));
        std::ifstream in(file, std::ios::binary);
        return {std::istreambuf_iterator(in), {}};
    }

  private:
    static std::filesystem::path makeFolder() {
        std::string name = std::filesystem::temp_directory_path() / "kestrel.XXXXXX";
        EXPECT_NE(mkdtemp(name.data()), nullptr);
        return name;
    }

    std::filesystem::path folder_ = makeFolder();
};

TEST_F(ArgumentsTest, TheProgramReceivesExactlyTwoArgumentsByteForByte) {
    for (const std::string& command :
         {std::string("ls"), std::string("echo \"quoted\" \\ \\\" 'single' $HOME `date`"),
          std::string("first\nsecond\tthird\r"), std::string(" -n spaces "),
          std::string("gr\xC3\xBC\xC3\x9F \xE9\xB3\xA5 \xF0\x9F\xAA\xB6 e\xCC\x81"),
          std::string(20000, 'x')}) {
        const Task task = terminalTask(command);
        ASSERT_EQ(task.arguments.size(), 2U);
        const std::string zero(1, '\0');
        EXPECT_EQ(argumentsFor(command), "-e" + zero + task.arguments[1] + zero) << command;
    }
}

TEST_F(LaunchingTest, TerminalIsFoundByItsBundleIdentifier) {
    EXPECT_EQ(terminal.applicationPath(), std::nullopt);
    recording::setApplication(
        @"com.apple.Terminal",
        [NSURL fileURLWithPath:@"/System/Applications/Utilities/Terminal.app"]);
    EXPECT_EQ(terminal.applicationPath(), "/System/Applications/Utilities/Terminal.app");
}

} // namespace
} // namespace kestrel::tests
