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

namespace row = menu_popover_style::row;

// All in pixels.
constexpr int textPadding = 10;
constexpr int markWidth = 18; // of a check mark, or of the arrow to a further menu
constexpr int keysSpacing = 28;
constexpr int separatorHeight = 9;
constexpr int leastHeight = 26;
constexpr int leastWidth = 120;
constexpr double markSize = 8;

bool isSeparator(const QStyleOptionMenuItem& option) {
    return option.menuItemType == QStyleOptionMenuItem::Separator;
}

bool hasFurtherMenu(const QStyleOptionMenuItem& option) {
    return option.menuItemType == QStyleOptionMenuItem::SubMenu;
}

bool isSelected(const QStyleOptionMenuItem& option) {
    return option.state.testFlag(QStyle::State_Selected) &&
           option.state.testFlag(QStyle::State_Enabled);
}

/// Something at the start or the end of a line that is read in the option's direction.
QRect placed(const QStyleOptionMenuItem& option, const QRect& rect) {
    return QStyle::visualRect(option.direction, option.rect, rect);
}

void drawSeparator(QPainter& painter, const QStyleOptionMenuItem& option) {
    const QRect line(option.rect.left() + textPadding, option.rect.center().y(),
                     option.rect.width() - 2 * textPadding, 1);
    painter.fillRect(line, separatorColor(option.palette));
}

void drawLine(QPainter& painter, const QList<QPointF>& points, const QColor& color) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(points);
    painter.restore();
}

QRectF markSquare(const QRect& rect) {
    QRectF square(0, 0, markSize, markSize);
    square.moveCenter(QRectF(rect).center());
    return square;
}

void drawCheckMark(QPainter& painter, const QStyleOptionMenuItem& option, const QColor& color) {
    const QRect place(option.rect.left() + textPadding - 2, option.rect.top(), markWidth - 2,
                      option.rect.height());
    const QRectF mark = markSquare(placed(option, place));
    drawLine(painter,
             {{mark.left(), mark.center().y() + 0.5},
              {mark.left() + 3, mark.bottom() - 0.5},
              {mark.right(), mark.top() + 0.5}},
             color);
}

void drawArrow(QPainter& painter, const QStyleOptionMenuItem& option, const QColor& color) {
    const QRect place(option.rect.right() - textPadding - markWidth / 2, option.rect.top(),
                      markWidth / 2, option.rect.height());
    const QRectF mark = markSquare(placed(option, place));
    const double towards = option.direction == Qt::RightToLeft ? -1 : 1;
    const QPointF middle = mark.center();
    drawLine(painter,
             {{middle.x() - 2 * towards, middle.y() - 4},
              {middle.x() + 2 * towards, middle.y()},
              {middle.x() - 2 * towards, middle.y() + 4}},
             color);
}

void drawText(QPainter& painter, const QStyleOptionMenuItem& option, const QString& text,
              Qt::Alignment alignment, int flags) {
    const int left = textPadding + (option.menuHasCheckableItems ? markWidth : 0);
    const QRect area = placed(option, option.rect.adjusted(left, 0, -textPadding, 0));
    const auto absolute = QStyle::visualAlignment(option.direction, alignment);
    painter.drawText(area,
                     static_cast<int>(absolute | Qt::AlignVCenter | Qt::AlignAbsolute) |
                         Qt::TextSingleLine | flags,
                     text);
}

} // namespace

QSize menuItemSize(const QStyleOptionMenuItem& option, QSize contents) {
    if (isSeparator(option))
        return {contents.width(), separatorHeight};
    int width = contents.width() + 2 * textPadding;
    width += option.menuHasCheckableItems ? markWidth : 0;
    width += hasFurtherMenu(option) ? markWidth : 0;
    width += option.text.contains(QLatin1Char('\t')) ? keysSpacing : 0;
    return {std::max(width, leastWidth), std::max(contents.height(), leastHeight)};
}

void drawMenuItem(QPainter& painter, const QStyleOptionMenuItem& option, Mnemonics mnemonics) {
    if (isSeparator(option)) {
        drawSeparator(painter, option);
        return;
    }
    const QPalette onSelection = paletteOnSelection(option.palette);
    const bool isFull = isSelected(option) && onSelection != option.palette;
    const QPalette& colors = isFull ? onSelection : option.palette;
    if (isSelected(option)) {
        fillRounded(painter, option.rect, row::highlightRadius,
                    isFull ? selectionColor(option.palette)
                           : washColor(option.palette, row::highlightOpacity));
    }
    const bool isEnabled = option.state.testFlag(QStyle::State_Enabled);
    // The text's own colour may be that of things that delete.
    const QColor color = isEnabled ? colors.color(QPalette::Active, QPalette::WindowText)
                                   : colorFor(style::ColorLevel::tertiaryLabel, option.palette);
    const QColor keysColor = isEnabled ? colorFor(style::ColorLevel::secondary, colors) : color;
    if (option.checkType != QStyleOptionMenuItem::NotCheckable && option.checked)
        drawCheckMark(painter, option, color);
    if (hasFurtherMenu(option))
        drawArrow(painter, option, color);
    painter.setFont(option.font);
    painter.setPen(color);
    drawText(painter, option, option.text.section(QLatin1Char('\t'), 0, 0), Qt::AlignLeft,
             mnemonics == Mnemonics::shown ? Qt::TextShowMnemonic : Qt::TextHideMnemonic);
    painter.setPen(keysColor);
    drawText(painter, option, option.text.section(QLatin1Char('\t'), 1, 1), Qt::AlignRight, 0);
}

} // namespace kestrel::linux_shell
