#pragma once
// Hosts a widget in the popover or in a window. The code that builds a view makes one around the
// view's top widget and hands it to the window, which shows the widget and owns it from then on.

#include "platform/popover.h"

#include <QPointer>
#include <QSize>
#include <QWidget>

#include <memory>
#include <optional>

namespace kestrel::linux_shell {

/// Main thread only. The widget dies with the controller, or with the window before it.
class WidgetController : public HostingController {
  public:
    explicit WidgetController(std::unique_ptr<QWidget> content);
    ~WidgetController() override;
    WidgetController(const WidgetController&) = delete;
    WidgetController& operator=(const WidgetController&) = delete;

    /// Null once the window that showed it is gone.
    QWidget* widget() const { return content_; }

    /// The size the window gives the widget when it is next shown; none before the first call.
    std::optional<QSize> preferredContentSize() const { return preferredSize_; }

    void setPreferredContentSize(Size size) override;

    /// Also moves the focus to the widget, or to what its focus proxy names.
    void makeWindowKey() override;

  private:
    QPointer<QWidget> content_;
    std::optional<QSize> preferredSize_;
};

} // namespace kestrel::linux_shell
