#include "shells/linux/views/kit/selection_list.h"

#include "tests/linux/views/row_list_fixture.h"

#include <QScrollBar>

#include <gmock/gmock.h>

namespace kestrel::linux_shell {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using SelectionListTest = ListFixture<SelectionList>;

TEST_F(SelectionListTest, ArrowKeysAskForStepsAndTellTheLengthOfAPage) {
    makeList(30);
    for (const int key :
         {Qt::Key_Down, Qt::Key_Up, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Home, Qt::Key_End})
        keyClick(*list, key);
    EXPECT_THAT(log.take(), ElementsAre("step", "1", "8", "step", "0", "8", "step", "2", "8",
                                        "step", "3", "8", "step", "4", "8", "step", "5", "8"));
}

TEST_F(SelectionListTest, AStepThatLeadsNowhereShowsTheCurrentRow) {
    makeList(100);
    list->setCurrentRow(0);
    list->verticalScrollBar()->setValue(1000);
    keyClick(*list, Qt::Key_Up);
    EXPECT_EQ(list->verticalScrollBar()->value(), 0);
}

TEST_F(SelectionListTest, APressPicksARowAndOneBesideTheRowsPicksNone) {
    makeList(3);
    click(*list->viewport(), middleOf(1));
    EXPECT_EQ(list->currentRow(), 1);
    click(*list->viewport(), QPoint(100, 300));
    EXPECT_EQ(list->currentRow(), -1);
    EXPECT_THAT(log.take(), ElementsAre("picked", "1", "picked", "-1"));
}

TEST_F(SelectionListTest, ADoubleClickActivates) {
    makeList(3);
    doubleClick(*list->viewport(), middleOf(2));
    EXPECT_THAT(log.take(), ElementsAre("picked", "2", "activated", "2"));
}

TEST_F(SelectionListTest, AltArrowsMoveAndDeleteDeletes) {
    makeList(3);
    list->setCurrentRow(1);
    keyClick(*list, Qt::Key_Up, Qt::AltModifier);
    keyClick(*list, Qt::Key_Down, Qt::AltModifier);
    keyClick(*list, Qt::Key_Delete);
    EXPECT_THAT(log.take(), ElementsAre("moveCurrent", "0", "moveCurrent", "1", "delete"));
}

TEST_F(SelectionListTest, AScreenReaderMovesARowInSightAndOutOfSight) {
    makeList(100);
    const QString up = QStringLiteral("MoveUp");
    const QString down = QStringLiteral("MoveDown");
    for (const int row : {0, 1, 70, 99}) {
        EXPECT_TRUE(actionsOf(row).contains(up)) << row;
        EXPECT_TRUE(actionsOf(row).contains(down)) << row;
        doAction(row, up);
        doAction(row, down);
    }
    EXPECT_THAT(log.take(),
                ElementsAre("moveByOne", "0", "0", "moveByOne", "0", "1", "moveByOne", "1", "0",
                            "moveByOne", "1", "1", "moveByOne", "70", "0", "moveByOne", "70", "1",
                            "moveByOne", "99", "0", "moveByOne", "99", "1"));
}

TEST_F(SelectionListTest, TheMovesHaveANameAndTellTheirKeys) {
    makeList(100);
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

TEST_F(SelectionListTest, RowsOfADisabledListReactToNoScreenReader) {
    makeList(100);
    list->setEnabled(false);
    for (const int row : {1, 70}) {
        EXPECT_THAT(actionsOf(row), IsEmpty());
        for (const char* action : {"Press", "ShowMenu", "MoveUp", "MoveDown"})
            doAction(row, QString::fromLatin1(action));
    }
    EXPECT_THAT(log.take(), IsEmpty());
    EXPECT_EQ(list->currentRow(), -1);
}

TEST_F(SelectionListTest, TheCurrentRowHasTheFocusInTheTree) {
    makeList(100);
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(list.get());
    list->setCurrentRow(1);
    ASSERT_NE(interface->focusChild(), nullptr);
    EXPECT_EQ(interface->focusChild()->text(QAccessible::Name), QStringLiteral("Row 1"));
    EXPECT_TRUE(interface->child(1)->state().focused);
    EXPECT_FALSE(interface->child(0)->state().focused);
}

} // namespace
} // namespace kestrel::linux_shell
