#pragma once
// The items of menus as FallbackStyle draws them: like the popover's rows.

#include <QSize>
#include <QStyleOptionMenuItem>

class QPainter;

namespace kestrel::linux_shell {

/// `contents` is as wide as the item's text.
QSize menuItemSize(const QStyleOptionMenuItem& option, QSize contents);

enum class MnemonicLines { shown, hidden };

void drawMenuItem(QPainter& painter, const QStyleOptionMenuItem& option, MnemonicLines lines);

} // namespace kestrel::linux_shell
