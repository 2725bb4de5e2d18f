#pragma once
// Gives a widget that draws itself a role in the accessibility tree.

#include <QAccessible>

class QWidget;

namespace kestrel::linux_shell {

/// To be called before an assistive program can see `widget`. Its name is its accessibleName.
void setAccessibleRole(QWidget& widget, QAccessible::Role role);

} // namespace kestrel::linux_shell
