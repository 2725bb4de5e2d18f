#include "shells/linux/views/kit/selection_list.h"

#include "tests/linux/views/row_list_fixture.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace kestrel::linux_shell {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using SelectionListTest = ListFixture<SelectionList>;

TEST_F(SelectionListTest, ArrowKeysPickRows) {
    makeList(30);
    for (const int key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Up, Qt::Key_End, Qt::Key_Down,
                          Qt::Key_PageUp, Qt::Key_Home, Qt::Key_Up})
        keyClick(*list, key);
    EXPECT_THAT(log.take(), ElementsAre("picked", "0", "picked", "1", "picked", "0", "picked", "29",
                                        "picked", "21", "picked", "0"));
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

struct Drop {
    int row;
    QPoint at;
    std::vector<std::string> expected;
};

// The rows are 34 high and begin at 6, so the middle of row n is at 23 + 34 n.
TEST_F(SelectionListTest, ADropLandsInTheGapNearestToThePointer) {
    makeList(5);
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

TEST_F(SelectionListTest, EscapeEndsADragWithoutAMove) {
    makeList(5);
    press(*list->viewport(), middleOf(1));
    drag(*list->viewport(), QPoint(50, 160));
    keyClick(*list, Qt::Key_Escape);
    release(*list->viewport(), QPoint(50, 160));
    EXPECT_THAT(log.take(), ElementsAre("picked", "1"));
}

TEST_F(SelectionListTest, AReloadEndsADragWithoutAMove) {
    makeList(5);
    press(*list->viewport(), middleOf(1));
    drag(*list->viewport(), QPoint(50, 160));
    list->reload();
    release(*list->viewport(), QPoint(50, 160));
    EXPECT_THAT(log.take(), ElementsAre("picked", "1"));
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
                ElementsAre("move", "0", "2", "move", "1", "0", "move", "1", "3", "move", "70",
                            "69", "move", "70", "72", "move", "99", "98"));
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
    keyClick(*list, Qt::Key_Down);
    keyClick(*list, Qt::Key_Down);
    ASSERT_NE(interface->focusChild(), nullptr);
    EXPECT_EQ(interface->focusChild()->text(QAccessible::Name), QStringLiteral("Row 1"));
    EXPECT_TRUE(interface->child(1)->state().focused);
    EXPECT_FALSE(interface->child(0)->state().focused);
}

} // namespace
} // namespace kestrel::linux_shell
