#include "shells/linux/views/kit/choice_list.h"

#include "shells/linux/views/kit/painting.h"
#include "shells/linux/views/kit/style_bridge.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace kestrel::linux_shell {

namespace {

constexpr double selectionRadius = 6;
constexpr double selectionShare = 0.22;           // of the accent colour, in the active window
constexpr double inactiveSelectionOpacity = 0.09; // of the text colour, in another

} // namespace

ChoiceList::ChoiceList(RowSource& source, const QMargins& padding, QWidget* parent)
    : RowList(source, Qt::ScrollBarAsNeeded, padding, parent) {
    setFocusPolicy(Qt::NoFocus);
}

void ChoiceList::step(RowStep step) {
    if (count() > 0)
        takeStep(step);
}

void ChoiceList::selectFirst() {
    setLastInput(LastInput::keyboard);
    setCurrentRow(count() > 0 ? 0 : -1);
    ensureVisible(currentRow());
}

void ChoiceList::pick(int row, LastInput input) {
    setLastInput(input);
    if (row == currentRow()) {
        ensureVisible(row);
    } else {
        setCurrentRow(row);
        Q_EMIT rowPicked(row);
    }
}

int ChoiceList::rowAfter(RowStep step) const {
    const int last = count() - 1;
    const int page = std::max(viewport()->height() / rowRect(0).height() - 1, 1);
    switch (step) {
    case RowStep::previous:
        return currentRow() < 0 ? last : std::max(currentRow() - 1, 0);
    case RowStep::next:
        return std::min(currentRow() + 1, last);
    case RowStep::pageUp:
        return std::max(currentRow() - page, 0);
    case RowStep::pageDown:
        return std::min(std::max(currentRow(), 0) + page, last);
    case RowStep::first:
        return 0;
    case RowStep::last:
        break;
    }
    return last;
}

void ChoiceList::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    const QColor background = palette().color(QPalette::Active, QPalette::Base);
    painter.fillRect(event->rect(), background);
    if (currentRow() < 0)
        return;
    const QColor accent = colorFor(style::ColorLevel::accent, palette());
    fillRounded(painter, rowRect(currentRow()), selectionRadius,
                isActiveWindow() ? mixed(background, accent, selectionShare)
                                 : washColor(palette(), inactiveSelectionOpacity));
}

void ChoiceList::changeEvent(QEvent* event) {
    RowList::changeEvent(event);
    if (event->type() == QEvent::ActivationChange)
        viewport()->update();
}

void ChoiceList::mousePressEvent(QMouseEvent* event) {
    pressedSinceReload_ = true;
    const int row = rowAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && row >= 0)
        pick(row, LastInput::pointer);
}

// A second click on a row that has only just come under the pointer is the first on that row.
void ChoiceList::mouseDoubleClickEvent(QMouseEvent* event) {
    const int row = rowAt(event->position().toPoint());
    if (!pressedSinceReload_)
        mousePressEvent(event);
    else if (event->button() == Qt::LeftButton && row >= 0)
        Q_EMIT activated(row);
}

} // namespace kestrel::linux_shell
