#include "views/settings/settings_view.h"

#include "tests/fakes/store_fixture.h"
#include "views/settings/settings_style.h"

#include <gmock/gmock.h>

namespace kestrel::tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Direction = SettingsView::Direction;
using Step = SettingsView::Step;

class SettingsViewTest : public ThreeItemsFixture {
  protected:
    FakeOpenPanel openPanel;
    std::unique_ptr<SettingsView> view = std::make_unique<SettingsView>(manager, clock, openPanel);

    std::optional<std::string> committedTitle() {
        const LauncherItem* const item = view->committedItem();
        return item ? std::optional(item->title) : std::nullopt;
    }
    bool editAndDeleteAreEnabled() {
        const auto buttons = view->toolbarButtons();
        EXPECT_EQ(buttons[1].enabled, buttons[2].enabled);
        return buttons[1].enabled;
    }
    std::vector<bool> rowsWithActions() {
        std::vector<bool> result;
        for (std::size_t i = 0; i < view->items().size(); ++i)
            result.push_back(view->row(i).actionsOpacity() == 1);
        return result;
    }
};

TEST_F(SettingsViewTest, StartsWithNothingSelectedNothingCommittedAndNoSheet) {
    EXPECT_EQ(view->selectedID(), std::nullopt);
    EXPECT_EQ(view->committedID(), std::nullopt);
    EXPECT_FALSE(view->showAddSheet());
    EXPECT_EQ(view->itemToEdit(), std::nullopt);
    EXPECT_EQ(view->committedItem(), nullptr);
}

TEST_F(SettingsViewTest, TheToolbarHasItsLabelsSymbolsAndOrder) {
    const auto buttons = view->toolbarButtons();
    EXPECT_EQ(buttons[0].label, "Add");
    EXPECT_EQ(buttons[0].icon, "plus");
    EXPECT_EQ(buttons[1].label, "Edit");
    EXPECT_EQ(buttons[1].icon, "pencil");
    EXPECT_EQ(buttons[2].label, "Delete");
    EXPECT_EQ(buttons[2].icon, "trash");
}

TEST_F(SettingsViewTest, WithAnEmptyListAddIsEnabledAndEditAndDeleteAreNot) {
    manager.items.assign({});
    const auto buttons = view->toolbarButtons();
    EXPECT_TRUE(buttons[0].enabled);
    EXPECT_FALSE(buttons[1].enabled);
    EXPECT_FALSE(buttons[2].enabled);
    EXPECT_EQ(settings_style::toolbar::disabledColor, style::ColorLevel::tertiaryLabel);
}

TEST_F(SettingsViewTest, ClearingTheSelectionKeepsTheCommittedItemAndItsActionsButton) {
    view->setSelectedID(second.id);
    view->setSelectedID(std::nullopt);
    EXPECT_EQ(view->selectedID(), std::nullopt);
    EXPECT_EQ(committedTitle(), "Second");
    EXPECT_TRUE(editAndDeleteAreEnabled());
    EXPECT_THAT(rowsWithActions(), ElementsAre(false, true, false));
    view->editCommitted();
    EXPECT_EQ(view->itemToEdit(), second);
}

TEST_F(SettingsViewTest, ClickingRowAThenRowBMakesBCommittedAndEditOpensB) {
    view->setSelectedID(first.id);
    EXPECT_EQ(committedTitle(), "First");
    view->setSelectedID(second.id);
    EXPECT_EQ(committedTitle(), "Second");
    view->toolbarButtons()[1].action();
    EXPECT_EQ(view->itemToEdit(), second);
}

TEST_F(SettingsViewTest, DeletingAnotherRowThroughItsMenuLeavesTheCommittedItem) {
    view->setSelectedID(second.id);
    view->row(0).onDelete();
    EXPECT_EQ(committedTitle(), "Second");
    EXPECT_EQ(view->selectedID(), second.id);
    EXPECT_TRUE(editAndDeleteAreEnabled());
    EXPECT_THAT(storedTitles(), ElementsAre("Second", "Third"));
}

TEST_F(SettingsViewTest, DeletingTheCommittedRowThroughItsMenuClearsBoth) {
    view->setSelectedID(second.id);
    view->row(1).onDelete();
    EXPECT_EQ(view->selectedID(), std::nullopt);
    EXPECT_EQ(view->committedID(), std::nullopt);
    EXPECT_FALSE(editAndDeleteAreEnabled());
}

TEST_F(SettingsViewTest, DeletingTheCommittedRowWhileAnotherIsNotSelectedClearsTheCommittedOnly) {
    view->setSelectedID(second.id);
    view->setSelectedID(std::nullopt);
    view->deleteItem(second);
    EXPECT_EQ(view->committedID(), std::nullopt);
}

TEST_F(SettingsViewTest, DeletingAnItemThatHasVanishedSavesAndClearsNothing) {
    view->setSelectedID(second.id);
    manager.items.remove({1});
    takeCalls();
    view->deleteItem(second);
    EXPECT_THAT(log.calls, IsEmpty());
    EXPECT_EQ(view->committedID(), second.id);
}

TEST_F(SettingsViewTest, DeletingThroughTheToolbarClearsSelectionAndCommittedItem) {
    view->setSelectedID(second.id);
    view->toolbarButtons()[2].action();
    EXPECT_THAT(storedTitles(), ElementsAre("First", "Third"));
    EXPECT_EQ(view->selectedID(), std::nullopt);
    EXPECT_EQ(view->committedID(), std::nullopt);
    EXPECT_FALSE(editAndDeleteAreEnabled());
}

TEST_F(SettingsViewTest, DeletingTheLastItemLeavesTheListEmptyForThePlaceholder) {
    manager.items.assign({first});
    view->setSelectedID(first.id);
    view->deleteCommitted();
    EXPECT_TRUE(view->items().empty());
    EXPECT_EQ(defaults.data["launcherItems"], "[]");
}

TEST_F(SettingsViewTest, TheToolbarsDeleteDoesNothingWithoutACommittedItem) {
    view->deleteCommitted();
    view->setSelectedID(second.id);
    manager.items.remove({1});
    view->deleteCommitted();
    EXPECT_THAT(titles(view->items()), ElementsAre("First", "Third"));
    EXPECT_THAT(defaults.data, IsEmpty());
    EXPECT_EQ(view->committedID(), second.id);
}

TEST_F(SettingsViewTest, TheListsDeleteCommandRemovesAllPositionsAndClearsBothWhicheverTheyWere) {
    view->setSelectedID(third.id);
    view->deleteRows({0, 1});
    EXPECT_THAT(storedTitles(), ElementsAre("Third"));
    EXPECT_EQ(view->selectedID(), std::nullopt);
    EXPECT_EQ(view->committedID(), std::nullopt);
}

TEST_F(SettingsViewTest, TheDeleteKeyDeletesTheSelectedRowOnly) {
    view->setSelectedID(second.id);
    view->setSelectedID(std::nullopt);
    view->deleteSelectedRow();
    EXPECT_EQ(view->items().size(), 3U);
    view->setSelectedID(second.id);
    view->deleteSelectedRow();
    EXPECT_THAT(storedTitles(), ElementsAre("First", "Third"));
}

TEST_F(SettingsViewTest, TheArrowsGoOnFromThePlaceOfTheDeletedRow) {
    struct Case {
        Uuid deleted;
        Step step;
        std::string_view leadsTo;
    };
    const Case table[] = {
        {second.id, Step::next, "Third"},     {second.id, Step::previous, "First"},
        {first.id, Step::next, "Second"},     {first.id, Step::previous, "Second"},
        {third.id, Step::next, "Second"},     {third.id, Step::previous, "Second"},
        {second.id, Step::pageDown, "Third"}, {second.id, Step::last, "Third"},
    };
    for (const Case& row : table) {
        manager.items.assign({first, second, third});
        view->setSelectedID(row.deleted);
        view->deleteSelectedRow();
        EXPECT_EQ(view->selectedID(), std::nullopt);
        EXPECT_EQ(view->committedID(), std::nullopt);
        view->moveSelection(row.step, 9);
        EXPECT_EQ(committedTitle(), row.leadsTo) << static_cast<int>(row.step);
    }
}

TEST_F(SettingsViewTest, EveryDeletionOfTheSelectedRowLeavesItsPlaceToTheArrows) {
    const std::function<void()> deletions[] = {
        [this] { view->deleteCommitted(); },
        [this] { view->row(1).onDelete(); },
        [this] { view->deleteRows({1}); },
    };
    for (const auto& deletion : deletions) {
        manager.items.assign({first, second, third});
        view->setSelectedID(second.id);
        deletion();
        view->moveSelection(Step::next, 9);
        EXPECT_EQ(view->selectedID(), third.id);
    }
    manager.items.assign({first, second, third});
    view->setSelectedID(third.id);
    view->deleteRows({0, 2});
    view->moveSelection(Step::previous, 9);
    EXPECT_EQ(view->selectedID(), second.id);
}

TEST_F(SettingsViewTest, ADeletionElsewhereLeavesTheArrowsWhereTheyAre) {
    view->setSelectedID(third.id);
    view->row(0).onDelete();
    view->moveSelection(Step::previous, 9);
    EXPECT_EQ(view->selectedID(), second.id);
}

TEST_F(SettingsViewTest, ThePlaceOfADeletedRowIsForgottenWithTheNextSelectionOrList) {
    view->setSelectedID(second.id);
    view->deleteSelectedRow();
    view->setSelectedID(third.id);
    view->setSelectedID(std::nullopt);
    view->moveSelection(Step::next, 9);
    EXPECT_EQ(view->selectedID(), first.id);

    manager.items.assign({first, second, third});
    view->setSelectedID(second.id);
    view->deleteSelectedRow();
    manager.items.assign({third, second, first});
    view->moveSelection(Step::next, 9);
    EXPECT_EQ(view->selectedID(), third.id);
}

TEST_F(SettingsViewTest, TheKeysSelectNothingInAnEmptyList) {
    view->setSelectedID(second.id);
    view->deleteRows({0, 1, 2});
    view->moveSelection(Step::next, 9);
    EXPECT_EQ(view->selectedID(), std::nullopt);
}

TEST_F(SettingsViewTest, MovingRowsSavesAtOnceAndKeepsTheSelection) {
    view->setSelectedID(first.id);
    view->moveRows({0}, 3);
    EXPECT_THAT(storedTitles(), ElementsAre("Second", "Third", "First"));
    EXPECT_EQ(view->selectedID(), first.id);
    EXPECT_EQ(committedTitle(), "First");
}

TEST_F(SettingsViewTest, AReorderSurvivesARestart) {
    view->moveRows({2}, 0);
    ItemsManager restarted(ports);
    mainQueue.runAll();
    EXPECT_THAT(titles(restarted.items), ElementsAre("Third", "First", "Second"));
}

TEST_F(SettingsViewTest, TheKeysMoveTheSelectedRowAndStopAtTheEnds) {
    view->moveSelectedRow(Direction::up);
    EXPECT_THAT(defaults.data, IsEmpty());
    view->setSelectedID(second.id);
    view->moveSelectedRow(Direction::up);
    EXPECT_THAT(storedTitles(), ElementsAre("Second", "First", "Third"));
    takeCalls();
    view->moveSelectedRow(Direction::up);
    EXPECT_THAT(log.calls, IsEmpty());
    view->moveSelectedRow(Direction::down);
    view->moveSelectedRow(Direction::down);
    EXPECT_THAT(storedTitles(), ElementsAre("First", "Third", "Second"));
    takeCalls();
    view->moveSelectedRow(Direction::down);
    EXPECT_THAT(log.calls, IsEmpty());
}

TEST_F(SettingsViewTest, AddingAppendsAtTheBottomSavesAndSelectsNothing) {
    view->toolbarButtons()[0].action();
    EXPECT_TRUE(view->showAddSheet());
    const auto sheet = view->nextSheet();
    EXPECT_FALSE(sheet->isEditing());
    sheet->setTitle("Fourth");
    sheet->commitSave();
    view->sheetClosed();
    EXPECT_THAT(storedTitles(), ElementsAre("First", "Second", "Third", "Fourth"));
    EXPECT_EQ(view->selectedID(), std::nullopt);
    EXPECT_EQ(view->committedID(), std::nullopt);
    EXPECT_FALSE(view->showAddSheet());
}

TEST_F(SettingsViewTest, AnAddedRowIsToBeShownOnce) {
    EXPECT_EQ(view->nextRowToShow(), std::nullopt);
    view->addClicked();
    const auto sheet = view->nextSheet();
    sheet->setTitle("Fourth");
    sheet->commitSave();
    EXPECT_EQ(view->nextRowToShow(), 3U);
    EXPECT_EQ(view->nextRowToShow(), std::nullopt);
}

TEST_F(SettingsViewTest, AnAddedRowThatHasGoneIsNotToBeShown) {
    view->addClicked();
    const auto sheet = view->nextSheet();
    sheet->setTitle("Fourth");
    sheet->commitSave();
    manager.items.assign({first});
    EXPECT_EQ(view->nextRowToShow(), std::nullopt);
}

TEST_F(SettingsViewTest, ARowThatComesFromElsewhereIsNotToBeShown) {
    manager.items.append(LauncherItem(first));
    EXPECT_EQ(view->nextRowToShow(), std::nullopt);
}

TEST_F(SettingsViewTest, ADoubleClickOpensTheEditSheetAndASingleClickOnlySelectsAndCommits) {
    view->setSelectedID(third.id);
    EXPECT_EQ(view->itemToEdit(), std::nullopt);
    EXPECT_EQ(committedTitle(), "Third");
    view->editItem(view->items()[2]);
    EXPECT_EQ(view->itemToEdit(), third);
    EXPECT_TRUE(view->nextSheet()->isEditing());
    view->sheetClosed();
    EXPECT_EQ(view->itemToEdit(), std::nullopt);
}

TEST_F(SettingsViewTest, SavingAnEditReplacesTheItemWithTheSameId) {
    view->row(1).onEdit();
    const auto sheet = view->nextSheet();
    sheet->setTitle("Renamed");
    sheet->commitSave();
    EXPECT_THAT(storedTitles(), ElementsAre("First", "Renamed", "Third"));
    EXPECT_EQ(view->items()[1].id, second.id);
}

TEST_F(SettingsViewTest, SavingAnEditOfAnItemThatHasDisappearedChangesNothing) {
    view->row(1).onEdit();
    const auto sheet = view->nextSheet();
    manager.items.assign({first});
    takeCalls();
    sheet->setTitle("Renamed");
    sheet->commitSave();
    EXPECT_THAT(titles(view->items()), ElementsAre("First"));
    EXPECT_THAT(log.calls, IsEmpty());
}

TEST_F(SettingsViewTest, NoSheetShowsUntilOneIsAskedFor) {
    EXPECT_EQ(view->nextSheet(), nullptr);
    view->sheetClosed();
    view->addClicked();
    EXPECT_NE(view->nextSheet(), nullptr);
}

TEST_F(SettingsViewTest, ASheetIsHandedOutOnceUntilItHasClosed) {
    view->addClicked();
    const auto sheet = view->nextSheet();
    ASSERT_NE(sheet, nullptr);
    EXPECT_FALSE(sheet->isEditing());
    view->addClicked();
    EXPECT_EQ(view->nextSheet(), nullptr);
    view->sheetClosed();
    EXPECT_FALSE(view->showAddSheet());
    EXPECT_EQ(view->nextSheet(), nullptr);
}

TEST_F(SettingsViewTest, TheSecondSheetWaitsUntilTheFirstHasClosed) {
    view->editItem(second);
    const auto edits = view->nextSheet();
    ASSERT_NE(edits, nullptr);
    EXPECT_EQ(edits->title(), "Second");
    view->addClicked();
    EXPECT_EQ(view->nextSheet(), nullptr);
    view->sheetClosed();
    EXPECT_EQ(view->itemToEdit(), std::nullopt);
    EXPECT_TRUE(view->showAddSheet());
    const auto adds = view->nextSheet();
    ASSERT_NE(adds, nullptr);
    EXPECT_FALSE(adds->isEditing());
    view->sheetClosed();
    EXPECT_FALSE(view->showAddSheet());
}

TEST_F(SettingsViewTest, OfTwoSheetsAskedForAtOnceTheAddSheetComesFirst) {
    view->editItem(second);
    view->addClicked();
    const auto adds = view->nextSheet();
    ASSERT_NE(adds, nullptr);
    EXPECT_FALSE(adds->isEditing());
    view->sheetClosed();
    const auto edits = view->nextSheet();
    ASSERT_NE(edits, nullptr);
    EXPECT_EQ(edits->title(), "Second");
}

TEST_F(SettingsViewTest, AClosedSheetSignalsSoThatTheNextCanShow) {
    view->addClicked();
    const auto sheet = view->nextSheet();
    int signals = 0;
    const auto token = view->objectWillChange.subscribe([&] { ++signals; });
    view->sheetClosed();
    EXPECT_EQ(signals, 1);
}

TEST_F(SettingsViewTest, TheEditSheetHoldsACopyTakenWhenEditingWasAskedFor) {
    view->row(0).onEdit();
    LauncherItem changed = first;
    changed.title = "Changed";
    manager.update(changed);
    EXPECT_EQ(view->itemToEdit()->title, "First");
}

TEST_F(SettingsViewTest, ACommittedItemThatVanishedDisablesEditAndDeleteUntilItComesBack) {
    view->setSelectedID(second.id);
    manager.items.assign({first});
    EXPECT_FALSE(editAndDeleteAreEnabled());
    view->editCommitted();
    EXPECT_EQ(view->itemToEdit(), std::nullopt);
    manager.items.assign({first, second});
    EXPECT_TRUE(editAndDeleteAreEnabled());
}

TEST_F(SettingsViewTest, EveryChangeOfStateAndOfTheListSignalsBeforeIt) {
    std::vector<std::optional<Uuid>> seen;
    const auto token =
        view->objectWillChange.subscribe([&] { seen.push_back(view->selectedID()); });
    view->setSelectedID(first.id);
    EXPECT_EQ(seen.front(), std::nullopt);
    seen.clear();
    manager.items.append(appItem("Fourth"));
    EXPECT_EQ(seen.size(), 1U);
    view->addClicked();
    EXPECT_EQ(seen.size(), 2U);
    view->setSelectedID(first.id);
    EXPECT_EQ(seen.size(), 2U);
}

TEST_F(SettingsViewTest, TypingSelectsTheRowItNamesAndReturnEditsIt) {
    view->editSelectedRow();
    EXPECT_EQ(view->itemToEdit(), std::nullopt);
    view->typed("s");
    EXPECT_EQ(view->selectedID(), second.id);
    view->editSelectedRow();
    EXPECT_EQ(view->itemToEdit(), second);
}

TEST_F(SettingsViewTest, ActionsThatOutliveTheViewDoNothing) {
    const ItemRow row = view->row(0);
    const auto buttons = view->toolbarButtons();
    view->addClicked();
    const auto sheet = view->nextSheet();
    view.reset();
    takeCalls();
    row.onEdit();
    row.onDelete();
    for (const ToolbarButton& button : buttons)
        button.action();
    sheet->setTitle("Late");
    sheet->commitSave();
    EXPECT_EQ(manager.items.size(), 3U);
    EXPECT_THAT(log.calls, IsEmpty());
}

TEST_F(SettingsViewTest, TheStoreMayDieBeforeTheView) {
    auto other = std::make_unique<ItemsManager>(ports);
    const auto orphan = std::make_unique<SettingsView>(*other, clock, openPanel);
    other.reset();
    EXPECT_EQ(orphan->selectedID(), std::nullopt);
}

// The layout's numbers and texts.

namespace ss = settings_style;

TEST(SettingsStyleTest, TheToolbarHasItsNumbers) {
    EXPECT_EQ(ss::minimumSize, (Size{480, 360}));
    EXPECT_EQ(ss::toolbar::padding, (style::Insets{4, 6, 4, 6}));
    EXPECT_EQ(ss::toolbar::buttonSize, (Size{52, 42}));
    EXPECT_EQ(ss::toolbar::buttonSpacing, 3);
    EXPECT_EQ(ss::toolbar::symbolFont.size, 14);
    EXPECT_EQ(ss::toolbar::labelFont.size, 10);
}

TEST(SettingsStyleTest, ThePlaceholderHasItsNumbersAndLocalizableTexts) {
    namespace placeholder = ss::empty_placeholder;
    EXPECT_EQ(placeholder::spacing, 12);
    EXPECT_EQ(placeholder::symbol.name, "square.grid.2x2");
    EXPECT_EQ(placeholder::symbol.font.size, 36);
    EXPECT_EQ(placeholder::title.english, "No items yet");
    EXPECT_EQ(placeholder::titleStyle.font, (style::Font{15, FontWeight::medium}));
    EXPECT_EQ(placeholder::hint.english,
              "Add apps, command files, or shell commands to your launcher.");
    EXPECT_EQ(placeholder::hintMaximumWidth, 320);
    EXPECT_EQ(placeholder::button.english, "Add First Item");
    EXPECT_EQ(placeholder::buttonTopPadding, 4);
    for (const auto& text : {placeholder::title, placeholder::hint, placeholder::button})
        EXPECT_EQ(text.lookup, style::Text::Lookup::localizable) << text.english;
}

} // namespace
} // namespace kestrel::tests
