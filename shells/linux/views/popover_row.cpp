#include "shells/linux/views/popover_row.h"

#include "shells/linux/views/kit/painting.h"
#include "shells/linux/views/kit/style_bridge.h"
#include "views/popover/menu_popover_style.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

namespace kestrel::linux_shell {
namespace {

namespace row = menu_popover_style::row;

// What of `title` fits into one line, cut with an ellipsis at the width or at a line's end.
QString oneLine(const QString& title, const QFontMetrics& metrics, int width) {
    const auto isBreak = [](QChar c) {
        return c == u'\n' || c == u'\r' || c == QChar::LineSeparator ||
               c == QChar::ParagraphSeparator;
    };
    const auto end = std::ranges::find_if(title, isBreak);
    QString line(title.constData(), end - title.begin());
    if (end != title.end())
        line += QChar(0x2026);
    return metrics.elidedText(line, Qt::ElideRight, width);
}

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
    if (state().current) {
        const bool isFull = colors() != palette();
        fillRounded(painter, QRectF(rect().marginsRemoved(marginsFor(row::highlightInsets))),
                    row::highlightRadius,
                    isFull ? selectionColor(palette())
                           : washColor(palette(), row::highlightOpacity));
    }
    const QRect content = rect().marginsRemoved(marginsFor(row::padding));
    const QSize iconSize = sizeFor(row::iconSize);
    updatePixmap();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(QRect(QPoint(content.left(), (height() - iconSize.height()) / 2), iconSize),
                       pixmap_);
    const QFont font = fontFor(row::title.font);
    const int left = content.left() + iconSize.width() + pixels(row::spacing);
    const QRect text(left, 0, content.left() + content.width() - left, height());
    painter.setFont(font);
    painter.setPen(colorFor(row::title.color, colors()));
    painter.drawText(text, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     oneLine(title_, QFontMetrics(font), text.width()));
}

void PopoverRow::changeEvent(QEvent* event) {
    ListRow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) {
        pixmapRatio_ = 0;
        update();
    }
}

} // namespace kestrel::linux_shell
