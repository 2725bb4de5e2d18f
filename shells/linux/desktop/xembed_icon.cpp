#include "shells/linux/desktop/xembed_icon.h"

#include "shells/linux/desktop/x11.h"
#include "shells/linux/desktop/x11_connection.h"
#include "shells/linux/desktop/x11_windows.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>

#include <utility>

namespace kestrel::linux_shell {
namespace {

// What panels expect of an icon that says nothing; most give it the height that they have.
constexpr int usualSize = 22;

// A bridge between the protocols reports a window larger than any panel is high.
constexpr int largestIcon = 64;

} // namespace

XEmbedIcon::XEmbedIcon(const QString& name, const QIcon& icon)
    : QWidget(nullptr, Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint), icon_(icon) {
    setWindowTitle(name);
    setAccessibleName(name);
    setAccessibleDescription(name);
    setToolTip(name);
    setAttribute(Qt::WA_AlwaysShowToolTips);
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_TranslucentBackground, x11::trayBlends());
    setMinimumSize(usualSize, usualSize);
    resize(usualSize, usualSize);
    qApp->installNativeEventFilter(this);
    x11::requestDock(winId());
}

XEmbedIcon::~XEmbedIcon() { qApp->removeNativeEventFilter(this); }

void XEmbedIcon::setIcon(const QIcon& icon) {
    icon_ = icon;
    update();
}

QRect XEmbedIcon::rectOnScreen() const {
    const QRect rect = isDocked_ ? x11::rectOnScreen(winId()) : QRect();
    return rect.width() <= largestIcon && rect.height() <= largestIcon ? rect : QRect();
}

// The server tells when the window gets a new parent: the panel's, or the root window when a panel
// that ends gives it back.
bool XEmbedIcon::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    const auto type = event->response_type & 0x7FU;
    const auto own = static_cast<xcb_window_t>(internalWinId());
    if (type == XCB_REPARENT_NOTIFY) {
        const auto* reparented = reinterpret_cast<const xcb_reparent_notify_event_t*>(event);
        if (reparented->window == own) {
            const bool isInPanel = reparented->parent != x11::rootWindow(x11::connection());
            isInPanel ? enterPanel() : leavePanel();
        }
    } else if (type == XCB_DESTROY_NOTIFY) {
        if (reinterpret_cast<const xcb_destroy_notify_event_t*>(event)->window == own)
            leavePanel();
    }
    return false;
}

// The toolkit paints only windows that it has shown itself, however visible the panel has made
// them.
void XEmbedIcon::enterPanel() {
    isDocked_ = true;
    forgetBackground();
    show();
    Q_EMIT docked();
}

void XEmbedIcon::leavePanel() {
    if (std::exchange(isDocked_, false))
        Q_EMIT undocked();
}

void XEmbedIcon::forgetBackground() {
    background_ = QPixmap();
    if (!testAttribute(Qt::WA_TranslucentBackground))
        x11::inheritBackground(winId());
    update();
}

void XEmbedIcon::moveEvent(QMoveEvent* event) {
    QWidget::moveEvent(event);
    forgetBackground();
}

void XEmbedIcon::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    forgetBackground();
}

// Only the left button's release counts. The signal is sent later, so that a popover that opens
// does so outside the handling of the mouse event.
void XEmbedIcon::mouseReleaseEvent(QMouseEvent* event) {
    event->accept();
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        QMetaObject::invokeMethod(this, &XEmbedIcon::activated, Qt::QueuedConnection);
}

// In a panel that does not blend, what it shows under the window is fetched before the icon first
// covers it.
void XEmbedIcon::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (testAttribute(Qt::WA_TranslucentBackground)) {
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(rect(), Qt::transparent);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    } else {
        if (background_.isNull())
            background_ = screen()->grabWindow(winId());
        painter.drawPixmap(rect(), background_);
    }
    icon_.paint(&painter, rect());
    QMetaObject::invokeMethod(this, &XEmbedIcon::painted, Qt::QueuedConnection);
}

} // namespace kestrel::linux_shell
