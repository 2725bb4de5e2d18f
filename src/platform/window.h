#pragma once
// An ordinary window. Its content is given when it is made.

namespace kestrel {

/// Main thread only. Destroying it takes it off the screen and tells nobody.
class Window {
  public:
    virtual ~Window() = default;

    /// Shows the window, restores it when minimised, raises it and gives it the keyboard.
    virtual void bringForward() = 0;
};

} // namespace kestrel
