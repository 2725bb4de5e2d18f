#include "shells/linux/desktop/window_frame.h"

#include "shells/linux/desktop/window_server.h"

#include <QCloseEvent>

#include <utility>

namespace kestrel::linux_shell {

WindowFrame::WindowFrame(SettingsWindowShell& shell, Qt::WindowFlags flags)
    : QWidget(nullptr, flags), shell_(&shell) {
    setWindowRole(QStringLiteral("settings"));
}

void WindowFrame::setContent(std::unique_ptr<WidgetController> controller) {
    controller_ = std::move(controller);
    auto* content = controller_->widget();
    if (content == nullptr) {
        return;
    }
    content->setParent(this);
    content->setGeometry(rect());
    content->show();
    setFocusProxy(content);
    setMinimumSize(content->minimumSizeHint().expandedTo(content->minimumSize()));
}

void WindowFrame::closeEvent(QCloseEvent* event) {
    event->accept();
    if (shell_ != nullptr) {
        shell_->willClose();
    }
}

void WindowFrame::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (controller_ != nullptr && controller_->widget() != nullptr) {
        controller_->widget()->setGeometry(rect());
    }
}

} // namespace kestrel::linux_shell
