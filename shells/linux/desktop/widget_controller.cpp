#include "shells/linux/desktop/widget_controller.h"

#include <cmath>

namespace kestrel::linux_shell {

WidgetController::WidgetController(std::unique_ptr<QWidget> content)
    : content_(content.release()) {}

WidgetController::~WidgetController() { delete content_.data(); }

void WidgetController::setPreferredContentSize(Size size) {
    preferredSize_ = QSize(static_cast<int>(std::lround(size.width)),
                           static_cast<int>(std::lround(size.height)));
}

void WidgetController::makeWindowKey() {
    if (content_ == nullptr || !content_->window()->isVisible()) {
        return;
    }
    content_->window()->activateWindow();
    content_->setFocus(Qt::ActiveWindowFocusReason);
}

} // namespace kestrel::linux_shell
