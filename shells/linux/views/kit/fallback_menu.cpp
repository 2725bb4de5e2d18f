#include "shells/linux/views/kit/fallback_menu.h"

#include "shells/linux/views/kit/painting.h"
#include "shells/linux/views/kit/style_bridge.h"
#include "views/popover/menu_popover_style.h"

#include <QPainter>
#include <QPen>
#include <QStyle>

#include <algorithm>

namespace kestrel::linux_shell {
namespace {

namespace popover_row = menu_popover_style::row;

// All in pixels.
constexpr int itemTextPadding = 10;
constexpr int itemMarkWidth = 18; // of a check mark, or of the arrow to a further menu
constexpr int itemKeysSpacing = 28;
constexpr int itemSeparatorHeight = 9;
constexpr int itemLinePadding = 8;
constexpr int leastItemHeight = 26;
constexpr int leastItemWidth = 120;
constexpr double itemMarkSize = 8;

bool isSeparator(const QStyleOptionMenuItem& option) {
    return option.menuItemType == QStyleOptionMenuItem::Separator;
}

bool hasFurtherMenu(const QStyleOptionMenuItem& option) {
    return option.menuItemType == QStyleOptionMenuItem::SubMenu;
}

bool isHighlightedItem(const QStyleOptionMenuItem& option) {
    return option.state.testFlag(QStyle::State_Selected) &&
           option.state.testFlag(QStyle::State_Enabled);
}

/// Something at the start or the end of a line that is read in the option's direction.
QRect placedInItem(const QStyleOptionMenuItem& option, const QRect& rect) {
    return QStyle::visualRect(option.direction, option.rect, rect);
}

void drawSeparator(QPainter& painter, const QStyleOptionMenuItem& option) {
    const QRect line(option.rect.left() + itemTextPadding, option.rect.center().y(),
                     option.rect.width() - 2 * itemTextPadding, 1);
    painter.fillRect(line, separatorColor(option.palette));
}

void drawMark(QPainter& painter, const QList<QPointF>& points, const QColor& color) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(points);
    painter.restore();
}

QRectF markSquare(const QRect& rect) {
    QRectF square(0, 0, itemMarkSize, itemMarkSize);
    square.moveCenter(QRectF(rect).center());
    return square;
}

void drawCheckMark(QPainter& painter, const QStyleOptionMenuItem& option, const QColor& color) {
    const QRect place(option.rect.left() + itemTextPadding - 2, option.rect.top(),
                      itemMarkWidth - 2, option.rect.height());
    const QRectF mark = markSquare(placedInItem(option, place));
    drawMark(painter,
             {{mark.left(), mark.center().y() + 0.5},
              {mark.left() + 3, mark.bottom() - 0.5},
              {mark.right(), mark.top() + 0.5}},
             color);
}

void drawSubmenuArrow(QPainter& painter, const QStyleOptionMenuItem& option, const QColor& color) {
    const QRect place(option.rect.right() - itemTextPadding - itemMarkWidth / 2, option.rect.top(),
                      itemMarkWidth / 2, option.rect.height());
    const QRectF mark = markSquare(placedInItem(option, place));
    const double towards = option.direction == Qt::RightToLeft ? -1 : 1;
    const QPointF middle = mark.center();
    drawMark(painter,
             {{middle.x() - 2 * towards, middle.y() - 4},
              {middle.x() + 2 * towards, middle.y()},
              {middle.x() - 2 * towards, middle.y() + 4}},
             color);
}

void drawItemTextAt(QPainter& painter, const QStyleOptionMenuItem& option, const QString& text,
                    Qt::Alignment alignment, int flags) {
    const int left = itemTextPadding + (option.menuHasCheckableItems ? itemMarkWidth : 0);
    const QRect area = placedInItem(option, option.rect.adjusted(left, 0, -itemTextPadding, 0));
    const auto absolute = QStyle::visualAlignment(option.direction, alignment);
    painter.drawText(area,
                     static_cast<int>(absolute | Qt::AlignVCenter | Qt::AlignAbsolute) |
                         Qt::TextSingleLine | flags,
                     text);
}

} // namespace

QSize menuItemSize(const QStyleOptionMenuItem& option, QSize contents) {
    if (isSeparator(option))
        return {contents.width(), itemSeparatorHeight};
    int width = contents.width() + 2 * itemTextPadding;
    width += option.menuHasCheckableItems ? itemMarkWidth : 0;
    width += hasFurtherMenu(option) ? itemMarkWidth : 0;
    width += option.text.contains(QLatin1Char('\t')) ? itemKeysSpacing : 0;
    // The list of a combo box says no height.
    const int height = option.fontMetrics.height() + itemLinePadding;
    return {std::max(width, leastItemWidth), std::max(height, leastItemHeight)};
}

void drawMenuItem(QPainter& painter, const QStyleOptionMenuItem& option, MnemonicLines lines) {
    if (isSeparator(option)) {
        drawSeparator(painter, option);
        return;
    }
    const QPalette onSelection = paletteOnSelection(option.palette);
    const bool isFull = isHighlightedItem(option) && onSelection != option.palette;
    const QPalette& colors = isFull ? onSelection : option.palette;
    if (isHighlightedItem(option)) {
        fillRounded(painter, option.rect, popover_row::highlightRadius,
                    isFull ? selectionColor(option.palette)
                           : washColor(option.palette, popover_row::highlightOpacity));
    }
    const bool isEnabled = option.state.testFlag(QStyle::State_Enabled);
    // The text's own colour may be that of things that delete.
    const QColor color = isEnabled ? colors.color(QPalette::Active, QPalette::WindowText)
                                   : colorFor(style::ColorLevel::tertiaryLabel, option.palette);
    const QColor keysColor = isEnabled ? colorFor(style::ColorLevel::secondary, colors) : color;
    if (option.checkType != QStyleOptionMenuItem::NotCheckable && option.checked)
        drawCheckMark(painter, option, color);
    if (hasFurtherMenu(option))
        drawSubmenuArrow(painter, option, color);
    painter.setFont(option.font);
    painter.setPen(color);
    drawItemTextAt(painter, option, option.text.section(QLatin1Char('\t'), 0, 0), Qt::AlignLeft,
                   lines == MnemonicLines::shown ? Qt::TextShowMnemonic : Qt::TextHideMnemonic);
    painter.setPen(keysColor);
    drawItemTextAt(painter, option, option.text.section(QLatin1Char('\t'), 1, 1), Qt::AlignRight,
                   0);
}

} // namespace kestrel::linux_shell
