#include "shells/linux/views/settings_widget.h"

#include "shells/linux/desktop/appearance/palettes.h"
#include "shells/linux/views/kit/push_button.h"
#include "shells/linux/views/kit/text_label.h"
#include "shells/linux/views/toolbar_button.h"
#include "tests/linux/views/widget_fixture.h"

#include <QScrollBar>

#include <gmock/gmock.h>

namespace kestrel::linux_shell {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::titles;

class SettingsWidgetTest : public SettingsFixture {};

TEST_F(SettingsWidgetTest, IsAtLeast480By360) {
    EXPECT_EQ(widget->minimumSize(), QSize(480, 360));
    EXPECT_EQ(widget->maximumSize(), QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
}

TEST_F(SettingsWidgetTest, TheStripHoldsThreeButtonsAtTheLeftAboveALineOfOnePoint) {
    const auto& buttons = widget->toolbarButtons();
    ASSERT_EQ(buttons.size(), 3U);
    for (int i = 0; i < 3; ++i) {
        QWidget& button = *buttons[static_cast<std::size_t>(i)];
        EXPECT_EQ(QRect(button.mapTo(widget.get(), QPoint()), button.size()),
                  QRect(6 + 52 * i, 4, 52, 42));
    }
    EXPECT_EQ(list().mapTo(widget.get(), QPoint()), QPoint(0, 4 + 42 + 4 + 1));
    EXPECT_EQ(list().size(), QSize(520, 420 - 51));
}

TEST_F(SettingsWidgetTest, ToolbarButtonsShowTheirLabelAsTooltipAndName) {
    QStringList labels;
    for (ToolbarButton* const button : widget->toolbarButtons()) {
        labels << button->toolTip();
        EXPECT_EQ(accessibleName(*button), button->toolTip());
        EXPECT_EQ(accessibleRole(*button), QAccessible::Button);
    }
    EXPECT_EQ(labels, QStringList({QStringLiteral("Add"), QStringLiteral("Edit"),
                                   QStringLiteral("Delete")}));
}

TEST_F(SettingsWidgetTest, PaletteThatChangesUnderItLeavesNothingOfTheOldOne) {
    LauncherItem pathless = first; // a symbol stands for it
    pathless.path.reset();
    manager.items.assign({pathless, second});
    turnEventLoop();
    const QImage light = widget->grab().toImage();
    for (const auto contrast : {Contrast::normal, Contrast::high}) {
        QApplication::setPalette(paletteFor(ColorScheme::dark, contrast));
        turnEventLoop();
        const QImage changed = widget->grab().toImage();
        show();
        EXPECT_EQ(changed, widget->grab().toImage());
        EXPECT_NE(changed, light);
    }
    QApplication::setPalette(QPalette());
    turnEventLoop();
    EXPECT_EQ(widget->grab().toImage(), light);
}

TEST_F(SettingsWidgetTest, EditAndDeleteAreDisabledUntilARowIsCommitted) {
    EXPECT_TRUE(widget->toolbarButtons()[0]->isEnabled());
    EXPECT_FALSE(widget->toolbarButtons()[1]->isEnabled());
    EXPECT_FALSE(widget->toolbarButtons()[2]->isEnabled());
    clickRow(1);
    EXPECT_TRUE(widget->toolbarButtons()[1]->isEnabled());
    EXPECT_TRUE(widget->toolbarButtons()[2]->isEnabled());
    EXPECT_EQ(view().selectedID(), second.id);
}

TEST_F(SettingsWidgetTest, AClickBesideTheRowsClearsTheSelectionOnly) {
    clickRow(1);
    click(*list().viewport(), QPoint(200, 350));
    turnEventLoop();
    EXPECT_EQ(list().currentRow(), -1);
    EXPECT_EQ(view().selectedID(), std::nullopt);
    EXPECT_TRUE(widget->toolbarButtons()[1]->isEnabled());
    EXPECT_EQ(view().committedID(), second.id);
}

TEST_F(SettingsWidgetTest, TheToolbarsDeleteRemovesTheCommittedRow) {
    clickRow(1);
    click(*widget->toolbarButtons()[2], QPoint(20, 20));
    turnEventLoop();
    EXPECT_THAT(titles(manager.items), ElementsAre("First", "Third"));
    EXPECT_EQ(list().currentRow(), -1);
    EXPECT_FALSE(widget->toolbarButtons()[2]->isEnabled());
}

TEST_F(SettingsWidgetTest, DeletingTheLastItemShowsThePlaceholderAndAddingOneTheList) {
    EXPECT_TRUE(list().isVisible());
    EXPECT_FALSE(widget->placeholder().isVisible());
    manager.items.assign({});
    turnEventLoop();
    EXPECT_FALSE(list().isVisible());
    EXPECT_TRUE(widget->placeholder().isVisible());
    manager.items.append(first);
    turnEventLoop();
    EXPECT_TRUE(list().isVisible());
    EXPECT_FALSE(widget->placeholder().isVisible());
}

TEST_F(SettingsWidgetTest, ThePlaceholdersButtonOpensTheAddSheet) {
    manager.items.assign({});
    turnEventLoop();
    auto* const button = widget->placeholder().findChild<PushButton*>();
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(button->text(), QStringLiteral("Add First Item"));
    EXPECT_EQ(QApplication::focusWidget(), button);
    button->click();
    turnEventLoop();
    ASSERT_NE(widget->form(), nullptr);
    EXPECT_FALSE(widget->form()->view().isEditing());
}

TEST_F(SettingsWidgetTest, ThePlaceholdersHintWrapsWithin320PointsIntoTwoEvenLines) {
    manager.items.assign({});
    turnEventLoop();
    const auto labels = widget->placeholder().findChildren<TextLabel*>();
    ASSERT_EQ(labels.size(), 2);
    const TextLabel& hint = *labels[1];
    const int line = QFontMetrics(hint.font()).height();
    const int whole = QFontMetrics(hint.font()).horizontalAdvance(hint.text());
    ASSERT_GT(whole, 320);
    EXPECT_LE(hint.width(), whole * 6 / 10);
    EXPECT_EQ(hint.height(), 2 * line);
    EXPECT_EQ(hint.geometry().center().x(), widget->placeholder().rect().center().x());
}

TEST_F(SettingsWidgetTest, ADoubleClickOpensTheEditSheetForTheRow) {
    doubleClick(*list().viewport(), middleOf(2));
    turnEventLoop();
    ASSERT_NE(widget->form(), nullptr);
    EXPECT_TRUE(widget->form()->view().isEditing());
    EXPECT_EQ(widget->form()->view().title(), "Third");
}

TEST_F(SettingsWidgetTest, TheKeyboardSelectsMovesEditsAndDeletes) {
    EXPECT_EQ(QApplication::focusWidget(), &list());
    key(Qt::Key_Down);
    EXPECT_EQ(view().selectedID(), first.id);
    key(Qt::Key_Down, Qt::AltModifier);
    EXPECT_THAT(titles(manager.items), ElementsAre("Second", "First", "Third"));
    EXPECT_EQ(list().currentRow(), 1);
    key(Qt::Key_Up, Qt::AltModifier);
    EXPECT_THAT(titles(manager.items), ElementsAre("First", "Second", "Third"));
    EXPECT_EQ(list().currentRow(), 0);
    key(Qt::Key_T, Qt::NoModifier, QStringLiteral("t"));
    EXPECT_EQ(view().selectedID(), third.id);
    key(Qt::Key_Return);
    ASSERT_NE(widget->form(), nullptr);
    key(Qt::Key_Escape);
    key(Qt::Key_Delete);
    EXPECT_THAT(titles(manager.items), ElementsAre("First", "Second"));
    EXPECT_EQ(view().committedID(), std::nullopt);
}

TEST_F(SettingsWidgetTest, ADroppedRowMovesAndIsSaved) {
    press(*list().viewport(), middleOf(0));
    drag(*list().viewport(), middleOf(1));
    drag(*list().viewport(), middleOf(2) + QPoint(0, 10));
    turnEventLoop();
    release(*list().viewport(), middleOf(2) + QPoint(0, 10));
    turnEventLoop();
    EXPECT_THAT(titles(manager.items), ElementsAre("Second", "Third", "First"));
    EXPECT_THAT(storedTitles(), ElementsAre("Second", "Third", "First"));
    EXPECT_EQ(list().currentRow(), 2);
}

TEST_F(SettingsWidgetTest, ARedrawKeepsScrollPositionAndSelection) {
    std::vector<LauncherItem> many;
    for (int i = 0; i < 200; ++i)
        many.push_back(tests::appItem("Item " + std::to_string(i)));
    manager.items.assign(many);
    turnEventLoop();
    view().setSelectedID(many[60].id);
    turnEventLoop();
    list().verticalScrollBar()->setValue(1500);
    manager.items.append(first);
    turnEventLoop();
    EXPECT_EQ(list().verticalScrollBar()->value(), 1500);
    EXPECT_EQ(list().currentRow(), 60);
    EXPECT_EQ(list().source().count(), 201);
}

TEST_F(SettingsWidgetTest, OnlyTheIconsOfRowsInSightAreLookedUp) {
    std::vector<LauncherItem> many;
    for (int i = 0; i < 2000; ++i)
        many.push_back(tests::appItem("Item", "/apps/" + std::to_string(i)));
    iconsAsked.clear();
    manager.items.assign(many);
    turnEventLoop();
    const std::size_t asked = iconsAsked.size();
    EXPECT_GE(asked, 9U);
    EXPECT_LE(asked, 24U);
    EXPECT_LE(list().realisedCount(), 12);
}

TEST_F(SettingsWidgetTest, SeveralChangesInOneTurnCostOneRedraw) {
    iconsAsked.clear();
    manager.items.append(tests::appItem("Fourth"));
    manager.items.append(tests::appItem("Fifth"));
    view().setSelectedID(first.id);
    EXPECT_THAT(iconsAsked, IsEmpty());
    QApplication::processEvents();
    EXPECT_EQ(iconsAsked.size(), manager.items.size());
}

TEST_F(SettingsWidgetTest, IconsThatChangeAreAskedForAnew) {
    iconsAsked.clear();
    Q_EMIT icons.changed();
    EXPECT_THAT(iconsAsked, ElementsAre("/apps/one", "/terminal", "/apps/three"));
}

TEST_F(SettingsWidgetTest, TheSheetKeepsTheUserFromTheRest) {
    view().addClicked();
    turnEventLoop();
    ASSERT_NE(widget->form(), nullptr);
    EXPECT_FALSE(list().isEnabled());
    EXPECT_FALSE(widget->toolbarButtons()[0]->isEnabled());
    for (int i = 0; i < 20; ++i) {
        key(Qt::Key_Tab);
        EXPECT_TRUE(widget->form()->isAncestorOf(QApplication::focusWidget())) << i;
    }
    EXPECT_EQ(widget->childAt(30, 30)->objectName(), widget->form()->parentWidget()->objectName());
    EXPECT_EQ(accessibleRole(*widget->form()->parentWidget()), QAccessible::Dialog);
    EXPECT_EQ(accessibleName(*widget->form()->parentWidget()), QStringLiteral("Add Item"));
}

TEST_F(SettingsWidgetTest, TheSheetHangsCentredFromTheTopEdge) {
    view().addClicked();
    turnEventLoop();
    EXPECT_EQ(widget->form()->geometry().topLeft(), QPoint((520 - 460) / 2, 0));
    widget->resize(700, 500);
    turnEventLoop();
    EXPECT_EQ(widget->form()->x(), (700 - 460) / 2);
    EXPECT_EQ(widget->form()->parentWidget()->size(), QSize(700, 500));
}

TEST_F(SettingsWidgetTest, TheSheetFitsIntoTheSmallestWindow) {
    widget->resize(480, 360);
    view().addClicked();
    turnEventLoop();
    EXPECT_TRUE(widget->rect().contains(widget->form()->geometry()));
}

TEST_F(SettingsWidgetTest, SavingTheAddSheetAppendsTheItemUnselected) {
    view().addClicked();
    turnEventLoop();
    widget->form()->view().setTitle("Fourth");
    turnEventLoop();
    widget->form()->confirmButton().click();
    turnEventLoop();
    EXPECT_THAT(titles(manager.items), ElementsAre("First", "Second", "Third", "Fourth"));
    EXPECT_EQ(widget->form(), nullptr);
    EXPECT_FALSE(view().showAddSheet());
    EXPECT_EQ(list().currentRow(), -1);
    EXPECT_TRUE(list().isEnabled());
    EXPECT_EQ(QApplication::focusWidget(), &list());
}

TEST_F(SettingsWidgetTest, TheWindowMayCloseWhileASheetIsOpen) {
    view().editItem(first);
    turnEventLoop();
    ASSERT_NE(widget->form(), nullptr);
    widget.reset();
    turnEventLoop();
    manager.items.append(second);
    turnEventLoop();
    EXPECT_EQ(manager.items.size(), 4U);
}

TEST_F(SettingsWidgetTest, TheWindowMayCloseWhileTheOpenPanelShows) {
    view().editItem(first);
    turnEventLoop();
    openPanel.whileShown = [this] { widget.reset(); };
    openPanel.result = "/apps/other";
    widget->form()->browseButton().click();
    turnEventLoop();
    EXPECT_EQ(widget, nullptr);
    EXPECT_THAT(titles(manager.items), ElementsAre("First", "Second", "Third"));
}

TEST_F(SettingsWidgetTest, TheListIsNamedAndItsRowsAreNamedByTheirItems) {
    EXPECT_EQ(accessibleRole(list()), QAccessible::List);
    EXPECT_EQ(accessibleName(list()), QStringLiteral("Items"));
    QAccessibleInterface* const interface = QAccessible::queryAccessibleInterface(&list());
    ASSERT_EQ(interface->childCount(), 3);
    EXPECT_EQ(interface->child(1)->role(), QAccessible::ListItem);
    EXPECT_EQ(interface->child(1)->text(QAccessible::Name), QStringLiteral("Second"));
    EXPECT_EQ(interface->child(1)->text(QAccessible::Description),
              QStringLiteral("Inline Command, ls"));
}

TEST_F(SettingsWidgetTest, KeysThatComeAtOnceMeanWhatTheyMeanOneByOne) {
    clickRow(0);
    keyClick(*QApplication::focusWidget(), Qt::Key_Down, Qt::AltModifier);
    keyClick(*QApplication::focusWidget(), Qt::Key_Up);
    EXPECT_EQ(view().selectedID(), second.id);
    keyClick(*QApplication::focusWidget(), Qt::Key_T, Qt::NoModifier, QStringLiteral("t"));
    keyClick(*QApplication::focusWidget(), Qt::Key_Up, Qt::AltModifier);
    keyClick(*QApplication::focusWidget(), Qt::Key_Return);
    turnEventLoop();
    EXPECT_THAT(titles(manager.items), ElementsAre("Second", "Third", "First"));
    ASSERT_NE(widget->form(), nullptr);
    EXPECT_EQ(widget->form()->view().title(), "Third");
}

TEST_F(SettingsWidgetTest, AKeyRightAfterADeletionFindsNoRow) {
    clickRow(0);
    keyClick(*QApplication::focusWidget(), Qt::Key_Delete);
    keyClick(*QApplication::focusWidget(), Qt::Key_Return);
    turnEventLoop();
    EXPECT_THAT(titles(manager.items), ElementsAre("Second", "Third"));
    EXPECT_EQ(widget->form(), nullptr);
}

} // namespace
} // namespace kestrel::linux_shell
