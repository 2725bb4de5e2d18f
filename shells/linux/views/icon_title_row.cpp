#include "shells/linux/views/icon_title_row.h"

#include "shells/linux/views/kit/cut_text.h"
#include "shells/linux/views/kit/style_bridge.h"
#include "shells/linux/views/kit/text_line.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

namespace kestrel::linux_shell {

IconTitleRow::IconTitleRow(const Style& style, const FileIconSource& fileIcons, QWidget* parent)
    : ListRow(parent), style_(style), fileIcons_(fileIcons) {}

void IconTitleRow::show(const QString& title, const ItemIcon& icon) {
    title_ = title;
    icon_ = icon;
    pixmapRatio_ = 0;
    update();
}

void IconTitleRow::updatePixmap() {
    if (pixmapRatio_ != devicePixelRatioF()) {
        pixmapRatio_ = devicePixelRatioF();
        pixmap_ = itemIconPixmap(icon_, fileIcons_, sizeFor(style_.iconSize), pixmapRatio_,
                                 colorFor(style_.title.color, colors()));
    }
}

QPalette IconTitleRow::colors() const {
    return state().current ? paletteOnSelection(palette()) : palette();
}

void IconTitleRow::stateChanged() {
    if (paletteOnSelection(palette()) != palette())
        pixmapRatio_ = 0; // a symbol has another colour then
    ListRow::stateChanged();
}

void IconTitleRow::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setLayoutDirection(layoutDirection());
    updatePixmap();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(iconRect(), pixmap_);
    const QFont font = fontFor(style_.title.font);
    const QRect text = titleRect();
    painter.setFont(font);
    painter.setPen(colorFor(style_.title.color, colors()));
    drawLine(painter, text, cutAtEnd(title_, QFontMetrics(font), text.width()), Qt::AlignLeft,
             directionOf(title_));
}

QRect IconTitleRow::iconRect() const {
    const QRect content = rect().marginsRemoved(marginsFor(style_.padding));
    const QSize size = sizeFor(style_.iconSize);
    const QRect icon(QPoint(content.left(), (height() - size.height()) / 2), size);
    return QStyle::visualRect(layoutDirection(), rect(), icon);
}

QRect IconTitleRow::titleRect() const {
    const QRect content = rect().marginsRemoved(marginsFor(style_.padding));
    const int lead = pixels(style_.iconSize.width) + pixels(style_.spacing);
    const QRect title(content.left() + lead, 0, content.width() - lead, height());
    return QStyle::visualRect(layoutDirection(), rect(), title);
}

QString IconTitleRow::tooltip() const {
    const QFontMetrics metrics(fontFor(style_.title.font));
    const bool isCut = cutAtEnd(title_, metrics, titleRect().width()) != title_;
    return isCut ? tooltipOf(title_, directionOf(title_)) : QString();
}

// No tool tip of the widget's own: a screen reader would read it with every row.
bool IconTitleRow::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return ListRow::event(event);
    showCutText(*event, *this, tooltip());
    return true;
}

void IconTitleRow::changeEvent(QEvent* event) {
    ListRow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) {
        pixmapRatio_ = 0;
        update();
    }
}

} // namespace kestrel::linux_shell
