// The keyboard half of RowList.

#include "shells/linux/views/kit/row_drag.h"
#include "shells/linux/views/kit/row_list.h"

#include <QApplication>
#include <QKeyEvent>

#include <algorithm>

namespace kestrel::linux_shell {

namespace {

Qt::KeyboardModifiers modifiersOf(const QKeyEvent& event) {
    return event.modifiers() & ~Qt::KeypadModifier;
}

} // namespace

void RowList::keyPressEvent(QKeyEvent* event) {
    if (drag_ != nullptr && drag_->row() >= 0 && event->key() == Qt::Key_Escape) {
        drag_->cancel();
        layoutRows();
        return;
    }
    if (geometry_.count() == 0 || handleMoveAndDelete(*event)) {
        event->setAccepted(geometry_.count() > 0);
        return;
    }
    const bool plain = modifiersOf(*event) == Qt::NoModifier;
    if (const int row = plain ? destinationOf(*event) : -1; row >= 0) {
        pick(row, LastInput::keyboard);
        ensureVisible(row);
    } else if (plain && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) {
        if (currentRow_ >= 0) {
            Q_EMIT activated(currentRow_);
        }
    } else if (!typeAhead(*event)) {
        event->ignore();
    }
}

/// The row that an arrow or paging key leads to; -1 for any other key.
int RowList::destinationOf(const QKeyEvent& event) const {
    const int last = geometry_.count() - 1;
    const int page = std::max(viewport()->height() / std::max(geometry_.height(0), 1) - 1, 1);
    const auto clamped = [last](int row) { return std::clamp(row, 0, last); };
    switch (event.key()) {
    case Qt::Key_Up:
        return currentRow_ < 0 ? last : clamped(currentRow_ - 1);
    case Qt::Key_Down:
        return clamped(currentRow_ + 1);
    case Qt::Key_PageUp:
        return clamped(currentRow_ - page);
    case Qt::Key_PageDown:
        return clamped(std::max(currentRow_, 0) + page);
    case Qt::Key_Home:
        return 0;
    case Qt::Key_End:
        return last;
    default:
        return -1;
    }
}

bool RowList::handleMoveAndDelete(const QKeyEvent& event) {
    if (options_.editing == Options::Editing::off || currentRow_ < 0) {
        return false;
    }
    const Qt::KeyboardModifiers modifiers = modifiersOf(event);
    if (event.key() == Qt::Key_Delete && modifiers == Qt::NoModifier) {
        Q_EMIT deleteRequested({currentRow_});
        return true;
    }
    if (modifiers != Qt::AltModifier) {
        return false;
    }
    if (event.key() == Qt::Key_Up) {
        if (currentRow_ > 0) {
            Q_EMIT moveRequested({currentRow_}, currentRow_ - 1);
        }
        return true;
    }
    if (event.key() == Qt::Key_Down) {
        // The gap below the next row: the row itself still counts in a position before the move.
        if (currentRow_ < geometry_.count() - 1) {
            Q_EMIT moveRequested({currentRow_}, currentRow_ + 2);
        }
        return true;
    }
    return false;
}

bool RowList::typeAhead(const QKeyEvent& event) {
    const QString text = event.text();
    const Qt::KeyboardModifiers modifiers = modifiersOf(event) & ~Qt::ShiftModifier;
    if (modifiers != Qt::NoModifier || text.isEmpty() || !text.at(0).isPrint()) {
        return false;
    }
    const auto interval = static_cast<quint64>(QApplication::keyboardInputInterval());
    if (event.timestamp() - typedAt_ > interval) {
        typed_.clear();
    }
    if (text == u" " && typed_.isEmpty()) {
        if (currentRow_ >= 0) {
            pressRow(currentRow_);
        }
        return true;
    }
    typedAt_ = event.timestamp();
    typed_ += text;
    // One letter again and again goes through the rows that begin with it.
    const bool oneLetter = std::ranges::all_of(typed_, [this](QChar c) { return c == typed_[0]; });
    int row = find(typed_, typed_.size() == 1 ? currentRow_ + 1 : std::max(currentRow_, 0));
    if (row < 0 && oneLetter) {
        row = find(typed_.left(1), currentRow_ + 1);
    }
    if (row >= 0) {
        pick(row, LastInput::keyboard);
        ensureVisible(row);
    }
    return true;
}

/// The first row from `from` on, around the end, whose title begins with `prefix`; -1 for none.
int RowList::find(const QString& prefix, int from) const {
    const int count = geometry_.count();
    for (int step = 0; step < count; ++step) {
        const int row = (from + step) % count;
        if (source_.titleOf(row).startsWith(prefix, Qt::CaseInsensitive)) {
            return row;
        }
    }
    return -1;
}

} // namespace kestrel::linux_shell
