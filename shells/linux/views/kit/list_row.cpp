#include "shells/linux/views/kit/list_row.h"

#include "shells/linux/views/kit/row_list.h"

#include <QApplication>
#include <QEnterEvent>

namespace kestrel::linux_shell {

namespace {

RowList* listOf(const QWidget& row) {
    QWidget* viewport = row.parentWidget();
    return viewport == nullptr ? nullptr : qobject_cast<RowList*>(viewport->parentWidget());
}

} // namespace

ListRow::ListRow(QWidget* parent) : QWidget(parent) { setMouseTracking(true); }

void ListRow::setState(const State& state) {
    if (state != state_) {
        state_ = state;
        stateChanged();
    }
}

void ListRow::giveFocusToList() {
    RowList* list = listOf(*this);
    if (list != nullptr && isAncestorOf(QApplication::focusWidget())) {
        list->setFocus(Qt::OtherFocusReason);
    }
}

// The pointer can come in over one of the row's own controls, which keeps the moves to itself.
void ListRow::enterEvent(QEnterEvent* event) {
    QWidget::enterEvent(event);
    if (RowList* list = listOf(*this)) {
        list->pointerAt(mapToParent(event->position().toPoint()));
    }
}

} // namespace kestrel::linux_shell
