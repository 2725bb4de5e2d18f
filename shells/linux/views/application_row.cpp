#include "shells/linux/views/application_row.h"

#include "shells/linux/views/item_icon_pixmap.h"
#include "shells/linux/views/kit/style_bridge.h"
#include "views/settings/application_chooser_style.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace kestrel::linux_shell {

namespace {
namespace chooser_row_style = application_chooser_style::row;
}

ApplicationRow::ApplicationRow(const FileIconSource& fileIcons, QWidget* parent)
    : ListRow(parent), fileIcons_(fileIcons) {}

void ApplicationRow::show(const InstalledApplication& application) {
    path_ = application.path;
    name_ = toQString(application.name);
    pixmapRatio_ = 0;
    update();
}

// Two applications may have one name. No tool tip of the widget's own: a screen reader would read
// the path with every row.
bool ApplicationRow::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return ListRow::event(event);
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), toQString(path_), this);
    return true;
}

void ApplicationRow::updatePixmap() {
    if (pixmapRatio_ == devicePixelRatioF())
        return;
    pixmapRatio_ = devicePixelRatioF();
    pixmap_ = itemIconPixmap(FileIcon{path_}, fileIcons_, sizeFor(chooser_row_style::iconSize),
                             pixmapRatio_, colorFor(chooser_row_style::title.color, palette()));
}

void ApplicationRow::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const auto mirrored = [this](const QRect& area) {
        return QStyle::visualRect(layoutDirection(), rect(), area);
    };
    const QRect content = rect().marginsRemoved(marginsFor(chooser_row_style::padding));
    const QSize iconSize = sizeFor(chooser_row_style::iconSize);
    const QRect icon(QPoint(content.left(), (height() - iconSize.height()) / 2), iconSize);
    updatePixmap();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(mirrored(icon), pixmap_);
    QRect text = content;
    text.setLeft(icon.right() + 1 + pixels(chooser_row_style::spacing));
    const QFont font = fontFor(chooser_row_style::title.font);
    painter.setFont(font);
    painter.setPen(colorFor(chooser_row_style::title.color, palette()));
    const Qt::Alignment side = QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft);
    const QString line = QFontMetrics(font).elidedText(name_, Qt::ElideRight, text.width());
    painter.drawText(
        mirrored(text),
        static_cast<int>(side | Qt::AlignAbsolute | Qt::AlignVCenter) | Qt::TextSingleLine, line);
}

void ApplicationRow::changeEvent(QEvent* event) {
    ListRow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) {
        pixmapRatio_ = 0;
        update();
    }
}

} // namespace kestrel::linux_shell
