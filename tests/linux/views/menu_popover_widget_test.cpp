#include "shells/linux/views/menu_popover_widget.h"

#include "shells/linux/desktop/appearance/palettes.h"
#include "tests/linux/views/widget_fixture.h"

#include <gmock/gmock.h>

namespace kestrel::linux_shell {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class MenuPopoverWidgetTest : public tests::ThreeItemsFixture {
  protected:
    int settingsAsked = 0;
    int iconsAsked = 0;
    FileIconSource icons{[this](const std::string&) {
        ++iconsAsked;
        return QIcon();
    }};
    std::unique_ptr<MenuPopoverWidget> widget;

    void show() {
        widget = std::make_unique<MenuPopoverWidget>(
            std::make_unique<MenuPopoverView>(
                manager, mainQueue, clock,
                MenuPopoverView::Callbacks{
                    .onOpenSettings = [this] { ++settingsAsked; }, .onQuit = {}, .onClose = {}}),
            icons);
        widget->resize(240, 181);
        widget->move(300, 300); // away from where the pointer rests
        widget->show();
        widget->activateWindow();
        widget->setFocus(Qt::PopupFocusReason);
        turnEventLoop();
    }

    void key(int key) {
        sendWindowKey(*widget, key);
        turnEventLoop();
    }

    QString focusedName() {
        QWidget* const focused = QApplication::focusWidget();
        return focused == nullptr ? QString() : accessibleName(*focused);
    }

    void setItems(std::vector<LauncherItem> items) {
        manager.items.assign(std::move(items));
        turnEventLoop();
    }
};

TEST_F(MenuPopoverWidgetTest, PaletteThatChangesUnderItLeavesNothingOfTheOldOne) {
    LauncherItem pathless = first; // a symbol stands for it
    pathless.path.reset();
    manager.items.assign({pathless, second});
    turnEventLoop();
    show();
    const QImage light = widget->grab().toImage();
    QApplication::setPalette(paletteFor(ColorScheme::dark, Contrast::normal));
    turnEventLoop();
    const QImage changed = widget->grab().toImage();
    show();
    EXPECT_EQ(changed, widget->grab().toImage());
    EXPECT_NE(changed, light);
    QApplication::setPalette(QPalette());
    turnEventLoop();
    EXPECT_EQ(widget->grab().toImage(), light);
}

TEST_F(MenuPopoverWidgetTest, IconsThatChangeAreAskedForAnew) {
    show();
    iconsAsked = 0;
    widget->grab();
    EXPECT_EQ(iconsAsked, 0);
    Q_EMIT icons.changed();
    widget->grab();
    EXPECT_EQ(iconsAsked, 3);
}

TEST_F(MenuPopoverWidgetTest, TheListHasTheKeysAndTabGoesOnToTheFooter) {
    show();
    EXPECT_EQ(focusedName(), QStringLiteral("Items"));
    key(Qt::Key_Tab);
    EXPECT_EQ(focusedName(), QStringLiteral("Settings"));
    key(Qt::Key_Tab);
    EXPECT_EQ(focusedName(), QStringLiteral("Quit"));
    key(Qt::Key_Tab);
    EXPECT_EQ(focusedName(), QStringLiteral("Items"));
}

TEST_F(MenuPopoverWidgetTest, KeysThatComeAtOnceMeanWhatTheyMeanOneByOne) {
    show();
    keyClick(*QApplication::focusWidget(), Qt::Key_Down);
    keyClick(*QApplication::focusWidget(), Qt::Key_Down);
    keyClick(*QApplication::focusWidget(), Qt::Key_Down);
    keyClick(*QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_THAT(takeCalls(), ElementsAre(HasSubstr("/apps/three")));
    keyClick(*QApplication::focusWidget(), Qt::Key_S, Qt::NoModifier, QStringLiteral("s"));
    keyClick(*QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_THAT(takeCalls(), ElementsAre(HasSubstr("ls")));
}

TEST_F(MenuPopoverWidgetTest, ReturnAndSpacePressTheFocusedButtonOfTheFooter) {
    show();
    key(Qt::Key_Tab);
    for (const int press : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        settingsAsked = 0;
        key(press);
        EXPECT_EQ(settingsAsked, 1) << press;
    }
    EXPECT_THAT(takeCalls(), testing::IsEmpty());
}

TEST_F(MenuPopoverWidgetTest, SpaceLaunchesTheHighlightedRow) {
    show();
    key(Qt::Key_Down);
    sendWindowKey(*widget, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "));
    EXPECT_THAT(takeCalls(), ElementsAre(HasSubstr("/apps/one")));
}

TEST_F(MenuPopoverWidgetTest, OneMarkAtATimeShowsWhereTheKeysGo) {
    show();
    key(Qt::Key_Down);
    EXPECT_EQ(widget->list().currentRow(), 0);
    key(Qt::Key_Tab);
    EXPECT_EQ(focusedName(), QStringLiteral("Settings"));
    EXPECT_EQ(widget->list().currentRow(), -1);
    key(Qt::Key_Tab);
    EXPECT_EQ(widget->list().currentRow(), -1);
    key(Qt::Key_Tab);
    EXPECT_EQ(widget->list().currentRow(), 0) << "back where it was";
    key(Qt::Key_Backtab);
    QWidget& viewport = *widget->list().viewport();
    move(viewport, widget->list().rowRect(2).center());
    turnEventLoop();
    EXPECT_EQ(focusedName(), QStringLiteral("Items"));
    EXPECT_EQ(widget->list().currentRow(), 2);
}

TEST_F(MenuPopoverWidgetTest, WithoutItemsTheKeysReachTheFooterAllTheSame) {
    setItems({});
    show();
    EXPECT_EQ(focusedName(), QStringLiteral("Settings"));
    key(Qt::Key_Tab);
    EXPECT_EQ(focusedName(), QStringLiteral("Quit"));
    key(Qt::Key_Tab);
    EXPECT_EQ(focusedName(), QStringLiteral("Settings"));
    key(Qt::Key_Space);
    EXPECT_EQ(settingsAsked, 1);
}

TEST_F(MenuPopoverWidgetTest, TheKeysFollowWhenTheListComesAndGoes) {
    setItems({});
    show();
    setItems({first, second});
    EXPECT_EQ(focusedName(), QStringLiteral("Items"));
    setItems({});
    EXPECT_EQ(focusedName(), QStringLiteral("Settings"));
    key(Qt::Key_Tab);
    setItems({first});
    EXPECT_EQ(focusedName(), QStringLiteral("Quit"));
}

} // namespace
} // namespace kestrel::linux_shell
