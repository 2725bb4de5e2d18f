// The list of the settings window: what is seen of a row that is carried, of the selection and of
// what keys and forms do.

#include "shells/linux/views/settings_list.h"

#include "shells/linux/desktop/appearance/contrast.h"
#include "shells/linux/views/item_row_widget.h"
#include "shells/linux/views/kit/ellipsis_button.h"
#include "shells/linux/views/kit/push_button.h"
#include "shells/linux/views/kit/row_ghost.h"
#include "shells/linux/views/toolbar_button.h"
#include "tests/linux/views/pictures.h"
#include "tests/linux/views/theme_palettes.h"
#include "tests/linux/views/widget_fixture.h"

#include <QMenu>
#include <QPaintEvent>
#include <QScrollBar>

#include <gmock/gmock.h>

namespace kestrel::linux_shell {
namespace {

using testing::ElementsAre;
using tests::titles;

class SettingsListTest : public SettingsFixture {};

/// What of a widget is painted.
class PaintLog : public QObject {
  public:
    explicit PaintLog(QWidget& widget) { widget.installEventFilter(this); }

    QRegion painted;

  protected:
    bool eventFilter(QObject* /*receiver*/, QEvent* event) override {
        if (event->type() == QEvent::Paint)
            painted += static_cast<QPaintEvent*>(event)->region();
        return false;
    }
};

TEST_F(SettingsListTest, ARowThatIsCarriedLeavesItsPlaceToTheOthersAndNothingBehind) {
    const auto picture = [this](int row) {
        return list().viewport()->grab(list().rowRect(row)).toImage();
    };
    const QImage before = picture(1);
    press(*list().viewport(), middleOf(0));
    drag(*list().viewport(), middleOf(1));
    drag(*list().viewport(), QPoint(60, 300));
    turnEventLoop();
    EXPECT_EQ(picture(0), before);
    drag(*list().viewport(), QPoint(-20, 300));
    turnEventLoop();
    QImage plain = picture(0);
    plain.fill(plain.pixelColor(plain.rect().center()));
    EXPECT_EQ(picture(0).copy(8, 8, 200, 20), plain.copy(8, 8, 200, 20));
    EXPECT_EQ(picture(1), before);
    release(*list().viewport(), QPoint(-20, 300));
    turnEventLoop();
    EXPECT_THAT(titles(manager.items), ElementsAre("First", "Second", "Third"));
}

TEST_F(SettingsListTest, TheTitleOnTheCardIsReadableInAllColors) {
    const auto contrastOfTitle = [this] {
        const QWidget* const card = list().viewport()->findChild<RowGhost*>();
        if (card == nullptr)
            return 0.0;
        const auto& row = static_cast<const ItemRowWidget&>(*list().realisedRow(0));
        QRect place = row.rect();
        place.moveCenter(card->geometry().center());
        const QRect title = row.layoutOfParts().title.translated(place.topLeft());
        const QImage image = list().viewport()->grab(title).toImage();
        return greatestContrast(image, image.pixelColor(image.width() - 1, 0));
    };
    const QPalette before = QApplication::palette();
    for (const NamedPalette& theme : themePalettes()) {
        QApplication::setPalette(theme.palette);
        turnEventLoop();
        press(*list().viewport(), middleOf(0));
        drag(*list().viewport(), middleOf(1));
        turnEventLoop();
        EXPECT_EQ(list().currentRow(), 0);
        EXPECT_GE(contrastOfTitle(), readableText) << theme.name;
        drag(*list().viewport(), QPoint(-20, middleOf(1).y())); // where it would not land
        turnEventLoop();
        EXPECT_GE(contrastOfTitle(), isHighContrast(theme.palette) ? readableText : 2)
            << theme.name;
        keyClick(list(), Qt::Key_Escape);
    }
    QApplication::setPalette(before);
}

TEST_F(SettingsListTest, TheHighlightIsPaintedWholeWhenTheFocusGoesThroughTheRowsButton) {
    clickRow(1);
    QWidget* const button = list().realisedRow(1)->findChild<EllipsisButton*>();
    ASSERT_NE(button, nullptr);
    const QRegion row = list().rowRect(1);
    for (const bool leaves : {true, false, true}) {
        if (leaves)
            button->setFocus(Qt::TabFocusReason);
        turnEventLoop();
        PaintLog paints(*list().viewport());
        (leaves ? widget->toolbarButtons()[0] : button)->setFocus(Qt::TabFocusReason);
        turnEventLoop();
        EXPECT_TRUE(row.subtracted(paints.painted).isEmpty()) << leaves;
    }
}

TEST_F(SettingsListTest, TheSelectionStaysWhereTheKeysAreWhileTheRowsMenuHasThem) {
    clickRow(1);
    turnEventLoop();
    const auto highlight = [this] {
        const QRect row = list().rowRect(1);
        return list().viewport()->grab(row).toImage().pixelColor(row.width() / 2, 2);
    };
    const QColor before = highlight();
    auto& row = static_cast<ItemRowWidget&>(*list().realisedRow(1));
    row.popUpMenu(QPoint(400, 400));
    turnEventLoop();
    QMenu& menu = *row.findChild<EllipsisButton*>()->menu();
    keyClick(menu, Qt::Key_Down);
    ASSERT_TRUE(menu.hasFocus());
    EXPECT_EQ(highlight(), before);
    menu.hide();
    turnEventLoop();
    widget->toolbarButtons()[0]->setFocus(Qt::TabFocusReason);
    EXPECT_NE(highlight(), before);
}

TEST_F(SettingsListTest, AnAddedRowIsScrolledToAndOneFromElsewhereIsNot) {
    std::vector<LauncherItem> many;
    many.reserve(50);
    for (int i = 0; i < 50; ++i)
        many.push_back(tests::appItem("Item " + std::to_string(i)));
    manager.items.assign(many);
    turnEventLoop();
    QScrollBar& bar = *list().verticalScrollBar();
    manager.items.append(first);
    turnEventLoop();
    EXPECT_EQ(bar.value(), 0);

    view().addClicked();
    turnEventLoop();
    widget->form()->view().setTitle("Added");
    turnEventLoop();
    widget->form()->confirmButton().click();
    turnEventLoop();
    EXPECT_GT(bar.maximum(), 0);
    EXPECT_EQ(bar.value(), bar.maximum());
    EXPECT_EQ(list().currentRow(), -1);
    bar.setValue(0);
    manager.items.append(second);
    turnEventLoop();
    EXPECT_EQ(bar.value(), 0);
}

TEST_F(SettingsListTest, TheArrowsGoOnFromADeletedRow) {
    clickRow(1);
    key(Qt::Key_Delete);
    EXPECT_EQ(list().currentRow(), -1);
    key(Qt::Key_Down);
    EXPECT_EQ(view().selectedID(), third.id);
    key(Qt::Key_Delete);
    key(Qt::Key_Up);
    EXPECT_EQ(view().selectedID(), first.id);
    EXPECT_EQ(list().currentRow(), 0);
}

} // namespace
} // namespace kestrel::linux_shell
