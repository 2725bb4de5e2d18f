#pragma once
// An ordinary window.

#include "platform/geometry.h"
#include "platform/popover.h"

#include <memory>
#include <string_view>

namespace kestrel {

class Window;

/// What a window tells its owner. The delegate outlives the window, or is unset before it dies.
class WindowDelegate {
  public:
    virtual ~WindowDelegate() = default;

    /// The user closes `window`, which still exists; null when the platform names no window. The
    /// delegate may destroy the window inside this call.
    virtual void windowWillClose(Window* window) = 0;
};

enum class WindowStyleMask : unsigned {
    titled = 1U << 0U,
    closable = 1U << 1U,
    miniaturizable = 1U << 2U,
    resizable = 1U << 3U,
};

constexpr WindowStyleMask operator|(WindowStyleMask a, WindowStyleMask b) {
    return static_cast<WindowStyleMask>(static_cast<unsigned>(a) | static_cast<unsigned>(b));
}

enum class BackingStore { buffered = 2 };
enum class WindowCreation { immediate, deferred };

/// Main thread only. Destroying it takes it off the screen without telling the delegate.
class Window {
  public:
    virtual ~Window() = default;

    virtual void setTitle(std::string_view title) = 0;
    virtual void setContentViewController(std::unique_ptr<HostingController> controller) = 0;
    virtual void setReleasedWhenClosed(bool released) = 0;
    virtual void center() = 0;
    virtual void setDelegate(WindowDelegate* delegate) = 0;

    /// Shows the window, restores it when minimised, raises it and gives it the keyboard.
    virtual void makeKeyAndOrderFront() = 0;
};

class WindowServer {
  public:
    virtual ~WindowServer() = default;

    /// A new window, not yet shown; never null.
    virtual std::unique_ptr<Window> makeWindow(Rect contentRect, WindowStyleMask styleMask,
                                               BackingStore backing, WindowCreation creation) = 0;
};

} // namespace kestrel
