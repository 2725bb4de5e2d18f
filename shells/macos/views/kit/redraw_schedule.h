#pragma once
// When a view draws the core's state again. The signal of a state fires before the change, so the
// redraw waits for the next turn of the main queue.

#include "store/weak_anchor.h"
#include "store/will_change_signal.h"

#include <functional>

namespace kestrel::macos_shell {

/// A member of the view or of its controller. Main thread only.
class RedrawSchedule {
  public:
    /// Any number of firings of `signal` until the redraw make one.
    RedrawSchedule(WillChangeSignal& signal, std::function<void()> redraw);

  private:
    void request();

    std::function<void()> redraw_;
    bool isDue_ = false;
    Subscription willChange_;
    WeakAnchor<RedrawSchedule> anchor_{*this};
};

} // namespace kestrel::macos_shell
