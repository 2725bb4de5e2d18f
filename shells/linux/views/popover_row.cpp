#include "shells/linux/views/popover_row.h"

#include "shells/linux/views/kit/painting.h"
#include "shells/linux/views/kit/style_bridge.h"
#include "views/popover/menu_popover_style.h"

#include <QPainter>

namespace kestrel::linux_shell {
namespace {

namespace row = menu_popover_style::row;

} // namespace

PopoverRow::PopoverRow(const FileIconSource& fileIcons, QWidget* parent)
    : IconTitleRow({.padding = row::padding,
                    .iconSize = row::iconSize,
                    .spacing = row::spacing,
                    .title = row::title},
                   fileIcons, parent) {}

void PopoverRow::paintEvent(QPaintEvent* event) {
    if (state().current) {
        QPainter painter(this);
        const bool isFull = colors() != palette();
        fillRounded(painter, QRectF(rect().marginsRemoved(marginsFor(row::highlightInsets))),
                    row::highlightRadius,
                    isFull ? selectionColor(palette())
                           : washColor(palette(), row::highlightOpacity));
    }
    IconTitleRow::paintEvent(event);
}

} // namespace kestrel::linux_shell
