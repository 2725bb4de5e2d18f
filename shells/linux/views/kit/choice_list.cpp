#include "shells/linux/views/kit/choice_list.h"

#include "views/row_place.h"

#include <QMouseEvent>

#include <cstddef>

namespace kestrel::linux_shell {

ChoiceList::ChoiceList(RowSource& source, const QMargins& padding, QWidget* parent)
    : PickList(source, padding, parent) {
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

void ChoiceList::takeStep(RowStep step) {
    RowPlace place;
    if (currentRow() >= 0)
        place.row = static_cast<std::size_t>(currentRow());
    const std::size_t row = rowAfter(step, place, static_cast<std::size_t>(count()),
                                     static_cast<std::size_t>(pageLength()));
    pick(static_cast<int>(row), LastInput::keyboard);
}

void ChoiceList::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && rowAt(event->position().toPoint()) >= 0)
        PickList::mousePressEvent(event);
}

} // namespace kestrel::linux_shell
