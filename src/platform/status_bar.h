#pragma once
// The icon in the menu bar or the panel's status area.

#include "platform/images.h"

#include <functional>
#include <memory>

namespace kestrel {

/// Which mouse events make a button send its action; values combine as bits.
enum class EventMask : unsigned { leftMouseUp = 1U << 2U };

/// A length that makes the status item as wide as the bar is high.
inline constexpr double squareStatusItemLength = -2;

/// Main thread only. Belongs to its status item.
class StatusBarButton {
  public:
    virtual ~StatusBarButton() = default;

    virtual void setImage(std::shared_ptr<Image> image) = 0;

    /// A template image is drawn in the bar's own colours, whatever its own are.
    virtual void setImageIsTemplate(bool isTemplate) = 0;

    /// What a click does; it receives the button. Replaces an earlier action.
    virtual void setAction(std::function<void(StatusBarButton&)> action) = 0;
    virtual void sendActionOn(EventMask mask) = 0;
};

/// Removed from the bar when destroyed.
class StatusItem {
  public:
    virtual ~StatusItem() = default;

    /// Null where the platform gives the item no button; else it lives as long as the item.
    virtual StatusBarButton* button() = 0;
};

class StatusBar {
  public:
    virtual ~StatusBar() = default;

    /// A new status item, never null. It may appear later, when a bar does.
    virtual std::unique_ptr<StatusItem> statusItemWithLength(double length) = 0;
};

} // namespace kestrel
