#include "views/settings/add_edit_item_view.h"

#include "tests/fakes/fake_system.h"
#include "views/settings/add_edit_item_style.h"

#include <gmock/gmock.h>

namespace kestrel::tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AddEditItemViewTest : public testing::Test {
  protected:
    FakeOpenPanel panel;
    std::vector<LauncherItem> saved;
    int dismissals = 0;
    std::unique_ptr<AddEditItemView> form;

    void open(std::optional<LauncherItem> item = std::nullopt) {
        form = std::make_unique<AddEditItemView>(
            std::move(item),
            [this](LauncherItem record) {
                EXPECT_EQ(dismissals, 0) << "onSave comes before closing";
                saved.push_back(std::move(record));
            },
            panel);
        form->dismiss = [this] { ++dismissals; };
    }
    static LauncherItem command() {
        return {.title = "Build", .type = ItemType::inlineCommand, .command = "make -j2"};
    }
};

TEST_F(AddEditItemViewTest, AddingOpensEmptyWithTheAppSegmentAndADisabledAddButton) {
    open();
    EXPECT_FALSE(form->isEditing());
    EXPECT_EQ(form->title(), "");
    EXPECT_EQ(form->type(), ItemType::app);
    EXPECT_EQ(form->path(), "");
    EXPECT_EQ(form->command(), "");
    EXPECT_EQ(form->header().english, "Add Item");
    EXPECT_EQ(form->confirmTitle().english, "Add");
    EXPECT_FALSE(form->canSave());
    EXPECT_EQ(add_edit_item_style::rowOf(form->type()).label.english, "App");
}

TEST_F(AddEditItemViewTest, EditingAnInlineCommandShowsItsCommandUnderEditItemAndSave) {
    open(command());
    EXPECT_EQ(form->header().english, "Edit Item");
    EXPECT_EQ(form->confirmTitle().english, "Save");
    EXPECT_EQ(form->type(), ItemType::inlineCommand);
    EXPECT_EQ(form->command(), "make -j2");
    EXPECT_EQ(form->path(), "");
    EXPECT_TRUE(form->canSave());
}

TEST_F(AddEditItemViewTest, EditingAnItemWithBothTextsShowsThePathAfterSwitching) {
    LauncherItem item = command();
    item.path = "/old";
    open(item);
    form->setType(ItemType::app);
    EXPECT_EQ(form->path(), "/old");
}

TEST_F(AddEditItemViewTest, ATitleOfThreeSpacesCannotBeSaved) {
    open();
    form->setTitle("   ");
    EXPECT_FALSE(form->canSave());
    form->commitSave();
    EXPECT_THAT(saved, IsEmpty());
    EXPECT_EQ(dismissals, 0);
}

TEST_F(AddEditItemViewTest, ATitleWithSpacesAroundItIsSavedTrimmed) {
    open();
    form->setTitle("  Deploy  ");
    form->commitSave();
    ASSERT_EQ(saved.size(), 1U);
    EXPECT_EQ(saved[0].title, "Deploy");
    EXPECT_EQ(dismissals, 1);
}

TEST_F(AddEditItemViewTest, TabsAndUnicodeSpacesAreTrimmedToo) {
    open();
    form->setTitle("\t\u00A0\u2003\u3000");
    EXPECT_FALSE(form->canSave());
    form->setTitle("\u3000\tA B\u00A0");
    form->commitSave();
    EXPECT_EQ(saved.at(0).title, "A B");
}

TEST_F(AddEditItemViewTest, ATitleOfALineBreakCountsAsNonBlank) {
    open();
    form->setTitle("\n");
    EXPECT_TRUE(form->canSave());
    form->commitSave();
    EXPECT_EQ(saved.at(0).title, "\n");
}

TEST_F(AddEditItemViewTest, SavingAnAppWithAnEmptyPathLeavesBothTextsAbsent) {
    open();
    form->setTitle("Empty");
    form->commitSave();
    EXPECT_EQ(saved.at(0).path, std::nullopt);
    EXPECT_EQ(saved.at(0).command, std::nullopt);
}

TEST_F(AddEditItemViewTest, ARecordIsBuiltByTheSelectedType) {
    const struct {
        ItemType type;
        std::optional<std::string> path;
        std::optional<std::string> command;
    } table[] = {
        {ItemType::app, "/p", std::nullopt},
        {ItemType::commandFile, "/p", std::nullopt},
        {ItemType::inlineCommand, std::nullopt, "c"},
    };
    for (const auto& row : table) {
        saved.clear();
        dismissals = 0;
        open();
        form->setTitle("Item");
        form->setPath("/p");
        form->setCommand("c");
        form->setType(row.type);
        form->commitSave();
        ASSERT_EQ(saved.size(), 1U);
        EXPECT_EQ(saved[0].type, row.type);
        EXPECT_EQ(saved[0].path, row.path) << rawValue(row.type);
        EXPECT_EQ(saved[0].command, row.command) << rawValue(row.type);
    }
}

TEST_F(AddEditItemViewTest, AnEmptyCommandIsAbsentInTheRecord) {
    open();
    form->setTitle("Item");
    form->setType(ItemType::inlineCommand);
    form->commitSave();
    EXPECT_EQ(saved.at(0).command, std::nullopt);
}

TEST_F(AddEditItemViewTest, AddingGivesAFreshIdAndEditingKeepsIt) {
    const LauncherItem item = command();
    open(item);
    form->commitSave();
    EXPECT_EQ(saved.at(0), item);
    dismissals = 0;
    open();
    form->setTitle("New");
    form->commitSave();
    EXPECT_NE(saved.at(1).id, item.id);
    EXPECT_NE(saved.at(1).id, Uuid());
}

TEST_F(AddEditItemViewTest, EditingACommandIntoAnAppPicksTheBundleAndDropsTheCommand) {
    const LauncherItem item = command();
    open(item);
    form->setType(ItemType::app);
    panel.result = "/Applications/Safari.app";
    form->browseForApp();
    form->commitSave();
    ASSERT_EQ(saved.size(), 1U);
    EXPECT_EQ(saved[0].id, item.id);
    EXPECT_EQ(saved[0].type, ItemType::app);
    EXPECT_EQ(saved[0].path, "/Applications/Safari.app");
    EXPECT_EQ(saved[0].command, std::nullopt);
    EXPECT_EQ(saved[0].title, "Build");
}

TEST_F(AddEditItemViewTest, PickingFillsAnEmptyTitleOnceAndAfterwardsOnlyThePath) {
    open();
    panel.result = "/Applications/Safari.app";
    form->browseForApp();
    EXPECT_EQ(form->title(), "Safari");
    panel.result = "/Applications/Mail.app";
    form->browseForApp();
    EXPECT_EQ(form->title(), "Safari");
    EXPECT_EQ(form->path(), "/Applications/Mail.app");
    EXPECT_EQ(form->type(), ItemType::app);
    EXPECT_EQ(form->command(), "");
}

TEST_F(AddEditItemViewTest, ANameThatComesWithTheFileIsTheTitleOnlyWhileThatIsExactlyEmpty) {
    open();
    panel.result = "/usr/share/applications/org.gnome.TextEditor.desktop";
    panel.name = "Text Editor";
    form->browseForApp();
    EXPECT_EQ(form->title(), "Text Editor");
    EXPECT_EQ(form->path(), "/usr/share/applications/org.gnome.TextEditor.desktop");
    panel.result = "/usr/share/applications/org.gnome.Maps.desktop";
    panel.name = "Maps";
    form->browseForApp();
    EXPECT_EQ(form->title(), "Text Editor");
    EXPECT_EQ(form->path(), "/usr/share/applications/org.gnome.Maps.desktop");
    form->setTitle(" ");
    form->browseForApp();
    EXPECT_EQ(form->title(), " ");
}

TEST_F(AddEditItemViewTest, ATitleOfSpacesIsLeftAloneByPickingAndStillCannotBeSaved) {
    open();
    form->setTitle("  ");
    panel.result = "/home/user/Desktop/deploy.command";
    form->browseForCommandFile();
    EXPECT_EQ(form->title(), "  ");
    EXPECT_EQ(form->path(), "/home/user/Desktop/deploy.command");
    EXPECT_FALSE(form->canSave());
}

TEST_F(AddEditItemViewTest, TheTitleIsTheFilesNameWithoutItsExtension) {
    const std::pair<const char*, const char*> table[] = {
        {"/home/user/Desktop/deploy.command", "deploy"},
        {"/opt/archive.tar.gz", "archive.tar"},
        {"/opt/plain", "plain"},
        {"/opt/.profile", ".profile"},
        {"/opt/dot.", "dot."},
        {"/opt.d/tool", "tool"},
        {"/opt/Editor.app/", "Editor"},
        {"/opt/\u00DCber.sh", "\u00DCber"},
    };
    for (const auto& [path, title] : table) {
        open();
        panel.result = path;
        form->browseForCommandFile();
        EXPECT_EQ(form->title(), title) << path;
        EXPECT_EQ(form->path(), path);
    }
}

TEST_F(AddEditItemViewTest, CancellingTheOpenPanelChangesNothing) {
    open();
    form->setPath("/old");
    int signals = 0;
    const auto token = form->objectWillChange.subscribe([&] { ++signals; });
    panel.result = std::nullopt;
    form->browseForApp();
    form->browseForCommandFile();
    EXPECT_EQ(form->path(), "/old");
    EXPECT_EQ(form->title(), "");
    EXPECT_EQ(signals, 0);
}

TEST_F(AddEditItemViewTest, TheOpenPanelsHaveTheirOptions) {
    open();
    form->browseForApp();
    form->browseForCommandFile();
    ASSERT_EQ(panel.shown.size(), 2U);
    EXPECT_EQ(panel.shown[0].content, OpenPanelOptions::Content::applications);
    EXPECT_EQ(panel.shown[0].startFolder, OpenPanelOptions::StartFolder::applications);
    EXPECT_EQ(panel.shown[1].content, OpenPanelOptions::Content::anyFile);
    EXPECT_EQ(panel.shown[1].startFolder, OpenPanelOptions::StartFolder::desktop);
    for (const OpenPanelOptions& options : panel.shown) {
        EXPECT_TRUE(options.canChooseFiles);
        EXPECT_FALSE(options.canChooseDirectories);
        EXPECT_FALSE(options.allowsMultipleSelection);
        EXPECT_TRUE(options.resolvesAliases);
    }
}

TEST_F(AddEditItemViewTest, BrowsingLooksForWhatTheSelectedTypeOpens) {
    open();
    form->browse();
    form->setType(ItemType::commandFile);
    form->browse();
    ASSERT_EQ(panel.shown.size(), 2U);
    EXPECT_EQ(panel.shown[0].content, OpenPanelOptions::Content::applications);
    EXPECT_EQ(panel.shown[1].content, OpenPanelOptions::Content::anyFile);
}

TEST_F(AddEditItemViewTest, AFormThatIsTakenAwayWhileThePanelShowsIsNotTouched) {
    open();
    panel.result = "/opt/tool";
    panel.whileShown = [this] { form.reset(); };
    form->browseForApp();
    EXPECT_EQ(form, nullptr);
}

TEST_F(AddEditItemViewTest, CancelNeverCallsOnSave) {
    open(command());
    form->setTitle("Changed");
    form->cancel();
    EXPECT_THAT(saved, IsEmpty());
    EXPECT_EQ(dismissals, 1);
}

TEST_F(AddEditItemViewTest, SwitchingTypesKeepsTheTexts) {
    open();
    form->setPath("/p");
    form->setType(ItemType::inlineCommand);
    form->setCommand("c");
    form->setType(ItemType::app);
    EXPECT_EQ(form->path(), "/p");
    form->setType(ItemType::inlineCommand);
    EXPECT_EQ(form->command(), "c");
}

TEST_F(AddEditItemViewTest, SwitchingFromAppToCommandFileShowsTheSamePathUnderFile) {
    open();
    form->setPath("/p");
    form->setType(ItemType::commandFile);
    EXPECT_EQ(form->path(), "/p");
    EXPECT_EQ(add_edit_item_style::rowOf(form->type()).label.english, "File");
}

TEST_F(AddEditItemViewTest, PathAndCommandAreStoredWithTheirSpaces) {
    open();
    form->setTitle("Item");
    form->setPath("/p ");
    form->commitSave();
    EXPECT_EQ(saved.at(0).path, "/p ");
    dismissals = 0;
    open();
    form->setTitle("Item");
    form->setPath(" ");
    form->commitSave();
    EXPECT_EQ(saved.at(1).path, " ");
}

TEST_F(AddEditItemViewTest, ACommitWithNothingChangedIsHandedOverAllTheSame) {
    open(command());
    form->commitSave();
    EXPECT_EQ(saved.size(), 1U);
    EXPECT_EQ(dismissals, 1);
}

TEST_F(AddEditItemViewTest, TheFormMayBeDestroyedByItsOwnDismissal) {
    open(command());
    form->dismiss = [this] { form.reset(); };
    form->commitSave();
    EXPECT_EQ(saved.size(), 1U);
    EXPECT_EQ(form, nullptr);
}

// The layout's numbers and texts.

namespace aes = add_edit_item_style;

TEST(AddEditItemStyleTest, HasItsNumbers) {
    EXPECT_EQ(aes::width, 460);
    EXPECT_EQ(aes::padding, style::allSides(24));
    EXPECT_EQ(aes::width - aes::padding.left - aes::padding.right, 412);
    EXPECT_EQ(aes::header.font, style::headline);
    EXPECT_EQ(aes::spaceBelowHeader, 20);
    EXPECT_EQ(aes::spaceBelowRow, 14);
    EXPECT_EQ(aes::browseSpacing, 8);
    EXPECT_EQ(aes::spaceAboveDivider, 6);
    EXPECT_EQ(aes::spaceBelowDivider, 14);
    EXPECT_EQ(aes::commandRow.font.design, style::Font::Design::monospaced);
    EXPECT_EQ(aes::commandRow.font.size, style::body.size);
}

TEST(AddEditItemStyleTest, HasItsTexts) {
    EXPECT_EQ(aes::titleLabel.english, "Title");
    EXPECT_EQ(aes::titlePlaceholder.english, "e.g. Xcode, Deploy Script");
    EXPECT_EQ(aes::typeLabel.english, "Type");
    EXPECT_EQ(aes::appRow.placeholder.english, "/Applications/MyApp.app");
    EXPECT_EQ(aes::fileRow.placeholder.english, "~/Desktop/script.command");
    EXPECT_EQ(aes::commandRow.label.english, "Command");
    EXPECT_EQ(aes::commandRow.placeholder.english, "e.g. open -a Safari");
    EXPECT_EQ(aes::browse.english, "Browse\u2026");
    EXPECT_EQ(aes::cancel.english, "Cancel");
}

} // namespace
} // namespace kestrel::tests
