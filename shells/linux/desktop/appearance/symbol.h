#pragma once
// The program's symbols: drawings in one colour, named like the system symbols of the core.

#include <QColor>
#include <QPixmap>

#include <string_view>

class QPainter;

namespace kestrel::linux_shell {

/// The side of the square that a symbol of that point size takes, in pixels. The drawing itself
/// fills about seven tenths of it, as tall as a capital letter with its ascender.
int symbolExtent(double pointSize);

/// The symbol in `color`, `extent` device-independent pixels wide and high and sharp at
/// `devicePixelRatio`. A null picture when there is no symbol of that name.
QPixmap symbolPixmap(std::string_view name, int extent, const QColor& color,
                     qreal devicePixelRatio);

/// Draws it with its top left corner at `position`, sharp on whatever `painter` draws.
void drawSymbol(QPainter& painter, QPoint position, std::string_view name, int extent,
                const QColor& color);

} // namespace kestrel::linux_shell
