#pragma once
// The drop-down at the status item. Its content is given when it is made.

#include "platform/geometry.h"

namespace kestrel {

/// Main thread only. It closes by itself when the user clicks elsewhere, presses Escape or leaves
/// it for another program.
class Popover {
  public:
    virtual ~Popover() = default;

    virtual bool isShown() const = 0;

    /// Shows the content at the status item, at this size, moved to stay on the screen, and gives
    /// it the keyboard. Nothing where the platform gave the status item no place.
    virtual void show(Size size) = 0;

    /// From now on the content has this size; the popover stays at the status item and on the
    /// screen. Nothing when it is not shown.
    virtual void setContentSize(Size size) = 0;

    /// Nothing when it is not shown.
    virtual void close() = 0;
};

} // namespace kestrel
