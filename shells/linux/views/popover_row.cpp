#include "shells/linux/views/popover_row.h"

#include "shells/linux/views/kit/cut_text.h"
#include "shells/linux/views/kit/painting.h"
#include "shells/linux/views/kit/style_bridge.h"
#include "shells/linux/views/kit/text_line.h"
#include "views/popover/menu_popover_style.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

namespace kestrel::linux_shell {
namespace {

namespace row = menu_popover_style::row;

} // namespace

PopoverRow::PopoverRow(const FileIconSource& fileIcons, QWidget* parent)
    : ListRow(parent), fileIcons_(fileIcons) {}

void PopoverRow::show(const QString& title, const ItemIcon& icon) {
    title_ = title;
    icon_ = icon;
    pixmapRatio_ = 0;
    update();
}

void PopoverRow::updatePixmap() {
    if (pixmapRatio_ != devicePixelRatioF()) {
        pixmapRatio_ = devicePixelRatioF();
        pixmap_ = itemIconPixmap(icon_, fileIcons_, sizeFor(row::iconSize), pixmapRatio_,
                                 colorFor(row::title.color, colors()));
    }
}

QPalette PopoverRow::colors() const {
    return state().current ? paletteOnSelection(palette()) : palette();
}

void PopoverRow::stateChanged() {
    if (paletteOnSelection(palette()) != palette())
        pixmapRatio_ = 0; // a symbol has another colour then
    ListRow::stateChanged();
}

void PopoverRow::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setLayoutDirection(layoutDirection());
    if (state().current) {
        const bool isFull = colors() != palette();
        fillRounded(painter, QRectF(rect().marginsRemoved(marginsFor(row::highlightInsets))),
                    row::highlightRadius,
                    isFull ? selectionColor(palette())
                           : washColor(palette(), row::highlightOpacity));
    }
    updatePixmap();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(iconRect(), pixmap_);
    const QFont font = fontFor(row::title.font);
    const QRect text = titleRect();
    painter.setFont(font);
    painter.setPen(colorFor(row::title.color, colors()));
    drawLine(painter, text, cutAtEnd(title_, QFontMetrics(font), text.width()), Qt::AlignLeft,
             directionOf(title_));
}

QRect PopoverRow::iconRect() const {
    const QRect content = rect().marginsRemoved(marginsFor(row::padding));
    const QSize size = sizeFor(row::iconSize);
    const QRect icon(QPoint(content.left(), (height() - size.height()) / 2), size);
    return QStyle::visualRect(layoutDirection(), rect(), icon);
}

QRect PopoverRow::titleRect() const {
    const QRect content = rect().marginsRemoved(marginsFor(row::padding));
    const int lead = pixels(row::iconSize.width) + pixels(row::spacing);
    const QRect title(content.left() + lead, 0, content.width() - lead, height());
    return QStyle::visualRect(layoutDirection(), rect(), title);
}

bool PopoverRow::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return ListRow::event(event);
    const QFontMetrics metrics(fontFor(row::title.font));
    const bool isCut = cutAtEnd(title_, metrics, titleRect().width()) != title_;
    showCutText(*event, *this, isCut ? tooltipOf(title_, directionOf(title_)) : QString());
    return true;
}

void PopoverRow::changeEvent(QEvent* event) {
    ListRow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) {
        pixmapRatio_ = 0;
        update();
    }
}

} // namespace kestrel::linux_shell
