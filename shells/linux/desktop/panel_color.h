#pragma once
// The colour in which a template icon can be read on the desktop's panels, found by looking at
// them.

#include <QColor>
#include <QList>
#include <QPoint>
#include <QRect>

#include <optional>

namespace kestrel::linux_shell {

/// The panels that may have the icon: the one at `click`, else all that there are. Where panels are
/// no windows, the strips of the screen that are kept free for them. None in a Wayland session.
QList<QRect> likelyPanels(std::optional<QPoint> click);

/// A colour that stands out from all of `panels`, in device-independent pixels of the screen: none
/// where no one colour does, `before` where none can be seen.
std::optional<QColor> colorOn(const QList<QRect>& panels, std::optional<QColor> before);

} // namespace kestrel::linux_shell
