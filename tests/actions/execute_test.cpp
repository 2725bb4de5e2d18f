#include "actions/execute.h"

#include "tests/fakes/fake_system.h"

#include <gmock/gmock.h>

namespace kestrel::tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ExecuteTest : public testing::Test {
  protected:
    CallLog log;
    FakeWorkspace workspace{log};
    FakeTerminal terminal{log};

    void launch(ItemType type, std::optional<std::string> path,
                std::optional<std::string> command) {
        execute(
            {.title = "Item", .type = type, .path = std::move(path), .command = std::move(command)},
            workspace, terminal);
    }
};

TEST_F(ExecuteTest, AnAppIsOpenedAsAnApplication) {
    launch(ItemType::app, "/apps/Editor", std::nullopt);
    EXPECT_THAT(log.calls, ElementsAre("workspace.openApplication /apps/Editor"));
}

TEST_F(ExecuteTest, ACommandFileIsOpenedAsAFile) {
    launch(ItemType::commandFile, "/home/user/run.command", std::nullopt);
    EXPECT_THAT(log.calls, ElementsAre("workspace.openFile /home/user/run.command"));
}

TEST_F(ExecuteTest, AnInlineCommandIsTypedIntoATerminal) {
    launch(ItemType::inlineCommand, std::nullopt, "echo \"a\\b\"\nls");
    EXPECT_THAT(log.calls, ElementsAre("terminal.runInNewWindow echo \"a\\b\"\nls"));
}

TEST_F(ExecuteTest, AnAbsentOrEmptyTextDoesNothingAndTheOtherFieldIsNoFallback) {
    for (const ItemType type : {ItemType::app, ItemType::commandFile}) {
        launch(type, std::nullopt, "ls");
        launch(type, "", "ls");
    }
    launch(ItemType::inlineCommand, "/apps/Editor", std::nullopt);
    launch(ItemType::inlineCommand, "/apps/Editor", "");
    EXPECT_THAT(log.calls, IsEmpty());
}

TEST_F(ExecuteTest, ACommandStoredOnAnAppAndAPathStoredOnACommandAreIgnored) {
    launch(ItemType::app, "/apps/Editor", "rm x");
    launch(ItemType::inlineCommand, "/apps/Editor", "ls");
    EXPECT_THAT(log.calls, ElementsAre("workspace.openApplication /apps/Editor",
                                       "terminal.runInNewWindow ls"));
}

TEST_F(ExecuteTest, ATildeAndSpacesInAPathAreTakenLiterally) {
    launch(ItemType::app, "~/Editor ", std::nullopt);
    launch(ItemType::commandFile, " ", std::nullopt);
    EXPECT_THAT(log.calls,
                ElementsAre("workspace.openApplication ~/Editor ", "workspace.openFile  "));
}

} // namespace
} // namespace kestrel::tests
