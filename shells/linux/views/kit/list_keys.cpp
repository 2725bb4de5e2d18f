#include "shells/linux/views/kit/list_keys.h"

#include <QKeyEvent>

namespace kestrel::linux_shell {

Qt::KeyboardModifiers modifiersOf(const QKeyEvent& event) {
    return event.modifiers() & ~Qt::KeypadModifier;
}

std::optional<RowStep> rowStepOf(const QKeyEvent& event) {
    switch (modifiersOf(event) == Qt::NoModifier ? event.key() : 0) {
    case Qt::Key_Up:
        return RowStep::previous;
    case Qt::Key_Down:
        return RowStep::next;
    case Qt::Key_PageUp:
        return RowStep::pageUp;
    case Qt::Key_PageDown:
        return RowStep::pageDown;
    case Qt::Key_Home:
        return RowStep::first;
    case Qt::Key_End:
        return RowStep::last;
    default:
        return std::nullopt;
    }
}

bool isPlainReturn(const QKeyEvent& event) {
    return modifiersOf(event) == Qt::NoModifier &&
           (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter);
}

} // namespace kestrel::linux_shell
