#pragma once
// The drop-down under the status item, and the controllers that host a view in a window.

#include "platform/geometry.h"
#include "platform/status_bar.h"

#include <memory>

namespace kestrel {

/// Hosts one of the program's views. Owned by the popover or window that it is given to.
class HostingController {
  public:
    virtual ~HostingController() = default;

    virtual void setPreferredContentSize(Size size) = 0;

    /// Gives the keyboard focus to the window that shows the view; nothing when none does.
    virtual void makeWindowKey() = 0;
};

enum class PopoverBehavior { applicationDefined = 0, transient = 1, semitransient = 2 };
enum class RectEdge { minX = 0, minY = 1, maxX = 2, maxY = 3 };

/// Main thread only.
class Popover {
  public:
    virtual ~Popover() = default;

    virtual void setContentViewController(std::unique_ptr<HostingController> controller) = 0;

    /// Null until one is set.
    virtual HostingController* contentViewController() = 0;

    virtual void setContentSize(Size size) = 0;

    /// A transient popover closes when the user clicks elsewhere or leaves it.
    virtual void setBehavior(PopoverBehavior behavior) = 0;
    virtual void setAnimates(bool animates) = 0;
    virtual bool isShown() const = 0;

    /// Shows the popover at `button`'s whole bounds, on the given edge of it; the platform moves
    /// it to stay on the screen.
    virtual void showRelativeTo(StatusBarButton& button, RectEdge preferredEdge) = 0;

    /// Closes it; nothing when it is not shown.
    virtual void performClose() = 0;
};

} // namespace kestrel
