#pragma once
// Where on the screen the status icon is, as far as that is known, for the popover.

#include <QPoint>
#include <QRect>

#include <optional>

namespace kestrel::linux_shell {

/// In device-independent pixels of the screen.
struct PopoverAnchor {
    enum class Kind {
        icon,          ///< the icon covers `icon`
        pointer,       ///< the icon is somewhere around `point`, where it was clicked
        panel,         ///< it was clicked at `point`: on a panel or in what a panel has folded out
        hiddenPointer, ///< it was clicked just now, in a place the X server has not been told; the
                       ///< time before that it was at `point`, if that was ever known
        corner,        ///< nothing is known of it: the end of the panel, where icons are
    };
    Kind kind = Kind::corner;
    QRect icon;
    std::optional<QPoint> point;
};

/// The status item, as the popover sees it.
class PopoverAnchorSource {
  public:
    virtual ~PopoverAnchorSource() = default;

    /// Asked at each opening.
    virtual PopoverAnchor anchor() const = 0;

    /// The hidden pointer of the last click has been found.
    virtual void setClickedPoint(QPoint point) = 0;
};

} // namespace kestrel::linux_shell
