#pragma once
// Whether the keyboard focus of a control is worth a mark: only when the keyboard brought it there.
// Who clicks a control, or just opened its window, knows where the keys go.

#include <Qt>

namespace kestrel::linux_shell {

class KeyboardFocus {
  public:
    /// The control got the focus. When it only comes back, with its window or after a menu, things
    /// are as they were.
    void focused(Qt::FocusReason reason) {
        if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason)
            return;
        fromKeyboard_ = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                        reason == Qt::ShortcutFocusReason;
    }

    /// The focused control received a key.
    void keyPressed() { fromKeyboard_ = true; }

    /// Whatever brought the focus here is over.
    void reset() { fromKeyboard_ = false; }

    bool isFromKeyboard() const { return fromKeyboard_; }

  private:
    bool fromKeyboard_ = false;
};

} // namespace kestrel::linux_shell
