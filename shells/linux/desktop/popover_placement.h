#pragma once
// Where the popover goes on a screen: plain arithmetic on rectangles, in device-independent pixels.

#include <QRect>

namespace kestrel::linux_shell {

struct ScreenArea {
    QRect whole;
    QRect available; ///< without the panels; equal to `whole` where the desktop does not say
};

/// What an icon under `pointer` takes up, as far as that can be told: the pointer alone inside a
/// panel, else a square that reaches to the screen's nearest edge.
QRect iconAround(QPoint pointer, const ScreenArea& screen);

/// The popover of that size next to `icon`, on the side away from the panel's edge of the screen,
/// centred on it and moved to stay inside the available area.
QRect placedAtIcon(const QRect& icon, QSize size, const ScreenArea& screen);

/// The popover in the top right corner.
QRect placedInCorner(QSize size, const ScreenArea& screen);

} // namespace kestrel::linux_shell
