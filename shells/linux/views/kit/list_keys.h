#pragma once
// What a key means to a list, and to the field that hands its keys on to one.

#include "views/row_step.h"

#include <Qt>

#include <optional>

class QKeyEvent;

namespace kestrel::linux_shell {

/// The modifiers that are held. A key of the keypad counts as any other.
Qt::KeyboardModifiers modifiersOf(const QKeyEvent& event);

/// Nothing for a key that leads to no other row.
std::optional<RowStep> rowStepOf(const QKeyEvent& event);

/// Return or Enter with no modifier.
bool isPlainReturn(const QKeyEvent& event);

} // namespace kestrel::linux_shell
