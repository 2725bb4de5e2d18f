#pragma once
// Where the popover goes on a screen: plain arithmetic on rectangles, in device-independent pixels.

#include <QList>
#include <QRect>

namespace kestrel::linux_shell {

struct ScreenArea {
    QRect whole;
    QRect available; ///< without the panels; equal to `whole` where the desktop does not say
};

/// The screen with what `panel` takes of it no longer available: some desktops do not say so
/// themselves, where there are several screens above all.
ScreenArea withoutPanel(const ScreenArea& screen, const QRect& panel);

/// The screen with a bar no longer available along each edge that an icon under `pointer` is close
/// to: for bars that would cover the popover, on desktops that do not say which edge has one.
ScreenArea withoutBarsAround(QPoint pointer, const ScreenArea& screen);

/// The strips along the edges of the screen that are not available.
QList<QRect> keptFree(const ScreenArea& screen);

/// What an icon takes up that was clicked at `pointer`, on a panel or in something that the panel
/// has folded out: there, or at the same height or width of the nearest panel. As `iconAround`
/// where no panel of the screen is known.
QRect iconOnPanel(QPoint pointer, const ScreenArea& screen);

/// What an icon under `pointer` takes up, as far as that can be told: the pointer alone inside a
/// panel, else a square that reaches to the screen's nearest edge.
QRect iconAround(QPoint pointer, const ScreenArea& screen);

/// The popover of that size next to `icon`, on the side away from the panel's edge of the screen,
/// centred on it and moved to stay inside the available area.
QRect placedAtIcon(const QRect& icon, QSize size, const ScreenArea& screen);

/// The popover where panels show their icons: at the end of the panel along the top, bottom, left
/// or right, whichever comes first in this order; in the top corner without one. `direction` is
/// that of the desktop's language: the end is on the left in those that are written from the right.
QRect placedAtPanelEnd(QSize size, const ScreenArea& screen, Qt::LayoutDirection direction);

} // namespace kestrel::linux_shell
