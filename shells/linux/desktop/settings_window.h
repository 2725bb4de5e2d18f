#pragma once
// The settings window, as the desktop's window manager shows it.

#include "platform/window.h"

#include <QIcon>
#include <QSize>
#include <QWidget>

#include <functional>
#include <memory>

namespace kestrel::linux_shell {

/// Main thread only.
class SettingsWindow final : public Window {
  public:
    /// Not shown yet, in the middle of the screen with the pointer. `onClosed` is called when the
    /// user closes it, and may destroy it.
    SettingsWindow(std::unique_ptr<QWidget> content, QSize contentSize, const QIcon& icon,
                   std::function<void()> onClosed);

    void bringForward() override;

    QWidget& widget();

  private:
    class Frame;

    /// The frame may be handling the very event that ends the window.
    struct DeleteLater {
        void operator()(Frame* frame) const;
    };

    std::unique_ptr<Frame, DeleteLater> frame_;
};

} // namespace kestrel::linux_shell
