// The keyboard half of RowList.

#include "shells/linux/views/kit/row_drag.h"
#include "shells/linux/views/kit/row_list.h"

#include <QKeyEvent>

#include <algorithm>
#include <optional>

namespace kestrel::linux_shell {

namespace {

Qt::KeyboardModifiers modifiersOf(const QKeyEvent& event) {
    return event.modifiers() & ~Qt::KeypadModifier;
}

std::optional<RowList::Step> stepOf(const QKeyEvent& event) {
    switch (modifiersOf(event) == Qt::NoModifier ? event.key() : 0) {
    case Qt::Key_Up:
        return RowList::Step::previous;
    case Qt::Key_Down:
        return RowList::Step::next;
    case Qt::Key_PageUp:
        return RowList::Step::pageUp;
    case Qt::Key_PageDown:
        return RowList::Step::pageDown;
    case Qt::Key_Home:
        return RowList::Step::first;
    case Qt::Key_End:
        return RowList::Step::last;
    default:
        return std::nullopt;
    }
}

bool isReturn(const QKeyEvent& event) {
    return modifiersOf(event) == Qt::NoModifier &&
           (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter);
}

} // namespace

void RowList::keyPressEvent(QKeyEvent* event) {
    if (drag_ != nullptr && drag_->row() >= 0 && event->key() == Qt::Key_Escape) {
        drag_->cancel();
        layoutRows();
        return;
    }
    if (geometry_.count() == 0 || !takeKey(*event)) {
        event->ignore();
    }
}

/// False when the key is not the list's.
bool RowList::takeKey(const QKeyEvent& event) {
    if (const auto step = stepOf(event)) {
        lastInput_ = LastInput::keyboard;
        setFocus(Qt::OtherFocusReason); // the key may come from a control of a row
        if (isMenu()) {
            Q_EMIT stepRequested(*step);
        } else {
            pick(rowAfter(*step), LastInput::keyboard);
        }
        return true;
    }
    if (isReturn(event)) {
        if (currentRow_ >= 0) {
            Q_EMIT activated(currentRow_);
        }
        return true;
    }
    return moveOrDelete(event) || typeLetter(event);
}

int RowList::rowAfter(Step step) const {
    const int last = geometry_.count() - 1;
    const int page = std::max(viewport()->height() / geometry_.height(0) - 1, 1);
    switch (step) {
    case Step::previous:
        return currentRow_ < 0 ? last : std::max(currentRow_ - 1, 0);
    case Step::next:
        return std::min(currentRow_ + 1, last);
    case Step::pageUp:
        return std::max(currentRow_ - page, 0);
    case Step::pageDown:
        return std::min(std::max(currentRow_, 0) + page, last);
    case Step::first:
        return 0;
    case Step::last:
        break;
    }
    return last;
}

bool RowList::moveOrDelete(const QKeyEvent& event) {
    if (isMenu()) {
        return false;
    }
    const Qt::KeyboardModifiers modifiers = modifiersOf(event);
    const bool vertical = event.key() == Qt::Key_Up || event.key() == Qt::Key_Down;
    if (event.key() == Qt::Key_Delete && modifiers == Qt::NoModifier) {
        Q_EMIT deleteCurrentRequested();
        return true;
    }
    if (vertical && modifiers == Qt::AltModifier) {
        lastInput_ = LastInput::keyboard;
        Q_EMIT moveCurrentRequested(event.key() == Qt::Key_Up ? Direction::up : Direction::down);
        return true;
    }
    return false;
}

bool RowList::typeLetter(const QKeyEvent& event) {
    const QString text = event.text();
    const Qt::KeyboardModifiers modifiers = modifiersOf(event) & ~Qt::ShiftModifier;
    const bool command = modifiers != Qt::NoModifier && modifiers != Qt::GroupSwitchModifier;
    if (command || text.isEmpty() || !text.at(0).isPrint()) {
        return false;
    }
    lastInput_ = LastInput::keyboard;
    Q_EMIT typed(text);
    return true;
}

} // namespace kestrel::linux_shell
