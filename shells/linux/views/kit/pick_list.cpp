#include "shells/linux/views/kit/pick_list.h"

#include "shells/linux/views/kit/painting.h"
#include "shells/linux/views/kit/style_bridge.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace kestrel::linux_shell {

void PickList::pick(int row, LastInput input) {
    setLastInput(input);
    if (row != currentRow()) {
        setCurrentRow(row);
        Q_EMIT rowPicked(row);
    } else {
        ensureVisible(row);
    }
}

int PickList::pageLength() const {
    return std::max(viewport()->height() / rowRect(0).height() - 1, 1);
}

void PickList::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.fillRect(event->rect(), palette().color(QPalette::Active, QPalette::Base));
    if (currentRow() >= 0 && currentRow() != carriedRow())
        fillRounded(painter, shownRect(currentRow()), highlightRadius,
                    hasKeys() ? selectionColor(palette()) : inactiveSelectionColor(palette()));
}

void PickList::changeEvent(QEvent* event) {
    RowList::changeEvent(event);
    if (event->type() == QEvent::ActivationChange)
        viewport()->update();
}

void PickList::mousePressEvent(QMouseEvent* event) {
    pressedSinceReload_ = true;
    pick(rowAt(event->position().toPoint()), LastInput::pointer);
}

// A second click on a row that has only just come under the pointer is the first on that row.
void PickList::mouseDoubleClickEvent(QMouseEvent* event) {
    const int row = rowAt(event->position().toPoint());
    if (!pressedSinceReload_)
        mousePressEvent(event);
    else if (event->button() == Qt::LeftButton && row >= 0)
        Q_EMIT activated(row);
}

} // namespace kestrel::linux_shell
