#pragma once
// The icon in the menu bar or the panel's status area.

namespace kestrel {

/// Main thread only. It may appear later, when a bar does; destroying it takes it off the bar. What
/// it shows and what a click does are given when it is made.
class StatusItem {
  public:
    virtual ~StatusItem() = default;
};

} // namespace kestrel
