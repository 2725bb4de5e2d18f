#include "shells/linux/views/kit/list_row.h"

#include "shells/linux/views/kit/row_list.h"

#include <QApplication>
#include <QEnterEvent>

namespace kestrel::linux_shell {

ListRow::ListRow(QWidget* parent) : QWidget(parent) { setMouseTracking(true); }

RowList* ListRow::list() const {
    const QWidget* viewport = parentWidget();
    return viewport == nullptr ? nullptr : qobject_cast<RowList*>(viewport->parentWidget());
}

void ListRow::setState(const State& state) {
    if (state != state_) {
        state_ = state;
        stateChanged();
    }
}

void ListRow::giveFocusToList() {
    RowList* list = this->list();
    if (list != nullptr && isAncestorOf(QApplication::focusWidget()))
        list->setFocus(Qt::OtherFocusReason);
}

// The pointer can come in over one of the row's own controls, which keeps the moves to itself.
void ListRow::enterEvent(QEnterEvent* event) {
    QWidget::enterEvent(event);
    if (RowList* list = this->list())
        list->pointerAt(mapToParent(event->position().toPoint()));
}

} // namespace kestrel::linux_shell
