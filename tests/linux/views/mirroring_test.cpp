// The windows where the language is written from right to left: each part stands where its mirror
// image would.

#include "shells/linux/views/item_row_widget.h"
#include "shells/linux/views/kit/ellipsis_button.h"
#include "shells/linux/views/kit/push_button.h"
#include "shells/linux/views/kit/rounded_field.h"
#include "shells/linux/views/kit/segmented_control.h"
#include "shells/linux/views/menu_popover_widget.h"
#include "shells/linux/views/popover_row.h"
#include "shells/linux/views/toolbar_button.h"
#include "tests/linux/views/widget_fixture.h"

#include <QAbstractButton>

#include <gtest/gtest.h>

#include <algorithm>

namespace kestrel::linux_shell {
namespace {

/// Where a widget's parts lie in it.
using Places = std::vector<QRect>;

QRect placeIn(const QWidget& whole, const QWidget& part) {
    return {part.mapTo(&whole, QPoint()), part.size()};
}

Places mirrored(Places places, int width) {
    for (QRect& place : places)
        place.moveLeft(width - place.left() - place.width());
    return places;
}

class MirroringTest : public SettingsFixture {
  protected:
    void TearDown() override { QApplication::setLayoutDirection(Qt::LeftToRight); }

    /// What `places` gives for the settings window in each direction is each other's mirror image.
    template <class F>
    void expectMirrored(F places) {
        QApplication::setLayoutDirection(Qt::LeftToRight);
        show();
        const Places left = places();
        QApplication::setLayoutDirection(Qt::RightToLeft);
        show();
        EXPECT_EQ(places(), mirrored(left, widget->width()));
    }
};

TEST_F(MirroringTest, ThePopoversRowsAndFooter) {
    const auto places = [this](Qt::LayoutDirection direction) {
        QApplication::setLayoutDirection(direction);
        MenuPopoverWidget popover(std::make_unique<MenuPopoverView>(manager, mainQueue, clock,
                                                                    MenuPopoverView::Callbacks{}),
                                  icons);
        popover.resize(240, 181);
        popover.show();
        turnEventLoop();
        const auto& row = static_cast<PopoverRow&>(*popover.list().realisedRow(0));
        const QPoint rowPlace = row.mapTo(&popover, QPoint());
        Places result{row.iconRect().translated(rowPlace), row.titleRect().translated(rowPlace)};
        for (const char* const name : {"Settings", "Quit"}) {
            for (const QAbstractButton* button : popover.findChildren<QAbstractButton*>())
                if (button->text() == QLatin1String(name))
                    result.push_back(placeIn(popover, *button));
        }
        EXPECT_EQ(result.size(), 4U);
        return result;
    };
    const Places left = places(Qt::LeftToRight);
    EXPECT_LT(left[0].right(), left[1].left());
    EXPECT_LT(left[2].right(), left[3].left());
    EXPECT_EQ(places(Qt::RightToLeft), mirrored(left, 240));
}

TEST_F(MirroringTest, TheFootersSymbolAndText) {
    const auto symbolSide = [](Qt::LayoutDirection direction) {
        FooterButton button(menu_popover_style::footer::settings);
        button.setLayoutDirection(direction);
        button.resize(button.sizeHint());
        const QImage image = button.grab().toImage();
        // From the edges to the first pixels of the symbol and of the text.
        const int row = button.height() / 2;
        int left = 0;
        int right = image.width() - 1;
        while (left < right && image.pixel(left, row) == image.pixel(0, 0))
            ++left;
        while (right > left && image.pixel(right, row) == image.pixel(0, 0))
            --right;
        return std::pair(left, image.width() - 1 - right);
    };
    const auto ltr = symbolSide(Qt::LeftToRight);
    const auto rtl = symbolSide(Qt::RightToLeft);
    EXPECT_NEAR(ltr.first, rtl.second, 2);
    EXPECT_NEAR(ltr.second, rtl.first, 2);
}

TEST_F(MirroringTest, TheToolbarAndTheRowsOfTheSettings) {
    expectMirrored([this] {
        Places result;
        for (const ToolbarButton* button : widget->toolbarButtons())
            result.push_back(placeIn(*widget, *button));
        const auto& row = static_cast<ItemRowWidget&>(*list().realisedRow(0));
        const auto parts = row.layoutOfParts();
        const QPoint rowPlace = row.mapTo(widget.get(), QPoint());
        for (const QRect& part :
             {parts.icon, parts.title, parts.detail, parts.actions, parts.badge})
            result.push_back(part.translated(rowPlace));
        result.push_back(placeIn(*widget, row.actionsButton()));
        return result;
    });
}

TEST_F(MirroringTest, TheForm) {
    expectMirrored([this] {
        view().addClicked();
        turnEventLoop();
        const ItemEditorForm& form = *widget->form();
        Places result;
        for (const QWidget* part :
             {static_cast<QWidget*>(&form.titleField()), static_cast<QWidget*>(&form.pathField()),
              static_cast<QWidget*>(&form.browseButton()),
              static_cast<QWidget*>(&form.cancelButton()),
              static_cast<QWidget*>(&form.confirmButton())})
            result.push_back(placeIn(*widget, *part));
        for (int segment = 0; segment < 3; ++segment)
            result.push_back(placeIn(*widget, form.typeControl().segment(segment)));
        return result;
    });
}

} // namespace
} // namespace kestrel::linux_shell
