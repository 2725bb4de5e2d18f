#include "views/popover/menu_popover_view.h"

#include "tests/fakes/store_fixture.h"
#include "views/popover/menu_popover_style.h"

#include <gmock/gmock.h>

namespace kestrel::tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Step = MenuPopoverView::Step;

class MenuPopoverViewTest : public ThreeItemsFixture {
  protected:
    std::unique_ptr<MenuPopoverView> view = makeView({
        .onOpenSettings = [this] { log.add("onOpenSettings"); },
        .onQuit = [this] { log.add("onQuit"); },
        .onClose = [this] { log.add("onClose"); },
    });

    std::unique_ptr<MenuPopoverView> makeView(MenuPopoverView::Callbacks callbacks) {
        return std::make_unique<MenuPopoverView>(manager, mainQueue, clock, std::move(callbacks));
    }
};

TEST_F(MenuPopoverViewTest, ATapLaunchesAtOnceAndClosesOneTurnLater) {
    view->row(1).onTap();
    EXPECT_THAT(log.calls, ElementsAre("terminal.runInNewWindow ls"));
    mainQueue.runTurn();
    EXPECT_THAT(log.calls, ElementsAre("terminal.runInNewWindow ls", "onClose"));
}

TEST_F(MenuPopoverViewTest, ALaunchThatDoesNothingStillClosesThePopover) {
    manager.items.assign({appItem("Empty", "")});
    view->row(0).onTap();
    mainQueue.runAll();
    EXPECT_THAT(log.calls, ElementsAre("onClose"));
}

TEST_F(MenuPopoverViewTest, ATapLaunchesTheItemThatWasShownEvenWhenTheListHasChanged) {
    const ItemRowView row = view->row(0);
    manager.items.assign({});
    row.onTap();
    EXPECT_THAT(log.calls, ElementsAre("workspace.openApplication /apps/one"));
}

TEST_F(MenuPopoverViewTest, TheFooterButtonsCallTheirCallbacks) {
    view->settingsClicked();
    view->quitClicked();
    EXPECT_THAT(log.calls, ElementsAre("onOpenSettings", "onQuit"));
}

TEST_F(MenuPopoverViewTest, EscapeClosesAtOnceAndLaunchesNothing) {
    view->pointerEntered(0);
    view->cancelled();
    EXPECT_THAT(log.calls, ElementsAre("onClose"));
}

TEST_F(MenuPopoverViewTest, AbsentCallbacksAreNotCalled) {
    view = makeView({});
    view->settingsClicked();
    view->quitClicked();
    view->cancelled();
    manager.items.assign({appItem("Empty", "")});
    view->row(0).onTap();
    mainQueue.runAll();
    EXPECT_THAT(log.calls, IsEmpty());
}

TEST_F(MenuPopoverViewTest, ATapAndAQueuedCloseThatOutliveTheViewDoNothing) {
    const ItemRowView row = view->row(0);
    row.onTap();
    log.calls.clear();
    view.reset();
    mainQueue.runAll();
    row.onTap();
    EXPECT_THAT(log.calls, IsEmpty());
}

TEST_F(MenuPopoverViewTest, HoveringHighlightsTheRowAndMovingOffRemovesIt) {
    view->pointerEntered(1);
    EXPECT_FALSE(view->row(0).isHovered);
    EXPECT_TRUE(view->row(1).isHovered);
    view->pointerLeft(1);
    EXPECT_FALSE(view->row(1).isHovered);
}

TEST_F(MenuPopoverViewTest, LeavingARowAfterEnteringTheNextKeepsTheNextHighlighted) {
    view->pointerEntered(0);
    view->pointerEntered(1);
    view->pointerLeft(0);
    EXPECT_TRUE(view->row(1).isHovered);
}

TEST_F(MenuPopoverViewTest, AChangeOfTheListSignalsAndDropsTheHighlight) {
    int signals = 0;
    const auto token = view->objectWillChange.subscribe([&] { ++signals; });
    view->pointerEntered(2);
    EXPECT_EQ(signals, 1);
    manager.items.remove({0});
    EXPECT_EQ(signals, 2);
    EXPECT_EQ(view->hoveredRow(), std::nullopt);
}

TEST_F(MenuPopoverViewTest, AdditionsAndDeletionsShowAtOnce) {
    manager.items.append(appItem("Fourth"));
    EXPECT_EQ(view->items().size(), 4U);
    EXPECT_EQ(view->row(3).item.title, "Fourth");
    manager.items.remove({0});
    EXPECT_EQ(view->row(0).item.title, "Second");
}

TEST_F(MenuPopoverViewTest, TheKeysMoveTheHighlightAndStopAtTheEnds) {
    const struct {
        std::optional<std::size_t> from;
        Step step;
        std::size_t to;
    } table[] = {
        {std::nullopt, Step::next, 0},
        {std::nullopt, Step::previous, 2},
        {std::nullopt, Step::first, 0},
        {std::nullopt, Step::last, 2},
        {0, Step::next, 1},
        {2, Step::next, 2},
        {2, Step::previous, 1},
        {0, Step::previous, 0},
        {1, Step::first, 0},
        {1, Step::last, 2},
        {0, Step::pageDown, 2},
        {2, Step::pageUp, 0},
        {std::nullopt, Step::pageUp, 2},
        {std::nullopt, Step::pageDown, 0},
    };
    for (const auto& row : table) {
        view->resetHighlight();
        if (row.from)
            view->pointerEntered(*row.from);
        view->moveHighlight(row.step);
        EXPECT_EQ(view->hoveredRow(), row.to) << "step " << static_cast<int>(row.step);
    }
}

TEST_F(MenuPopoverViewTest, ThePageKeysMoveByTheNineRowsThatAreSeen) {
    std::vector<LauncherItem> many(30, first);
    manager.items.assign(many);
    view->moveHighlight(Step::first);
    view->moveHighlight(Step::pageDown);
    EXPECT_EQ(view->hoveredRow(), 9U);
    view->moveHighlight(Step::pageUp);
    EXPECT_EQ(view->hoveredRow(), 0U);
}

TEST_F(MenuPopoverViewTest, TheKeysDoNothingInAnEmptyList) {
    manager.items.assign({});
    for (const Step step : {Step::next, Step::previous, Step::first, Step::last})
        view->moveHighlight(step);
    view->activateHighlighted();
    view->typed("a");
    EXPECT_EQ(view->hoveredRow(), std::nullopt);
    EXPECT_THAT(log.calls, IsEmpty());
}

TEST_F(MenuPopoverViewTest, ReturnLaunchesTheHighlightedRowOnly) {
    view->activateHighlighted();
    EXPECT_THAT(log.calls, IsEmpty());
    view->typed("t");
    view->activateHighlighted();
    mainQueue.runAll();
    EXPECT_THAT(log.calls, ElementsAre("workspace.openApplication /apps/three", "onClose"));
}

TEST_F(MenuPopoverViewTest, SpaceLaunchesTheHighlightedRowAsReturnDoes) {
    view->typed(" ");
    EXPECT_THAT(log.calls, IsEmpty());
    view->moveHighlight(Step::last);
    view->typed(" ");
    mainQueue.runAll();
    EXPECT_THAT(log.calls, ElementsAre("workspace.openApplication /apps/three", "onClose"));
}

TEST_F(MenuPopoverViewTest, SpaceAfterLettersBelongsToTheNameUntilTheyAreOver) {
    LauncherItem editor = first;
    editor.title = "Text editor";
    LauncherItem text = first;
    text.title = "Textile";
    manager.items.assign({text, editor});
    const auto typeText = [this] {
        for (const char* const letter : {"t", "e", "x", "t"})
            view->typed(letter);
        EXPECT_EQ(view->hoveredRow(), 0U);
    };
    typeText();
    view->typed(" ");
    EXPECT_EQ(view->hoveredRow(), 1U);
    view->typed(" ");
    EXPECT_THAT(log.calls, IsEmpty()) << "a name that no row has launches none";

    clock.time += TypeSelect::pause + std::chrono::milliseconds(1);
    view->typed(" ");
    EXPECT_THAT(log.calls, ElementsAre("workspace.openApplication /apps/one"));

    log.calls.clear();
    view->resetHighlight();
    typeText();
    view->moveHighlight(Step::next);
    view->typed(" ");
    EXPECT_THAT(log.calls, ElementsAre("workspace.openApplication /apps/one"));
}

TEST_F(MenuPopoverViewTest, TheHighlightYieldsWhileTheFooterHasTheFocusAndComesBack) {
    view->moveHighlight(Step::last);
    int signals = 0;
    const auto token = view->objectWillChange.subscribe([&] { ++signals; });
    view->setFooterHasFocus(true);
    view->setFooterHasFocus(true);
    EXPECT_EQ(signals, 1);
    EXPECT_EQ(view->hoveredRow(), std::nullopt);
    EXPECT_FALSE(view->row(2).isHovered);
    view->activateHighlighted();
    EXPECT_THAT(log.calls, IsEmpty());
    view->setFooterHasFocus(false);
    EXPECT_EQ(signals, 2);
    EXPECT_EQ(view->hoveredRow(), 2U);
}

TEST_F(MenuPopoverViewTest, LettersBeginAnewWhenThePopoverOpensAgain) {
    LauncherItem alpha = first;
    alpha.title = "Alpha";
    LauncherItem bravo = first;
    bravo.title = "Bravo";
    manager.items.assign({alpha, bravo});
    view->typed("a");
    EXPECT_EQ(view->hoveredRow(), 0U);
    view->resetHighlight();
    view->typed("b");
    EXPECT_EQ(view->hoveredRow(), 1U) << "within the time in which letters make one prefix";
}

// The layout's numbers.

namespace mps = menu_popover_style;

TEST(MenuPopoverStyleTest, With9ItemsTheListIs318HighAndFitsWith10ItIsCappedAt320) {
    EXPECT_EQ(mps::listHeight(9), 318);
    EXPECT_EQ(9 * mps::rowHeight + 12, mps::listHeight(9));
    EXPECT_EQ(mps::listHeight(10), 320);
    EXPECT_LT(mps::listHeight(10), 10 * mps::rowHeight + 12);
}

TEST(MenuPopoverStyleTest, TheEmptyStateIs140HighWithItsThreeLines) {
    EXPECT_EQ(mps::empty_state::height, 140);
    EXPECT_EQ(mps::empty_state::spacing, 8);
    EXPECT_EQ(mps::empty_state::symbol.name, "square.grid.2x2");
    EXPECT_EQ(mps::empty_state::symbol.font.size, 26);
    EXPECT_EQ(mps::empty_state::title.english, "No items yet");
    EXPECT_EQ(mps::empty_state::titleStyle.font, (style::Font{12, FontWeight::medium}));
    EXPECT_EQ(mps::empty_state::hint.english, "Open Settings to add items.");
    EXPECT_EQ(mps::empty_state::hintStyle.font, style::caption);
}

TEST(MenuPopoverStyleTest, TheProgramsOwnTextsAreTranslated) {
    for (const style::Text& text : {mps::empty_state::title, mps::empty_state::hint,
                                    mps::footer::settings.title, mps::footer::quit.title})
        EXPECT_EQ(text.lookup, style::Text::Lookup::localizable) << text.english;
}

TEST(MenuPopoverStyleTest, ATitleIsCutToOneLine) { EXPECT_EQ(mps::row::titleLineLimit, 1); }

TEST(MenuPopoverStyleTest, TheHighlightIsInset4OnBothSidesWithRadius5At8Percent) {
    EXPECT_EQ(mps::row::highlightInsets, (style::Insets{0, 4, 0, 4}));
    EXPECT_EQ(mps::row::highlightRadius, 5);
    EXPECT_EQ(mps::row::highlightOpacity, 0.08);
}

TEST(MenuPopoverStyleTest, TheFooterHasItsNumbersAndTexts) {
    EXPECT_EQ(mps::footer::height, 40);
    EXPECT_EQ(mps::footer::padding, (style::Insets{0, 14, 0, 14}));
    EXPECT_EQ(mps::footer::buttonSpacing, 5);
    EXPECT_EQ(mps::footer::settings.symbol.name, "gearshape");
    EXPECT_EQ(mps::footer::settings.symbol.font.size, 12);
    EXPECT_EQ(mps::footer::settings.title.english, "Settings");
    EXPECT_EQ(mps::footer::settings.titleStyle.font.size, 13);
    EXPECT_EQ(mps::footer::quit.symbol.name, "power");
    EXPECT_EQ(mps::footer::quit.symbol.font.size, 11);
    EXPECT_EQ(mps::footer::quit.title.english, "Quit");
    EXPECT_EQ(mps::footer::quit.titleStyle.color, style::ColorLevel::secondary);
}

} // namespace
} // namespace kestrel::tests
