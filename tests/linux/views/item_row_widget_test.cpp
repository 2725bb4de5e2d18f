#include "shells/linux/views/item_row_widget.h"

#include "shells/linux/views/badge.h"
#include "shells/linux/views/item_row_metrics.h"
#include "shells/linux/views/kit/actions_menu.h"
#include "shells/linux/views/kit/ellipsis_button.h"
#include "shells/linux/views/kit/style_bridge.h"
#include "shells/linux/views/kit/wrapped_text.h"
#include "tests/linux/views/widget_fixture.h"
#include "views/settings/item_row_style.h"

#include <QAction>
#include <QMenu>

#include <gmock/gmock.h>

namespace kestrel::linux_shell {
namespace {

using testing::ElementsAre;
using tests::titles;

class ItemRowWidgetTest : public SettingsFixture {
  protected:
    ItemRowWidget& row(int index) {
        return *qobject_cast<ItemRowWidget*>(list().realisedRow(index));
    }
    double opacity(int index) { return row(index).actionsButton().shownOpacity(); }
    QList<QAction*> menuOf(int index) { return row(index).actionsButton().menu()->actions(); }
};

TEST_F(ItemRowWidgetTest, PartsStandTenPointsApartFromTheIconToTheBadge) {
    const ItemRowWidget::Layout parts = row(0).layoutOfParts();
    EXPECT_EQ(parts.icon.size(), QSize(22, 22));
    EXPECT_EQ(parts.icon.left(), itemRowInset);
    EXPECT_EQ(parts.title.left(), parts.icon.left() + 22 + 10);
    EXPECT_EQ(parts.detail.left(), parts.title.left());
    EXPECT_EQ(parts.detail.top(), parts.title.top() + parts.title.height() + 2);
    EXPECT_EQ(parts.badge.left(), parts.actions.left() + parts.actions.width() + 10);
    EXPECT_EQ(parts.badge.left() + parts.badge.width(), row(0).width() - itemRowInset);
    EXPECT_EQ(parts.badge.size(), badgeSize(QStringLiteral("App")));
}

TEST_F(ItemRowWidgetTest, FourPointsStayFreeAboveAndBelowTheText) {
    const ItemRowWidget::Layout parts = row(0).layoutOfParts();
    EXPECT_EQ(parts.title.top(), 4);
    EXPECT_EQ(row(0).height() - (parts.detail.top() + parts.detail.height()), 4);
    EXPECT_NEAR(parts.icon.center().y(), row(0).rect().center().y(), 1);
    EXPECT_NEAR(parts.badge.center().y(), row(0).rect().center().y(), 1);
}

TEST_F(ItemRowWidgetTest, ALongTitleWrapsAndMakesItsRowHigher) {
    const int before = row(0).height();
    LauncherItem changed = first;
    changed.title = std::string(120, 'm') + "\nand a second line";
    manager.items.replace(changed);
    turnEventLoop();
    EXPECT_GE(row(0).height(), before * 2);
    const ItemRowWidget::Layout parts = row(0).layoutOfParts();
    EXPECT_EQ(parts.title.top(), 4);
    EXPECT_EQ(row(0).height() - (parts.detail.top() + parts.detail.height()), 4);
    EXPECT_EQ(row(1).y(), row(0).y() + row(0).height());
    EXPECT_EQ(row(1).height(), before);
}

TEST_F(ItemRowWidgetTest, TheQuickHeightIsTheLaidOutOne) {
    const std::vector<std::string> texts{"",          "Editor",     "AV To. WA, fi ffl jjj",
                                         "Übersicht", "日本語",     "two\nlines",
                                         "M",         "\t\x01\x7f", "a\u2028b",
                                         "a\u2029b"};
    const QFont font = fontFor(item_row_style::title.font);
    for (const int width : {220, 300, 480, 900}) {
        const ItemRowMetrics metrics(width);
        for (const std::string& text : texts) {
            for (int times = 1; times < 40; ++times) {
                std::string title;
                for (int i = 0; i < times; ++i)
                    title += text;
                const int textWidth = itemRowColumns(QStringLiteral("App"), width).textWidth;
                const int expected = wrappedHeight(toQString(title), font, textWidth) + 2 +
                                     itemRowLineHeight(item_row_style::detail.font) + 8;
                ASSERT_EQ(metrics.heightFor(title, ItemType::app), expected)
                    << width << " " << title;
            }
        }
    }
}

TEST_F(ItemRowWidgetTest, ActionsShowOnHoverAndForTheCommittedItemInTheSamePlace) {
    const QRect place = row(0).actionsButton().geometry();
    EXPECT_EQ(opacity(0), 0);
    move(*list().viewport(), middleOf(0));
    EXPECT_EQ(opacity(0), 1);
    leave(*list().viewport());
    EXPECT_EQ(opacity(0), 0);
    view().setSelectedID(first.id);
    view().setSelectedID(std::nullopt);
    turnEventLoop();
    EXPECT_EQ(opacity(0), 1);
    EXPECT_EQ(opacity(1), 0);
    EXPECT_EQ(row(0).actionsButton().geometry(), place);
}

TEST_F(ItemRowWidgetTest, TabReachesTheActionsOfTheSelectedRowOnly) {
    view().setSelectedID(second.id);
    turnEventLoop();
    key(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &row(1).actionsButton());
    key(Qt::Key_Tab);
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    EXPECT_EQ(accessibleName(*QApplication::focusWidget()), QStringLiteral("Add"));
}

TEST_F(ItemRowWidgetTest, TheFocusShowsActionsThatAreInvisibleOtherwise) {
    row(2).actionsButton().setFocus();
    EXPECT_EQ(opacity(2), 1);
    list().setFocus();
    EXPECT_EQ(opacity(2), 0);
}

TEST_F(ItemRowWidgetTest, TheMenuOffersEditALineAndDelete) {
    const QList<QAction*> actions = menuOf(0);
    ASSERT_EQ(actions.size(), 3);
    EXPECT_EQ(actions[0]->text(), QStringLiteral("Edit"));
    EXPECT_TRUE(actions[1]->isSeparator());
    EXPECT_EQ(actions[2]->text(), QStringLiteral("Delete"));
}

TEST_F(ItemRowWidgetTest, TheMenuShowsTheKeysThatDoTheSame) {
    const auto text = [](int key) { return QKeySequence(key).toString(QKeySequence::NativeText); };
    EXPECT_EQ(ActionsMenu::shownKeys(*menuOf(0)[0]), text(Qt::Key_Return));
    EXPECT_EQ(ActionsMenu::shownKeys(*menuOf(0)[2]), text(Qt::Key_Delete));
}

TEST_F(ItemRowWidgetTest, TheMenuActsOnTheItemForWhichItOpened) {
    Q_EMIT row(1).actionsButton().menu()->aboutToShow();
    manager.items.assign({third, first, second});
    turnEventLoop();
    menuOf(1)[2]->trigger();
    turnEventLoop();
    EXPECT_THAT(titles(manager.items), ElementsAre("Third", "First"));
}

TEST_F(ItemRowWidgetTest, DeletingFromTheKeyboardLeavesNoOtherRowsActionsUnderTheNextKey) {
    view().setSelectedID(first.id);
    turnEventLoop();
    key(Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget(), &row(0).actionsButton());
    Q_EMIT row(0).actionsButton().menu()->aboutToShow();
    menuOf(0)[2]->trigger();
    turnEventLoop();
    EXPECT_THAT(titles(manager.items), ElementsAre("Second", "Third"));
    EXPECT_EQ(QApplication::focusWidget(), &list());
}

TEST_F(ItemRowWidgetTest, ArrowKeysOnTheActionsButtonAreTheLists) {
    view().setSelectedID(first.id);
    turnEventLoop();
    key(Qt::Key_Tab);
    key(Qt::Key_Down);
    EXPECT_EQ(view().selectedID(), second.id);
    EXPECT_EQ(QApplication::focusWidget(), &list());
}

TEST_F(ItemRowWidgetTest, TheMenusEditOpensTheSheetForTheRow) {
    Q_EMIT row(2).actionsButton().menu()->aboutToShow();
    menuOf(2)[0]->trigger();
    turnEventLoop();
    ASSERT_NE(widget->form(), nullptr);
    EXPECT_EQ(widget->form()->view().title(), "Third");
}

TEST_F(ItemRowWidgetTest, TheMenuClosesWhenAssistiveTechnologyChoosesFromIt) {
    for (const int choice : {0, 2}) {
        QMenu& menu = *row(0).actionsButton().menu();
        row(0).popUpMenu(QPoint(400, 400));
        turnEventLoop();
        ASSERT_TRUE(menu.isVisible());
        menuOf(0)[choice]->trigger();
        EXPECT_FALSE(menu.isVisible());
        turnEventLoop();
    }
}

TEST_F(ItemRowWidgetTest, TheMenuStaysClosedBehindTheForm) {
    view().addClicked();
    turnEventLoop();
    QAccessibleInterface* const button =
        QAccessible::queryAccessibleInterface(&row(0).actionsButton());
    ASSERT_NE(button, nullptr);
    QAccessibleActionInterface* const actions = button->actionInterface();
    ASSERT_NE(actions, nullptr);
    ASSERT_TRUE(actions->actionNames().isEmpty());
    actions->doAction(QAccessibleActionInterface::showMenuAction());
    turnEventLoop();
    EXPECT_FALSE(row(0).actionsButton().menu()->isVisible());
}

TEST_F(ItemRowWidgetTest, TheActionsButtonIsANamedMenuButton) {
    EXPECT_EQ(accessibleName(row(0).actionsButton()), QStringLiteral("Actions"));
    EXPECT_EQ(accessibleRole(row(0).actionsButton()), QAccessible::ButtonMenu);
}

} // namespace
} // namespace kestrel::linux_shell
