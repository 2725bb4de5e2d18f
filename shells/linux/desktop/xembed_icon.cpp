#include "shells/linux/desktop/xembed_icon.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPixmap>
#include <QScreen>
#include <QWidget>

namespace kestrel::linux_shell {
namespace {

// A bridge between the protocols reports a window larger than any panel is high.
constexpr int largestIcon = 64;

QWidget* findDockedWindow() {
    const auto windows = QApplication::topLevelWidgets();
    for (auto* window : windows) {
        if (window->inherits("QSystemTrayIconSys")) {
            return window;
        }
    }
    return nullptr;
}

} // namespace

XEmbedIcon::XEmbedIcon(const QIcon& icon) : icon_(icon) {
    icon_.setToolTip(QStringLiteral("Kestrel"));
    icon_.show();
    auto* docked = findDockedWindow();
    if (docked == nullptr) {
        connect(&icon_, &QSystemTrayIcon::activated, this,
                [this](QSystemTrayIcon::ActivationReason reason) {
                    if (reason == QSystemTrayIcon::Trigger) {
                        Q_EMIT activated();
                    }
                });
        return;
    }
    docked->setWindowTitle(QStringLiteral("Kestrel"));
    docked->setAccessibleName(QStringLiteral("Kestrel"));
    docked->setAccessibleDescription(QStringLiteral("Kestrel"));
    docked->installEventFilter(this);
}

QRect XEmbedIcon::geometry() const {
    const QRect rect = icon_.geometry();
    return rect.isValid() && rect.width() <= largestIcon && rect.height() <= largestIcon ? rect
                                                                                         : QRect();
}

QImage XEmbedIcon::grab() const {
    const QRect rect = geometry();
    auto* screen = QGuiApplication::screenAt(rect.center());
    if (rect.isEmpty() || screen == nullptr) {
        return {};
    }
    const QPoint corner = rect.topLeft() - screen->geometry().topLeft();
    return screen->grabWindow(0, corner.x(), corner.y(), rect.width(), rect.height()).toImage();
}

// The toolkit reports the press of any button; only the left one's release counts. The signal is
// sent later, so that a popover that opens does so outside the handling of the mouse event.
bool XEmbedIcon::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonRelease: {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        const auto* docked = static_cast<QWidget*>(watched);
        if (mouse->button() == Qt::LeftButton &&
            docked->rect().contains(mouse->position().toPoint())) {
            QMetaObject::invokeMethod(this, &XEmbedIcon::activated, Qt::QueuedConnection);
        }
        return true;
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
        return true;
    case QEvent::Paint:
        QMetaObject::invokeMethod(this, &XEmbedIcon::painted, Qt::QueuedConnection);
        return false;
    default:
        return QObject::eventFilter(watched, event);
    }
}

} // namespace kestrel::linux_shell
