#pragma once
// Gives a widget that draws itself, or a window, a role in the accessibility tree.

#include <QAccessible>

class QWidget;

namespace kestrel::linux_shell {

enum class Modality { none, modal };

/// To be called before an assistive program can see `widget`. Its name is its accessibleName, a
/// window's without one its title. A modal one keeps the user from the rest of its window.
void setAccessibleRole(QWidget& widget, QAccessible::Role role, Modality modality = Modality::none);

} // namespace kestrel::linux_shell
