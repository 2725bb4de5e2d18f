#include "shells/linux/views/kit/selection_list.h"

#include "shells/linux/views/kit/list_keys.h"
#include "shells/linux/views/kit/style_bridge.h"
#include "views/accessible_texts.h"

#include <QAccessible>
#include <QContextMenuEvent>
#include <QMouseEvent>

namespace kestrel::linux_shell {

SelectionList::SelectionList(RowSource& source, const QMargins& padding, QWidget* parent)
    : PickList(source, padding, parent) {
    connect(&drag_, &RowDrag::shiftsChanged, this, [this] { layoutRows(); });
}

void SelectionList::cancelGesture() {
    drag_.cancel();
    PickList::cancelGesture();
}

// Assistive programs cannot drag, and the keys that move a row may not be free.
std::vector<RowAction> SelectionList::rowActions() {
    std::vector<RowAction> actions = PickList::rowActions();
    const auto showMenu = [this](int row) {
        Q_EMIT contextMenuRequested(row, viewport()->mapToGlobal(rowRect(row).center()));
    };
    actions.push_back({QAccessibleActionInterface::showMenuAction(), {}, {}, showMenu});
    actions.push_back({QStringLiteral("MoveUp"), textFor(accessible_texts::moveRowUp),
                       Qt::ALT | Qt::Key_Up,
                       [this](int row) { Q_EMIT moveByOneRequested(row, RowDirection::up); }});
    actions.push_back({QStringLiteral("MoveDown"), textFor(accessible_texts::moveRowDown),
                       Qt::ALT | Qt::Key_Down,
                       [this](int row) { Q_EMIT moveByOneRequested(row, RowDirection::down); }});
    return actions;
}

void SelectionList::takeStep(RowStep step) {
    Q_EMIT stepRequested(step, pageLength());
    ensureVisible(currentRow());
}

bool SelectionList::takeKey(const QKeyEvent& event) {
    if (drag_.row() >= 0 && event.key() == Qt::Key_Escape) {
        drag_.cancel();
        return true;
    }
    const Qt::KeyboardModifiers modifiers = modifiersOf(event);
    const bool vertical = event.key() == Qt::Key_Up || event.key() == Qt::Key_Down;
    if (event.key() == Qt::Key_Delete && modifiers == Qt::NoModifier) {
        Q_EMIT deleteCurrentRequested();
        return true;
    }
    if (vertical && modifiers == Qt::AltModifier) {
        setLastInput(LastInput::keyboard);
        Q_EMIT moveCurrentRequested(event.key() == Qt::Key_Up ? RowDirection::up
                                                              : RowDirection::down);
        return true;
    }
    return PickList::takeKey(event);
}

// Another button than the one that holds a row lets go of it and does nothing else.
void SelectionList::mousePressEvent(QMouseEvent* event) {
    drag_.follow(event->buttons());
    if (event->button() != Qt::LeftButton && drag_.holdsButton()) {
        drag_.cancel();
        return;
    }
    const QPoint position = event->position().toPoint();
    const int row = rowAt(position);
    if (event->button() == Qt::LeftButton && row >= 0)
        drag_.press(row, position);
    PickList::mousePressEvent(event);
}

void SelectionList::mouseMoveEvent(QMouseEvent* event) {
    drag_.follow(event->buttons());
    PickList::mouseMoveEvent(event);
    drag_.move(event->position().toPoint());
}

void SelectionList::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        drag_.drop(event->position().toPoint());
}

// A menu over a row that is held would take the release of the button.
void SelectionList::contextMenuEvent(QContextMenuEvent* event) {
    if (drag_.holdsButton()) {
        drag_.cancel();
        return;
    }
    const bool byKeyboard = event->reason() == QContextMenuEvent::Keyboard;
    const int row = byKeyboard ? currentRow() : rowAt(event->pos());
    if (row < 0)
        return;
    if (byKeyboard)
        ensureVisible(row);
    const QPoint position = byKeyboard ? rowRect(row).center() : event->pos();
    Q_EMIT contextMenuRequested(row, viewport()->mapToGlobal(position));
}

// A menu or a window that opens takes the focus, and may take the release of the button too.
void SelectionList::focusOutEvent(QFocusEvent* event) {
    drag_.follow(Qt::NoButton);
    PickList::focusOutEvent(event);
}

} // namespace kestrel::linux_shell
