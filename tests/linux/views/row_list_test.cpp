// What both lists have in common, on a menu.

#include "shells/linux/views/kit/row_list.h"

#include "tests/linux/views/row_list_fixture.h"

#include <QScrollBar>

#include <gmock/gmock.h>

#include <utility>

namespace kestrel::linux_shell {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using RowListTest = ListFixture<MenuList>;

TEST_F(RowListTest, RealisesTheRowsInSightOnly) {
    makeList(100'000);
    EXPECT_EQ(list->realisedCount(), 10);
    EXPECT_EQ(source.made, 10);
    EXPECT_EQ(source.bound, 10);
    EXPECT_EQ(source.heightsAsked, 0);
    EXPECT_EQ(source.titlesAsked, 0);
}

TEST_F(RowListTest, OpeningAsksNoMoreOfAHundredThousandRowsThanOfTwenty) {
    makeList(20);
    const std::pair few{source.made, source.bound};
    source = CountedRows{};
    makeList(100'000);
    EXPECT_EQ(std::pair(source.made, source.bound), few);
}

TEST_F(RowListTest, ScrollingBindsTheSameWidgetsAgain) {
    makeList(100'000);
    list->verticalScrollBar()->setValue(34 * 50'000);
    EXPECT_LE(source.made, 11);
    ASSERT_NE(list->realisedRow(50'000), nullptr);
    EXPECT_EQ(static_cast<CountedRow*>(list->realisedRow(50'000))->boundTo, 50'000);
    EXPECT_EQ(list->realisedRow(0), nullptr);
}

TEST_F(RowListTest, RowsHaveTheirHeightAndThePaddingAboveAndBelow) {
    makeList(3);
    EXPECT_EQ(list->realisedRow(0)->geometry(), QRect(0, 6, 240, 34));
    EXPECT_EQ(list->realisedRow(2)->geometry(), QRect(0, 74, 240, 34));
    EXPECT_EQ(list->rowAt(QPoint(10, 5)), -1);
    EXPECT_EQ(list->rowAt(QPoint(10, 6)), 0);
    EXPECT_EQ(list->rowAt(QPoint(10, 108)), -1);
}

TEST_F(RowListTest, TheScrollRangeCoversRowsAndPadding) {
    makeList(9, QSize(240, 318));
    EXPECT_EQ(list->verticalScrollBar()->maximum(), 0);
    source.rows = 10;
    list->reload();
    EXPECT_EQ(list->verticalScrollBar()->maximum(), 352 - 318);
    EXPECT_FALSE(list->verticalScrollBar()->isVisible());
}

TEST_F(RowListTest, RowsOfDifferentHeightsFollowEachOther) {
    source.height = std::nullopt;
    makeList(100);
    EXPECT_EQ(list->rowRect(0), QRect(0, 6, 240, 30));
    EXPECT_EQ(list->rowRect(1), QRect(0, 36, 240, 40));
    EXPECT_EQ(list->rowRect(2), QRect(0, 76, 240, 50));
    EXPECT_EQ(list->rowRect(3), QRect(0, 126, 240, 30));
    EXPECT_EQ(list->rowAt(QPoint(1, 75)), 1);
    EXPECT_EQ(list->rowAt(QPoint(1, 76)), 2);
}

TEST_F(RowListTest, ReloadKeepsTheScrollPositionAndTheCurrentRow) {
    makeList(100);
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
    makeList(100);
    source.bound = 0;
    list->reload();
    EXPECT_EQ(source.bound, 10);
    EXPECT_EQ(source.made, 10);
}

TEST_F(RowListTest, SmallWheelStepsOfATouchpadAddUp) {
    makeList(100);
    for (int i = 0; i < 120; ++i)
        wheel(*list->viewport(), QPoint(100, 20), -1);
    EXPECT_NEAR(list->verticalScrollBar()->value(), QApplication::wheelScrollLines() * 20, 1);
}

TEST_F(RowListTest, ReturnActivatesTheCurrentRow) {
    makeList(5);
    keyClick(*list, Qt::Key_Return);
    EXPECT_THAT(log.take(), IsEmpty());
    list->setCurrentRow(4);
    keyClick(*list, Qt::Key_Return);
    keyClick(*list, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_THAT(log.take(), ElementsAre("activated", "4", "activated", "4"));
}

TEST_F(RowListTest, LettersAreHandedOnButShortcutsAreNot) {
    makeList(5);
    keyClick(*list, Qt::Key_S, Qt::NoModifier, QStringLiteral("s"));
    keyClick(*list, Qt::Key_S, Qt::ShiftModifier, QStringLiteral("S"));
    keyClick(*list, Qt::Key_S, Qt::ControlModifier, QStringLiteral("\x13"));
    keyClick(*list, Qt::Key_S, Qt::AltModifier, QStringLiteral("s"));
    keyClick(*list, Qt::Key_Escape, Qt::NoModifier, QStringLiteral("\x1b"));
    EXPECT_THAT(log.take(), ElementsAre("typed", "s", "typed", "S"));
}

TEST_F(RowListTest, EnsureVisibleScrollsNoFurtherThanNeeded) {
    makeList(100);
    list->ensureVisible(9);
    EXPECT_EQ(list->verticalScrollBar()->value(), 6 + 10 * 34 - 320);
    list->ensureVisible(5);
    EXPECT_EQ(list->verticalScrollBar()->value(), 6 + 10 * 34 - 320);
    list->ensureVisible(99);
    EXPECT_EQ(list->verticalScrollBar()->value(), list->verticalScrollBar()->maximum());
}

TEST_F(RowListTest, RowsAreListItemsNamedByTheirTitles) {
    makeList(100'000);
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

TEST_F(RowListTest, RowsThatAreNotLaidOutYetAreNotInTheTree) {
    source.height = std::nullopt;
    makeList(3);
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(list.get());
    source.rows = 10;
    EXPECT_EQ(interface->childCount(), 3);
    EXPECT_EQ(interface->child(5), nullptr);
    list->reload();
    EXPECT_EQ(interface->childCount(), 10);
    ASSERT_NE(interface->child(5), nullptr);
    EXPECT_EQ(interface->child(5)->rect().height(), 50);
}

TEST_F(RowListTest, ARowOutlivedByItsInterfaceIsInvalid) {
    makeList(100);
    QAccessibleInterface* row = QAccessible::queryAccessibleInterface(list.get())->child(70);
    EXPECT_TRUE(row->isValid());
    source.rows = 60;
    EXPECT_FALSE(row->isValid());
    EXPECT_TRUE(row->state().invalid);
    EXPECT_EQ(row->text(QAccessible::Name), QString());
}

} // namespace
} // namespace kestrel::linux_shell
