#include "shells/linux/views/kit/menu_list.h"

#include "tests/linux/views/row_list_fixture.h"

#include <QScrollBar>

#include <gmock/gmock.h>

#include <string>

namespace kestrel::linux_shell {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using MenuListTest = ListFixture<MenuList>;

TEST_F(MenuListTest, AClickActivatesTheRowUnderIt) {
    makeList(5);
    click(*list->viewport(), middleOf(3));
    EXPECT_THAT(log.take(), ElementsAre("activated", "3"));
}

TEST_F(MenuListTest, APressThatLeavesItsRowActivatesNothing) {
    makeList(5);
    press(*list->viewport(), middleOf(3));
    release(*list->viewport(), middleOf(2));
    EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(MenuListTest, AReloadDuringAClickCancelsIt) {
    makeList(5);
    press(*list->viewport(), middleOf(3));
    list->reload();
    release(*list->viewport(), middleOf(3));
    EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(MenuListTest, ReportsTheRowUnderThePointerOnce) {
    makeList(5);
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

TEST_F(MenuListTest, WheelingUnderARestingPointerReportsTheRowThatArrives) {
    makeList(100);
    move(*list->viewport(), QPoint(100, 20));
    log.take();
    wheel(*list->viewport(), QPoint(100, 20), -120);
    EXPECT_EQ(list->verticalScrollBar()->value(), QApplication::wheelScrollLines() * 20);
    EXPECT_THAT(log.take(),
                ElementsAre("left", "0", "entered", std::to_string(list->rowAt(QPoint(100, 20)))));
}

TEST_F(MenuListTest, AfterAReloadARestingPointerIsReportedAgain) {
    makeList(5);
    move(*list->viewport(), middleOf(1));
    log.take();
    list->reload();
    EXPECT_THAT(log.take(), ElementsAre("entered", "1"));
}

TEST_F(MenuListTest, KeysAskTheOwner) {
    makeList(100);
    for (const int key :
         {Qt::Key_Down, Qt::Key_Up, Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_Home, Qt::Key_End})
        keyClick(*list, key);
    EXPECT_THAT(log.take(), ElementsAre("step", "1", "step", "0", "step", "3", "step", "2", "step",
                                        "4", "step", "5"));
    EXPECT_EQ(list->currentRow(), -1);
}

TEST_F(MenuListTest, AHighlightFromTheKeyboardScrollsIntoSight) {
    makeList(100);
    keyClick(*list, Qt::Key_End);
    list->setCurrentRow(99);
    EXPECT_EQ(list->verticalScrollBar()->value(), list->verticalScrollBar()->maximum());
    keyClick(*list, Qt::Key_Home);
    list->setCurrentRow(0);
    EXPECT_EQ(list->verticalScrollBar()->value(), 0);
    EXPECT_TRUE(list->realisedRow(0)->state().current);
}

TEST_F(MenuListTest, ScrollingFromTheKeyboardLeavesTheRestingPointerUnreported) {
    makeList(100);
    move(*list->viewport(), middleOf(1));
    log.take();
    keyClick(*list, Qt::Key_End);
    list->setCurrentRow(99);
    EXPECT_THAT(log.take(), ElementsAre("step", "5"));
}

TEST_F(MenuListTest, KnowsNeitherMovingNorDeleting) {
    makeList(3);
    list->setCurrentRow(1);
    keyClick(*list, Qt::Key_Up, Qt::AltModifier);
    keyClick(*list, Qt::Key_Delete);
    EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(MenuListTest, APressByAScreenReaderActivatesARowOutOfSight) {
    makeList(100);
    QAccessibleInterface* row = QAccessible::queryAccessibleInterface(list.get())->child(70);
    ASSERT_NE(row->actionInterface(), nullptr);
    EXPECT_TRUE(row->state().offscreen);
    row->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_THAT(log.take(), ElementsAre("activated", "70"));
}

TEST_F(MenuListTest, AScreenReaderMovesNothing) {
    makeList(3);
    EXPECT_FALSE(actionsOf(1).contains(QStringLiteral("MoveUp")));
    doAction(1, QStringLiteral("MoveUp"));
    EXPECT_THAT(log.take(), IsEmpty());
}

} // namespace
} // namespace kestrel::linux_shell
