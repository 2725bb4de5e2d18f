// What a user sees in the corners of the two lists: texts that do not fit, the highlight, a list
// that is empty, just fits or just does not. Read off the laid out widgets and their pixels.

#include "shells/linux/views/item_row_widget.h"
#include "shells/linux/views/kit/style_bridge.h"
#include "shells/linux/views/kit/text_label.h"
#include "shells/linux/views/menu_popover_widget.h"
#include "shells/linux/views/popover_row.h"
#include "tests/linux/views/widget_fixture.h"
#include "views/popover/menu_popover_style.h"
#include "views/settings/item_row_style.h"

#include <QFontMetrics>
#include <QImage>
#include <QScrollBar>

#include <gtest/gtest.h>

#include <cstdlib>

namespace kestrel::linux_shell {
namespace {

/// The smallest rectangle that holds every pixel in which two images of one size differ.
QRect differenceOf(const QImage& a, const QImage& b) {
    QRect result;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x)
            if (a.pixel(x, y) != b.pixel(x, y))
                result |= QRect(x, y, 1, 1);
    }
    return result;
}

class PopoverRenderingTest : public tests::StoreFixture {
  protected:
    ItemsManager manager{ports};
    FileIconSource icons{[](const std::string&) { return QIcon(); }};
    std::unique_ptr<MenuPopoverWidget> widget;

    /// The popover with these items, as large as it opens.
    void show(const std::vector<LauncherItem>& items) {
        manager.items.assign(items);
        widget = std::make_unique<MenuPopoverWidget>(
            std::make_unique<MenuPopoverView>(
                manager, mainQueue, clock,
                MenuPopoverView::Callbacks{.onOpenSettings = {}, .onQuit = {}, .onClose = {}}),
            icons);
        widget->resize(sizeFor(menu_popover_style::contentSize(items.size())));
        widget->move(300, 300); // away from where the pointer rests
        widget->show();
        turnEventLoop();
    }

    /// A popover of so many rows.
    void showRows(int count) {
        std::vector<LauncherItem> items;
        for (int i = 0; i < count; ++i)
            items.push_back(tests::appItem(std::to_string(i)));
        show(items);
    }

    /// The image of a row that shows `title`.
    QImage rowOf(const std::string& title) {
        show({tests::appItem(title)});
        return widget->list().realisedRow(0)->grab().toImage();
    }
};

TEST_F(PopoverRenderingTest, TheEmptyStateIsASymbolAndTwoLinesInTheMiddleOf140Points) {
    show({});
    EXPECT_FALSE(widget->list().isVisible());
    const auto symbols = widget->findChildren<SymbolLabel*>();
    const auto texts = widget->findChildren<TextLabel*>();
    ASSERT_EQ(symbols.size(), 1);
    ASSERT_EQ(texts.size(), 2);
    EXPECT_EQ(texts[0]->text(), QStringLiteral("No items yet"));
    EXPECT_EQ(texts[1]->text(), QStringLiteral("Open Settings to add items."));
    const auto placeOf = [this](QWidget* part) {
        EXPECT_TRUE(part->isVisible());
        return QRect(part->mapTo(widget.get(), QPoint()), part->size());
    };
    const QRect symbol = placeOf(symbols[0]);
    const QRect title = placeOf(texts[0]);
    const QRect hint = placeOf(texts[1]);
    EXPECT_EQ(title.top() - (symbol.top() + symbol.height()), 8);
    EXPECT_EQ(hint.top() - (title.top() + title.height()), 8);
    EXPECT_NEAR(symbol.top(), 140 - (hint.top() + hint.height()), 1);
    for (const QRect& part : {symbol, title, hint})
        EXPECT_NEAR(part.center().x(), 120, 1);
}

TEST_F(PopoverRenderingTest, NineRowsAreShownWholeAndTenAreScrolled) {
    showRows(9);
    const RowList& nine = widget->list();
    EXPECT_EQ(nine.viewport()->height(), 318);
    EXPECT_EQ(nine.verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(nine.rowRect(0).top(), 6);
    EXPECT_EQ(nine.rowRect(8).top() + 34, 318 - 6);
    showRows(10);
    const RowList& ten = widget->list();
    EXPECT_EQ(ten.viewport()->height(), 320);
    EXPECT_EQ(ten.verticalScrollBar()->maximum(), 10 * 34 + 12 - 320);
}

TEST_F(PopoverRenderingTest, ALongTitleIsCutToOneLineWithAnEllipsis) {
    const std::string words = "a title of very many words that no popover is wide enough for ";
    const QImage row = rowOf(words + words + "one");
    EXPECT_EQ(row.height(), 34);
    EXPECT_EQ(row, rowOf(words + words + "two")) << "what does not fit is not shown";
    EXPECT_NE(rowOf("one"), rowOf("two"));
    // Neither a second line nor anything beyond the padding at the end.
    const QRect ink = differenceOf(row, rowOf(""));
    EXPECT_LE(ink.height(), QFontMetrics(fontFor(menu_popover_style::row::title.font)).height());
    EXPECT_GT(ink.right(), 180);
    EXPECT_LT(ink.right(), 240 - 12);
    // It is what a title that fits, with the ellipsis as its own last character, looks like.
    const QString cut = QFontMetrics(fontFor(menu_popover_style::row::title.font))
                            .elidedText(toQString(words), Qt::ElideRight, 240 - 12 - 18 - 10 - 12);
    EXPECT_TRUE(cut.endsWith(QChar(0x2026)));
    EXPECT_EQ(row, rowOf(cut.toStdString()));

    EXPECT_EQ(rowOf("first\nsecond"), rowOf("first\u2026"));
    EXPECT_EQ(rowOf("first\u2028second"), rowOf("first\u2026"));
}

TEST_F(PopoverRenderingTest, TheHighlightIsARoundedFaintRectangleFourPointsFromTheEdges) {
    showRows(3);
    const QRect row = widget->list().rowRect(1);
    const QImage before = widget->grab().toImage();
    move(*widget->list().viewport(), row.center());
    turnEventLoop();
    const QImage highlighted = widget->grab().toImage();
    const QRect changed = differenceOf(before, highlighted);
    EXPECT_EQ(changed, row.marginsRemoved(QMargins(4, 0, 4, 0)));
    EXPECT_EQ(highlighted.pixel(changed.topLeft()), before.pixel(changed.topLeft()));
    EXPECT_EQ(highlighted.pixel(changed.bottomRight()), before.pixel(changed.bottomRight()));
    // The text's colour, 8 parts of 100, on the background.
    const QPoint free(row.right() - 20, row.center().y());
    const QColor background = before.pixelColor(free);
    const QColor text = widget->palette().color(QPalette::Active, QPalette::WindowText);
    EXPECT_NEAR(highlighted.pixelColor(free).green(),
                background.green() + 0.08 * (text.green() - background.green()), 1.5);

    leave(*widget->list().viewport());
    turnEventLoop();
    EXPECT_EQ(widget->grab().toImage(), before);
}

class ItemRowRenderingTest : public SettingsFixture {
  protected:
    /// The image of the detail line of an item with that path.
    QImage detailOf(const std::string& path) {
        manager.items.assign({tests::appItem("Title", path)});
        turnEventLoop();
        auto* const row = qobject_cast<ItemRowWidget*>(list().realisedRow(0));
        height = row->height();
        return row->grab().toImage().copy(row->layoutOfParts().detail);
    }
    int height = 0;
};

TEST_F(ItemRowRenderingTest, AVeryLongPathIsOneLineWithItsEllipsisInTheMiddle) {
    const QImage noPath = detailOf("/");
    const int heightOfAShortOne = height;
    const auto path = [](const char* start, char middle, const char* end) {
        return start + std::string(400, middle) + end;
    };
    const QImage detail = detailOf(path("/opt/start-", 'x', "-end/editor"));
    EXPECT_EQ(height, heightOfAShortOne);
    const QRect ink = differenceOf(detail, noPath);
    EXPECT_LE(ink.right(), detail.width());
    EXPECT_GT(ink.right(), detail.width() * 3 / 4);
    // Both ends are shown, and of the middle nothing.
    EXPECT_NE(detail, detailOf(path("/opt/other-", 'x', "-end/editor")));
    EXPECT_NE(detail, detailOf(path("/opt/start-", 'x', "-end/viewer")));
    const std::string half(200, 'x');
    EXPECT_EQ(detail, detailOf("/opt/start-" + half + "MIDDLE" + half + "-end/editor"));
    EXPECT_NE(detailOf("/opt/a"), detailOf("/opt/b"));
    // It is what a path that fits, with the ellipsis as its own character, looks like.
    const QString cut = QFontMetrics(fontFor(item_row_style::detail.font))
                            .elidedText(toQString(path("/opt/start-", 'x', "-end/editor")),
                                        Qt::ElideMiddle, detail.width());
    EXPECT_EQ(detail, detailOf(cut.toStdString()));
    EXPECT_LE(std::abs(2 * cut.indexOf(QChar(0x2026)) - cut.size()), 4);
}

} // namespace
} // namespace kestrel::linux_shell
