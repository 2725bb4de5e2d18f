// Keys that follow each other before the event loop has had a turn, as they do after a moment in
// which the program was busy.

#include "shells/linux/views/kit/rounded_field.h"
#include "shells/linux/views/menu_popover_widget.h"
#include "tests/linux/views/widget_fixture.h"

#include <QScrollBar>

#include <gmock/gmock.h>

namespace kestrel::linux_shell {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using tests::titles;

class QuickPopoverInputTest : public tests::ThreeItemsFixture {
  protected:
    FileIconSource icons{[](const std::string&) { return QIcon(); }};
    std::unique_ptr<MenuPopoverWidget> widget;

    void SetUp() override {
        ThreeItemsFixture::SetUp();
        manager.items.assign({first, third});
        widget = std::make_unique<MenuPopoverWidget>(
            std::make_unique<MenuPopoverView>(manager, mainQueue, clock,
                                              MenuPopoverView::Callbacks{}),
            icons);
        widget->resize(240, 121);
        widget->move(300, 300);
        widget->show();
        widget->activateWindow();
        widget->setFocus();
        turnEventLoop();
    }

    void quickKey(int key) { queueWindowKey(*widget, key); }
};

TEST_F(QuickPopoverInputTest, ReturnRightAfterAnArrowLaunchesTheRowThatTheArrowLedTo) {
    quickKey(Qt::Key_Home);
    quickKey(Qt::Key_Return);
    turnEventLoop();
    EXPECT_THAT(takeCalls(), Contains("workspace.openApplication /apps/one"));
    quickKey(Qt::Key_Down);
    quickKey(Qt::Key_Return);
    turnEventLoop();
    const auto calls = takeCalls();
    EXPECT_THAT(calls, Contains("workspace.openApplication /apps/three"));
    EXPECT_THAT(calls, Not(Contains("workspace.openApplication /apps/one")));
}

TEST_F(QuickPopoverInputTest, AClickOnARowThatHasJustGoneLaunchesNothing) {
    const QPoint place = widget->list().rowRect(1).center();
    manager.items.remove({0, 1});
    click(*widget->list().viewport(), place);
    EXPECT_THAT(takeCalls(), IsEmpty());
    turnEventLoop();
}

class QuickSettingsInputTest : public SettingsFixture {
  protected:
    void quickKey(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
                  const QString& text = {}) {
        queueWindowKey(*widget, key, modifiers, text);
    }
};

TEST_F(QuickSettingsInputTest, ReturnRightAfterTheLastRowWasDeletedOpensNothing) {
    clickRow(2);
    quickKey(Qt::Key_Delete);
    quickKey(Qt::Key_Return);
    turnEventLoop();
    EXPECT_THAT(titles(manager.items), ElementsAre("First", "Second"));
    EXPECT_EQ(widget->form(), nullptr);
}

TEST_F(QuickSettingsInputTest, ReturnRightAfterAMoveEditsTheRowThatMoved) {
    clickRow(0);
    quickKey(Qt::Key_Down, Qt::AltModifier);
    quickKey(Qt::Key_Return);
    turnEventLoop();
    EXPECT_EQ(view().itemToEdit(), first);
}

TEST_F(QuickSettingsInputTest, EndRightAfterADeletionLeadsToTheLastRowThatIsLeft) {
    std::vector<LauncherItem> many;
    for (int i = 0; i < 100; ++i)
        many.push_back(tests::appItem(std::to_string(i)));
    manager.items.assign(std::move(many));
    turnEventLoop();
    clickRow(0);
    quickKey(Qt::Key_Delete);
    quickKey(Qt::Key_End);
    turnEventLoop();
    EXPECT_EQ(list().currentRow(), 98);
    EXPECT_EQ(view().selectedID(), manager.items[98].id);
}

TEST_F(QuickSettingsInputTest, LettersRightAfterReturnAreTypedIntoTheForm) {
    clickRow(0);
    quickKey(Qt::Key_Return);
    quickKey(Qt::Key_S, Qt::ShiftModifier, QStringLiteral("S"));
    turnEventLoop();
    ASSERT_NE(widget->form(), nullptr);
    EXPECT_EQ(widget->form()->view().title(), "S");
    EXPECT_EQ(view().selectedID(), first.id);
}

TEST_F(QuickSettingsInputTest, TheFormSavesRightAfterItsFirstLetter) {
    view().addClicked();
    turnEventLoop();
    quickKey(Qt::Key_N, Qt::ShiftModifier, QStringLiteral("N"));
    quickKey(Qt::Key_Return, Qt::ControlModifier);
    turnEventLoop();
    EXPECT_THAT(titles(manager.items), ElementsAre("First", "Second", "Third", "N"));
}

TEST_F(QuickSettingsInputTest, AListThatIsLaidOutBeforeItHearsOfADeletionAsksForNoRowThatIsGone) {
    std::vector<LauncherItem> many;
    for (int i = 0; i < 100; ++i)
        many.push_back(tests::appItem(std::to_string(i)));
    manager.items.assign(std::move(many));
    turnEventLoop();
    manager.items.assign({first});
    list().verticalScrollBar()->setValue(list().verticalScrollBar()->maximum());
    widget->resize(600, 700);
    QAccessibleInterface* const rows = QAccessible::queryAccessibleInterface(&list());
    EXPECT_EQ(rows->childCount(), 1);
    turnEventLoop();
    EXPECT_EQ(list().realisedCount(), 1);
}

} // namespace
} // namespace kestrel::linux_shell
