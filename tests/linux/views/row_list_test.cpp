#include "shells/linux/views/kit/row_list.h"

#include "tests/linux/views/events.h"

#include <QAccessible>
#include <QApplication>
#include <QScrollBar>

#include <gmock/gmock.h>

#include <utility>

namespace kestrel::linux_shell {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Row : public ListRow {
  public:
    using ListRow::ListRow;
    int boundTo = -1;
};

struct Rows : RowSource {
    int rows = 0;
    std::optional<int> height = 34;
    int made = 0;
    int bound = 0;
    int heightsAsked = 0;
    int titlesAsked = 0;

    int count() const override { return rows; }
    std::optional<int> uniformHeight() const override { return height; }
    int heightOf(int row, int /*width*/) const override {
        ++const_cast<Rows*>(this)->heightsAsked;
        return 30 + row % 3 * 10;
    }
    QString titleOf(int row) const override {
        ++const_cast<Rows*>(this)->titlesAsked;
        return QStringLiteral("Row %1").arg(row);
    }
    ListRow* makeRow(QWidget* parent) override {
        ++made;
        return new Row(parent);
    }
    void bindRow(ListRow& row, int index) override {
        ++bound;
        static_cast<Row&>(row).boundTo = index;
    }
};

class RowListTest : public testing::Test {
  protected:
    RowList& makeList(int rows, RowList::Kind kind, QSize size = QSize(240, 320)) {
        source.rows = rows;
        list = std::make_unique<RowList>(
            source, RowList::Options{.kind = kind, .padding = QMargins(0, 6, 0, 6)});
        QObject::connect(list.get(), &RowList::activated,
                         [this](int row) { log << "activated" << row; });
        QObject::connect(list.get(), &RowList::rowPicked,
                         [this](int row) { log << "picked" << row; });
        QObject::connect(list.get(), &RowList::pointerEntered,
                         [this](int row) { log << "entered" << row; });
        QObject::connect(list.get(), &RowList::pointerLeft,
                         [this](int row) { log << "left" << row; });
        QObject::connect(list.get(), &RowList::stepRequested,
                         [this](RowList::Step step) { log << "step" << static_cast<int>(step); });
        QObject::connect(list.get(), &RowList::typed,
                         [this](const QString& text) { log << "typed" << text; });
        QObject::connect(list.get(), &RowList::moveRequested,
                         [this](int row, int to) { log << "move" << row << to; });
        QObject::connect(list.get(), &RowList::moveCurrentRequested, [this](RowList::Direction d) {
            log << "moveCurrent" << static_cast<int>(d);
        });
        QObject::connect(list.get(), &RowList::deleteCurrentRequested, [this] { log << "delete"; });
        list->resize(size);
        list->move(300, 300); // away from where the pointer rests
        list->show();
        list->activateWindow();
        list->setFocus();
        QApplication::processEvents();
        return *list;
    }

    /// What a screen reader can ask of a row.
    QStringList actionsOf(int row) const {
        QAccessibleActionInterface* const actions = actionInterfaceOf(row);
        return actions == nullptr ? QStringList() : actions->actionNames();
    }
    void doAction(int row, const QString& action) const {
        QAccessibleActionInterface* const actions = actionInterfaceOf(row);
        ASSERT_NE(actions, nullptr) << row;
        actions->doAction(action);
    }
    QAccessibleActionInterface* actionInterfaceOf(int row) const {
        QAccessibleInterface* const interface = QAccessible::queryAccessibleInterface(list.get());
        QAccessibleInterface* const child = interface == nullptr ? nullptr : interface->child(row);
        return child == nullptr ? nullptr : child->actionInterface();
    }

    /// The middle of a row that is in sight, in the viewport.
    QPoint middleOf(int row) const { return list->rowRect(row).center(); }

    Rows source;
    std::unique_ptr<RowList> list;
    EventLog log;
};

TEST_F(RowListTest, RealisesTheRowsInSightOnly) {
    makeList(100'000, RowList::Kind::menu);
    EXPECT_EQ(list->realisedCount(), 10);
    EXPECT_EQ(source.made, 10);
    EXPECT_EQ(source.bound, 10);
    EXPECT_EQ(source.heightsAsked, 0);
    EXPECT_EQ(source.titlesAsked, 0);
}

TEST_F(RowListTest, OpeningAsksNoMoreOfAHundredThousandRowsThanOfTwenty) {
    makeList(20, RowList::Kind::menu);
    const std::pair few{source.made, source.bound};
    source = Rows{};
    makeList(100'000, RowList::Kind::menu);
    EXPECT_EQ(std::pair(source.made, source.bound), few);
}

TEST_F(RowListTest, ScrollingBindsTheSameWidgetsAgain) {
    makeList(100'000, RowList::Kind::menu);
    list->verticalScrollBar()->setValue(34 * 50'000);
    EXPECT_LE(source.made, 11);
    ASSERT_NE(list->realisedRow(50'000), nullptr);
    EXPECT_EQ(static_cast<Row*>(list->realisedRow(50'000))->boundTo, 50'000);
    EXPECT_EQ(list->realisedRow(0), nullptr);
}

TEST_F(RowListTest, RowsHaveTheirHeightAndThePaddingAboveAndBelow) {
    makeList(3, RowList::Kind::menu);
    EXPECT_EQ(list->realisedRow(0)->geometry(), QRect(0, 6, 240, 34));
    EXPECT_EQ(list->realisedRow(2)->geometry(), QRect(0, 74, 240, 34));
    EXPECT_EQ(list->rowAt(QPoint(10, 5)), -1);
    EXPECT_EQ(list->rowAt(QPoint(10, 6)), 0);
    EXPECT_EQ(list->rowAt(QPoint(10, 108)), -1);
}

TEST_F(RowListTest, TheScrollRangeCoversRowsAndPadding) {
    makeList(9, RowList::Kind::menu, QSize(240, 318));
    EXPECT_EQ(list->verticalScrollBar()->maximum(), 0);
    source.rows = 10;
    list->reload();
    EXPECT_EQ(list->verticalScrollBar()->maximum(), 352 - 318);
    EXPECT_FALSE(list->verticalScrollBar()->isVisible());
}

TEST_F(RowListTest, RowsOfDifferentHeightsFollowEachOther) {
    source.height = std::nullopt;
    makeList(100, RowList::Kind::selection);
    EXPECT_EQ(list->rowRect(0), QRect(0, 6, 240, 30));
    EXPECT_EQ(list->rowRect(1), QRect(0, 36, 240, 40));
    EXPECT_EQ(list->rowRect(2), QRect(0, 76, 240, 50));
    EXPECT_EQ(list->rowRect(3), QRect(0, 126, 240, 30));
    EXPECT_EQ(list->rowAt(QPoint(1, 75)), 1);
    EXPECT_EQ(list->rowAt(QPoint(1, 76)), 2);
}

TEST_F(RowListTest, ReloadKeepsTheScrollPositionAndTheCurrentRow) {
    makeList(100, RowList::Kind::selection);
    list->setCurrentRow(20);
    list->verticalScrollBar()->setValue(500);
    source.rows = 99;
    list->reload();
    EXPECT_EQ(list->verticalScrollBar()->value(), 500);
    EXPECT_EQ(list->currentRow(), 20);
    source.rows = 12;
    list->reload();
    EXPECT_EQ(list->verticalScrollBar()->value(), 12 * 34 + 12 - 320);
    EXPECT_EQ(list->currentRow(), 11);
}

TEST_F(RowListTest, ReloadBindsTheRowsInSightAnew) {
    makeList(100, RowList::Kind::menu);
    source.bound = 0;
    list->reload();
    EXPECT_EQ(source.bound, 10);
    EXPECT_EQ(source.made, 10);
}

TEST_F(RowListTest, AClickInAMenuActivatesTheRowUnderIt) {
    makeList(5, RowList::Kind::menu);
    click(*list->viewport(), middleOf(3));
    EXPECT_THAT(log.take(), ElementsAre("activated", "3"));
}

TEST_F(RowListTest, APressThatLeavesItsRowActivatesNothing) {
    makeList(5, RowList::Kind::menu);
    press(*list->viewport(), middleOf(3));
    release(*list->viewport(), middleOf(2));
    EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(RowListTest, AReloadDuringAClickCancelsIt) {
    makeList(5, RowList::Kind::menu);
    press(*list->viewport(), middleOf(3));
    list->reload();
    release(*list->viewport(), middleOf(3));
    EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(RowListTest, AMenuReportsTheRowUnderThePointerOnce) {
    makeList(5, RowList::Kind::menu);
    move(*list->viewport(), middleOf(1));
    move(*list->viewport(), middleOf(1) + QPoint(3, 2));
    EXPECT_THAT(log.take(), ElementsAre("entered", "1"));
    EXPECT_TRUE(list->realisedRow(1)->state().hovered);
    move(*list->viewport(), middleOf(2));
    EXPECT_THAT(log.take(), ElementsAre("left", "1", "entered", "2"));
    leave(*list->viewport());
    EXPECT_THAT(log.take(), ElementsAre("left", "2"));
    EXPECT_FALSE(list->realisedRow(2)->state().hovered);
}

TEST_F(RowListTest, WheelingUnderARestingPointerReportsTheRowThatArrives) {
    makeList(100, RowList::Kind::menu);
    move(*list->viewport(), QPoint(100, 20));
    log.take();
    wheel(*list->viewport(), QPoint(100, 20), -120);
    EXPECT_EQ(list->verticalScrollBar()->value(), QApplication::wheelScrollLines() * 20);
    EXPECT_THAT(log.take(),
                ElementsAre("left", "0", "entered", std::to_string(list->rowAt(QPoint(100, 20)))));
}

TEST_F(RowListTest, SmallWheelStepsOfATouchpadAddUp) {
    makeList(100, RowList::Kind::menu);
    for (int i = 0; i < 120; ++i) {
        wheel(*list->viewport(), QPoint(100, 20), -1);
    }
    EXPECT_NEAR(list->verticalScrollBar()->value(), QApplication::wheelScrollLines() * 20, 1);
}

TEST_F(RowListTest, AfterAReloadARestingPointerIsReportedAgain) {
    makeList(5, RowList::Kind::menu);
    move(*list->viewport(), middleOf(1));
    log.take();
    list->reload();
    EXPECT_THAT(log.take(), ElementsAre("entered", "1"));
}

TEST_F(RowListTest, KeysOfAMenuAskItsOwner) {
    makeList(100, RowList::Kind::menu);
    for (const int key :
         {Qt::Key_Down, Qt::Key_Up, Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_Home, Qt::Key_End}) {
        keyClick(*list, key);
    }
    EXPECT_THAT(log.take(), ElementsAre("step", "1", "step", "0", "step", "3", "step", "2", "step",
                                        "4", "step", "5"));
    EXPECT_EQ(list->currentRow(), -1);
}

TEST_F(RowListTest, AHighlightFromTheKeyboardScrollsIntoSight) {
    makeList(100, RowList::Kind::menu);
    keyClick(*list, Qt::Key_End);
    list->setCurrentRow(99);
    EXPECT_EQ(list->verticalScrollBar()->value(), list->verticalScrollBar()->maximum());
    keyClick(*list, Qt::Key_Home);
    list->setCurrentRow(0);
    EXPECT_EQ(list->verticalScrollBar()->value(), 0);
    EXPECT_TRUE(list->realisedRow(0)->state().current);
}

TEST_F(RowListTest, ScrollingFromTheKeyboardLeavesTheRestingPointerUnreported) {
    makeList(100, RowList::Kind::menu);
    move(*list->viewport(), middleOf(1));
    log.take();
    keyClick(*list, Qt::Key_End);
    list->setCurrentRow(99);
    EXPECT_THAT(log.take(), ElementsAre("step", "5"));
}

TEST_F(RowListTest, ReturnActivatesTheCurrentRow) {
    makeList(5, RowList::Kind::menu);
    keyClick(*list, Qt::Key_Return);
    EXPECT_THAT(log.take(), IsEmpty());
    list->setCurrentRow(4);
    keyClick(*list, Qt::Key_Return);
    keyClick(*list, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_THAT(log.take(), ElementsAre("activated", "4", "activated", "4"));
}

TEST_F(RowListTest, LettersAreHandedOnButShortcutsAreNot) {
    makeList(5, RowList::Kind::menu);
    keyClick(*list, Qt::Key_S, Qt::NoModifier, QStringLiteral("s"));
    keyClick(*list, Qt::Key_S, Qt::ShiftModifier, QStringLiteral("S"));
    keyClick(*list, Qt::Key_S, Qt::ControlModifier, QStringLiteral("\x13"));
    keyClick(*list, Qt::Key_S, Qt::AltModifier, QStringLiteral("s"));
    keyClick(*list, Qt::Key_Escape, Qt::NoModifier, QStringLiteral("\x1b"));
    EXPECT_THAT(log.take(), ElementsAre("typed", "s", "typed", "S"));
}

TEST_F(RowListTest, ArrowKeysOfASelectionListPickRows) {
    makeList(30, RowList::Kind::selection);
    for (const int key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Up, Qt::Key_End, Qt::Key_Down,
                          Qt::Key_PageUp, Qt::Key_Home, Qt::Key_Up}) {
        keyClick(*list, key);
    }
    EXPECT_THAT(log.take(), ElementsAre("picked", "0", "picked", "1", "picked", "0", "picked", "29",
                                        "picked", "21", "picked", "0"));
}

TEST_F(RowListTest, APressPicksARowAndOneBesideTheRowsPicksNone) {
    makeList(3, RowList::Kind::selection);
    click(*list->viewport(), middleOf(1));
    EXPECT_EQ(list->currentRow(), 1);
    click(*list->viewport(), QPoint(100, 300));
    EXPECT_EQ(list->currentRow(), -1);
    EXPECT_THAT(log.take(), ElementsAre("picked", "1", "picked", "-1"));
}

TEST_F(RowListTest, ADoubleClickInASelectionListActivates) {
    makeList(3, RowList::Kind::selection);
    doubleClick(*list->viewport(), middleOf(2));
    EXPECT_THAT(log.take(), ElementsAre("picked", "2", "activated", "2"));
}

TEST_F(RowListTest, AltArrowsMoveAndDeleteDeletesInASelectionList) {
    makeList(3, RowList::Kind::selection);
    list->setCurrentRow(1);
    keyClick(*list, Qt::Key_Up, Qt::AltModifier);
    keyClick(*list, Qt::Key_Down, Qt::AltModifier);
    keyClick(*list, Qt::Key_Delete);
    EXPECT_THAT(log.take(), ElementsAre("moveCurrent", "0", "moveCurrent", "1", "delete"));
}

TEST_F(RowListTest, AMenuKnowsNeitherMovingNorDeleting) {
    makeList(3, RowList::Kind::menu);
    list->setCurrentRow(1);
    keyClick(*list, Qt::Key_Up, Qt::AltModifier);
    keyClick(*list, Qt::Key_Delete);
    EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(RowListTest, EnsureVisibleScrollsNoFurtherThanNeeded) {
    makeList(100, RowList::Kind::selection);
    list->ensureVisible(9);
    EXPECT_EQ(list->verticalScrollBar()->value(), 6 + 10 * 34 - 320);
    list->ensureVisible(5);
    EXPECT_EQ(list->verticalScrollBar()->value(), 6 + 10 * 34 - 320);
    list->ensureVisible(99);
    EXPECT_EQ(list->verticalScrollBar()->value(), list->verticalScrollBar()->maximum());
}

struct Drop {
    int row;
    QPoint at;
    std::vector<std::string> expected;
};

// The rows are 34 high and begin at 6, so the middle of row n is at 23 + 34 n.
TEST_F(RowListTest, ADropLandsInTheGapNearestToThePointer) {
    makeList(5, RowList::Kind::selection);
    const std::vector<Drop> drops{
        {1, QPoint(50, 200), {"picked", "1", "move", "1", "5"}},
        {1, QPoint(50, 300), {"picked", "1", "move", "1", "5"}},
        {3, QPoint(50, 0), {"picked", "3", "move", "3", "0"}},
        {3, QPoint(50, -40), {"picked", "3", "move", "3", "0"}},
        {3, QPoint(50, 22), {"picked", "3", "move", "3", "0"}},
        {3, QPoint(50, 24), {"picked", "3", "move", "3", "1"}},
        {3, QPoint(50, 85), {"picked", "3", "move", "3", "2"}},
        {3, QPoint(50, 100), {"picked", "3"}}, // the gap above itself
        {3, QPoint(80, 150), {"picked", "3"}}, // the gap below itself
        {0, QPoint(50, 95), {"picked", "0", "move", "0", "3"}},
    };
    for (const Drop& drop : drops) {
        list->setCurrentRow(-1);
        press(*list->viewport(), middleOf(drop.row));
        drag(*list->viewport(), QPoint(50, 160));
        drag(*list->viewport(), drop.at);
        release(*list->viewport(), drop.at);
        EXPECT_EQ(log.take(), drop.expected) << "row " << drop.row << " to " << drop.at.y();
    }
}

TEST_F(RowListTest, EscapeEndsADragWithoutAMove) {
    makeList(5, RowList::Kind::selection);
    press(*list->viewport(), middleOf(1));
    drag(*list->viewport(), QPoint(50, 160));
    keyClick(*list, Qt::Key_Escape);
    release(*list->viewport(), QPoint(50, 160));
    EXPECT_THAT(log.take(), ElementsAre("picked", "1"));
}

TEST_F(RowListTest, AReloadEndsADragWithoutAMove) {
    makeList(5, RowList::Kind::selection);
    press(*list->viewport(), middleOf(1));
    drag(*list->viewport(), QPoint(50, 160));
    list->reload();
    release(*list->viewport(), QPoint(50, 160));
    EXPECT_THAT(log.take(), ElementsAre("picked", "1"));
}

TEST_F(RowListTest, RowsAreListItemsNamedByTheirTitles) {
    makeList(100'000, RowList::Kind::menu);
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(list.get());
    ASSERT_NE(interface, nullptr);
    EXPECT_EQ(interface->role(), QAccessible::List);
    EXPECT_EQ(interface->childCount(), 100'000);
    for (const int row : {0, 9, 10, 99'999}) {
        QAccessibleInterface* child = interface->child(row);
        ASSERT_NE(child, nullptr) << row;
        EXPECT_EQ(child->role(), QAccessible::ListItem) << row;
        EXPECT_EQ(child->text(QAccessible::Name), QStringLiteral("Row %1").arg(row));
        EXPECT_EQ(child->parent(), interface) << row;
        EXPECT_EQ(interface->indexOfChild(child), row);
    }
    EXPECT_EQ(interface->child(100'000), nullptr);
    EXPECT_EQ(list->realisedCount(), 10);
}

TEST_F(RowListTest, APressByAScreenReaderActivatesARowOutOfSight) {
    makeList(100, RowList::Kind::menu);
    QAccessibleInterface* row = QAccessible::queryAccessibleInterface(list.get())->child(70);
    ASSERT_NE(row->actionInterface(), nullptr);
    EXPECT_TRUE(row->state().offscreen);
    row->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_THAT(log.take(), ElementsAre("activated", "70"));
}

TEST_F(RowListTest, AScreenReaderMovesARowInSightAndOutOfSight) {
    makeList(100, RowList::Kind::selection);
    const QString up = QStringLiteral("MoveUp");
    const QString down = QStringLiteral("MoveDown");
    for (const int row : {0, 1, 70, 99}) {
        EXPECT_TRUE(actionsOf(row).contains(up)) << row;
        EXPECT_TRUE(actionsOf(row).contains(down)) << row;
        doAction(row, up);
        doAction(row, down);
    }
    EXPECT_THAT(log.take(),
                ElementsAre("move", "0", "2", "move", "1", "0", "move", "1", "3", "move", "70",
                            "69", "move", "70", "72", "move", "99", "98"));
}

TEST_F(RowListTest, TheMovesHaveANameAndTellTheirKeys) {
    makeList(100, RowList::Kind::selection);
    for (const int row : {0, 70}) {
        QAccessibleActionInterface* const actions = actionInterfaceOf(row);
        ASSERT_NE(actions, nullptr) << row;
        const QString up = QStringLiteral("MoveUp");
        const QString down = QStringLiteral("MoveDown");
        EXPECT_EQ(actions->localizedActionName(up), QStringLiteral("Move Up"));
        EXPECT_EQ(actions->localizedActionName(down), QStringLiteral("Move Down"));
        EXPECT_EQ(actions->keyBindingsForAction(up), QStringList(QStringLiteral("Alt+Up")));
        EXPECT_EQ(actions->keyBindingsForAction(down), QStringList(QStringLiteral("Alt+Down")));
    }
}

TEST_F(RowListTest, AScreenReaderMovesNothingInAMenu) {
    makeList(3, RowList::Kind::menu);
    EXPECT_FALSE(actionsOf(1).contains(QStringLiteral("MoveUp")));
    doAction(1, QStringLiteral("MoveUp"));
    EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(RowListTest, RowsOfADisabledListReactToNoScreenReader) {
    makeList(100, RowList::Kind::selection);
    list->setEnabled(false);
    for (const int row : {1, 70}) {
        EXPECT_THAT(actionsOf(row), IsEmpty());
        for (const char* action : {"Press", "ShowMenu", "MoveUp", "MoveDown"}) {
            doAction(row, QString::fromLatin1(action));
        }
    }
    EXPECT_THAT(log.take(), IsEmpty());
    EXPECT_EQ(list->currentRow(), -1);
}

TEST_F(RowListTest, TheCurrentRowHasTheFocusInTheTree) {
    makeList(100, RowList::Kind::selection);
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(list.get());
    keyClick(*list, Qt::Key_Down);
    keyClick(*list, Qt::Key_Down);
    ASSERT_NE(interface->focusChild(), nullptr);
    EXPECT_EQ(interface->focusChild()->text(QAccessible::Name), QStringLiteral("Row 1"));
    EXPECT_TRUE(interface->child(1)->state().focused);
    EXPECT_FALSE(interface->child(0)->state().focused);
}

TEST_F(RowListTest, ARowOutlivedByItsInterfaceIsInvalid) {
    makeList(100, RowList::Kind::menu);
    QAccessibleInterface* row = QAccessible::queryAccessibleInterface(list.get())->child(70);
    EXPECT_TRUE(row->isValid());
    source.rows = 60;
    EXPECT_FALSE(row->isValid());
    EXPECT_TRUE(row->state().invalid);
    EXPECT_EQ(row->text(QAccessible::Name), QString());
}

} // namespace
} // namespace kestrel::linux_shell
