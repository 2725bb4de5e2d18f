#pragma once
// A status bar button that can tell where on the screen it is, for the popover.

#include "platform/status_bar.h"

#include <QPoint>
#include <QRect>

namespace kestrel::linux_shell {

struct PopoverAnchor {
    enum class Kind {
        icon,          ///< the icon covers `icon`, in screen coordinates
        pointer,       ///< the icon is somewhere around `point`, where it was clicked
        hiddenPointer, ///< it was clicked just now, in a place the X server has not been told
        corner,        ///< there is no icon: the top right corner of the screen with the pointer
    };
    Kind kind = Kind::corner;
    QRect icon;
    QPoint point;
};

class AnchoredButton : public StatusBarButton {
  public:
    /// Asked anew at each opening.
    virtual PopoverAnchor anchor() const = 0;
};

} // namespace kestrel::linux_shell
