// Dragging the rows of a list; each is 34 high and the first begins at 6.

#include "shells/linux/views/kit/row_drag.h"

#include "tests/linux/views/row_list_fixture.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QScrollBar>
#include <QTest>

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace kestrel::linux_shell {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class RowDragTest : public ListFixture<SelectionList> {
  protected:
    /// Row 1 of a list, carried to the gap in front of row 4.
    void carryRowOne(int rows = 8) {
        makeList(rows);
        QObject::connect(list.get(), &SelectionList::contextMenuRequested,
                         [this](int row) { log << "menu" << row; });
        press(*list->viewport(), middleOf(1));
        drag(*list->viewport(), QPoint(50, 100));
        drag(*list->viewport(), beforeRowFour);
        EXPECT_TRUE(isCarrying());
        EXPECT_THAT(log.take(), ElementsAre("picked", "1"));
    }

    void openContextMenu(QContextMenuEvent::Reason reason) {
        QContextMenuEvent event(reason, beforeRowFour,
                                list->viewport()->mapToGlobal(beforeRowFour));
        if (reason == QContextMenuEvent::Keyboard)
            QApplication::sendEvent(list.get(), &event);
        else
            QApplication::sendEvent(list->viewport(), &event);
    }

    /// What comes after its end does not bring a drag back to life.
    void expectNoDrag() {
        EXPECT_FALSE(isCarrying());
        drag(*list->viewport(), QPoint(50, 200));
        EXPECT_FALSE(isCarrying());
        release(*list->viewport(), QPoint(50, 200));
        EXPECT_THAT(log.take(), IsEmpty());
    }

    static bool isCarrying() {
        const QCursor* const cursor = QGuiApplication::overrideCursor();
        return cursor != nullptr && cursor->shape() == Qt::ClosedHandCursor;
    }

    std::vector<int> tops() const {
        std::vector<int> result;
        result.reserve(static_cast<std::size_t>(source.rows));
        for (int row = 0; row < source.rows; ++row)
            result.push_back(list->realisedRow(row)->y());
        return result;
    }
    std::vector<int> hoveredRows() const {
        std::vector<int> result;
        for (int row = 0; row < source.rows; ++row) {
            const ListRow* const widget = list->realisedRow(row);
            if (widget != nullptr && widget->state().hovered)
                result.push_back(row);
        }
        return result;
    }

    const QPoint beforeRowFour{50, 138};
};

struct Drop {
    int row;
    QPoint at;
    std::vector<std::string> expected;
};

TEST_F(RowDragTest, ADropLandsInTheGapNearestToThePointer) {
    makeList(5);
    const std::vector<Drop> drops{
        {1, QPoint(50, 200), {"picked", "1", "move", "1", "5"}},
        {1, QPoint(50, 319), {"picked", "1", "move", "1", "5"}},
        {3, QPoint(50, 0), {"picked", "3", "move", "3", "0"}},
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

TEST_F(RowDragTest, ADropOutsideTheListMovesNothing) {
    for (const QPoint outside :
         {QPoint(50, -1), QPoint(50, 320), QPoint(-1, 138), QPoint(240, 138), QPoint(500, 900)}) {
        carryRowOne();
        drag(*list->viewport(), outside);
        EXPECT_TRUE(isCarrying());
        release(*list->viewport(), outside);
        expectNoDrag();
    }
}

TEST_F(RowDragTest, ADropCountsWhereTheButtonGoesUp) {
    carryRowOne();
    release(*list->viewport(), QPoint(50, 170));
    EXPECT_THAT(log.take(), ElementsAre("move", "1", "5"));
}

TEST_F(RowDragTest, EscapeEndsADragWithoutAMove) {
    carryRowOne();
    keyClick(*list, Qt::Key_Escape);
    expectNoDrag();
}

TEST_F(RowDragTest, AReloadEndsADragWithoutAMove) {
    carryRowOne();
    list->reload();
    expectNoDrag();
}

TEST_F(RowDragTest, AnotherButtonEndsADragAndOpensNoMenu) {
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        carryRowOne();
        press(*list->viewport(), beforeRowFour, button, Qt::LeftButton);
        openContextMenu(QContextMenuEvent::Mouse);
        expectNoDrag();
        press(*list->viewport(), middleOf(2), Qt::RightButton);
        openContextMenu(QContextMenuEvent::Mouse);
        EXPECT_THAT(log.take(), ElementsAre("picked", "2", "menu", "3"));
    }
}

TEST_F(RowDragTest, AnotherButtonLetsGoOfARowThatIsHeldAndNotMovedYet) {
    makeList(8);
    press(*list->viewport(), middleOf(1));
    press(*list->viewport(), middleOf(1), Qt::RightButton, Qt::LeftButton);
    EXPECT_THAT(log.take(), ElementsAre("picked", "1"));
    expectNoDrag();
}

TEST_F(RowDragTest, TheMenuKeyEndsADragAndOpensNoMenu) {
    carryRowOne();
    openContextMenu(QContextMenuEvent::Keyboard);
    expectNoDrag();
    openContextMenu(QContextMenuEvent::Keyboard);
    EXPECT_THAT(log.take(), ElementsAre("menu", "1"));
}

TEST_F(RowDragTest, AMoveWithTheButtonUpEndsADragWhoeverGotItsRelease) {
    carryRowOne();
    move(*list->viewport(), beforeRowFour);
    expectNoDrag();
}

TEST_F(RowDragTest, ADragEndsWhenTheListLosesTheFocus) {
    carryRowOne();
    list->clearFocus();
    expectNoDrag();
}

TEST_F(RowDragTest, AMenuThatPopsUpEndsADrag) {
    carryRowOne();
    QMenu menu;
    menu.addAction(QStringLiteral("Edit"));
    menu.popup(QPoint(10, 10));
    expectNoDrag();
}

TEST_F(RowDragTest, AListThatGoesDuringADragLeavesNoCursorBehind) {
    carryRowOne();
    list.reset();
    EXPECT_FALSE(isCarrying());
}

TEST_F(RowDragTest, TheCurrentRowDoesNotLookItWhileItIsCarried) {
    carryRowOne();
    EXPECT_EQ(list->currentRow(), 1);
    EXPECT_FALSE(list->realisedRow(1)->state().current);
    keyClick(*list, Qt::Key_Escape);
    EXPECT_TRUE(list->realisedRow(1)->state().current);
}

TEST_F(RowDragTest, TheOtherRowsMakeWayWhereTheRowWouldLand) {
    carryRowOne(6);
    EXPECT_THAT(tops(), ElementsAre(6, 40, 40, 74, 142, 176));
    drag(*list->viewport(), QPoint(50, 7));
    EXPECT_THAT(tops(), ElementsAre(40, 40, 74, 108, 142, 176));
    drag(*list->viewport(), middleOf(1));
    EXPECT_THAT(tops(), ElementsAre(6, 40, 74, 108, 142, 176));
}

TEST_F(RowDragTest, TheRowsCloseAgainOutsideTheListAndAfterTheEnd) {
    for (const QPoint outside : {QPoint(-1, 138), QPoint(50, 400)}) {
        carryRowOne(6);
        drag(*list->viewport(), outside);
        EXPECT_THAT(tops(), ElementsAre(6, 40, 74, 108, 142, 176));
        drag(*list->viewport(), beforeRowFour);
        EXPECT_THAT(tops(), ElementsAre(6, 40, 40, 74, 142, 176));
        keyClick(*list, Qt::Key_Escape);
        EXPECT_THAT(tops(), ElementsAre(6, 40, 74, 108, 142, 176));
    }
}

TEST_F(RowDragTest, ARowThatMakesWayAcrossTheEdgeIsThere) {
    makeList(100);
    list->verticalScrollBar()->setValue(6 + 34 * 20);
    press(*list->viewport(), middleOf(25));
    drag(*list->viewport(), middleOf(22));
    drag(*list->viewport(), QPoint(50, 150));
    list->verticalScrollBar()->setValue(6 + 34 * 30);
    EXPECT_NE(list->realisedRow(30), nullptr);
    EXPECT_EQ(list->realisedRow(30)->y(), -34);
    EXPECT_NE(list->realisedRow(25), nullptr); // has the button
}

TEST_F(RowDragTest, NoRowReactsToThePointerMeanwhile) {
    makeList(8);
    move(*list->viewport(), middleOf(1));
    EXPECT_THAT(hoveredRows(), ElementsAre(1));
    press(*list->viewport(), middleOf(1));
    for (const int y : {60, 100, 138}) {
        drag(*list->viewport(), QPoint(50, y));
        EXPECT_THAT(hoveredRows(), IsEmpty()) << y;
    }
    release(*list->viewport(), beforeRowFour);
    EXPECT_THAT(hoveredRows(), ElementsAre(3));
}

TEST_F(RowDragTest, APointerBeyondTheEdgeScrollsAndADropBackInsideCounts) {
    carryRowOne(30);
    QScrollBar& bar = *list->verticalScrollBar();
    drag(*list->viewport(), QPoint(50, 900));
    EXPECT_TRUE(QTest::qWaitFor([&] { return bar.value() == bar.maximum(); }, 20'000));
    drag(*list->viewport(), QPoint(50, 315));
    release(*list->viewport(), QPoint(50, 315));
    EXPECT_THAT(log.take(), ElementsAre("move", "1", "30"));
}

} // namespace
} // namespace kestrel::linux_shell
