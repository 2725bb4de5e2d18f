#include "shells/linux/desktop/xembed_icon.h"

#include <QApplication>
#include <QMouseEvent>
#include <QWidget>

namespace kestrel::linux_shell {
namespace {

// A bridge between the protocols reports a window larger than any panel is high.
constexpr int largestIcon = 64;

// The toolkit makes the window that a panel takes in, and a new one when the panel restarts. It is
// known by its class only.
QWidget* asDockedWindow(QObject* object) {
    return object->inherits("QSystemTrayIconSys") ? static_cast<QWidget*>(object) : nullptr;
}

void name(QWidget& docked) {
    const QString name = QStringLiteral("Kestrel");
    docked.setWindowTitle(name);
    docked.setAccessibleName(name);
    docked.setAccessibleDescription(name);
}

} // namespace

XEmbedIcon::XEmbedIcon(const QIcon& icon) : icon_(icon) {
    qApp->installEventFilter(this);
    icon_.setToolTip(QStringLiteral("Kestrel"));
    icon_.show();
}

QRect XEmbedIcon::geometry() const {
    const QRect rect = icon_.geometry();
    return rect.isValid() && rect.width() <= largestIcon && rect.height() <= largestIcon ? rect
                                                                                         : QRect();
}

// The toolkit reports the press of any button; only the left one's release counts. The signal is
// sent later, so that a popover that opens does so outside the handling of the mouse event.
bool XEmbedIcon::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonRelease:
        if (const auto* docked = asDockedWindow(watched)) {
            const auto* mouse = static_cast<QMouseEvent*>(event);
            if (mouse->button() == Qt::LeftButton &&
                docked->rect().contains(mouse->position().toPoint())) {
                QMetaObject::invokeMethod(this, &XEmbedIcon::activated, Qt::QueuedConnection);
            }
            return true;
        }
        return false;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
        return asDockedWindow(watched) != nullptr;
    case QEvent::Show:
        if (auto* docked = asDockedWindow(watched)) {
            name(*docked);
        }
        return false;
    case QEvent::Paint:
        if (asDockedWindow(watched) != nullptr) {
            QMetaObject::invokeMethod(this, &XEmbedIcon::painted, Qt::QueuedConnection);
        }
        return false;
    default:
        return false;
    }
}

} // namespace kestrel::linux_shell
