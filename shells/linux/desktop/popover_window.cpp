#include "shells/linux/desktop/popover_window.h"

#include "shells/linux/desktop/popover_frame.h"
#include "shells/linux/desktop/x11.h"

#include <QApplication>
#include <QCursor>
#include <QKeyEvent>
#include <QLayout>
#include <QPainter>
#include <QScreen>
#include <QStyle>
#include <QWindow>

#include <chrono>
#include <cmath>
#include <optional>

namespace kestrel::linux_shell {
namespace {

constexpr std::chrono::milliseconds grabInterval{20};
constexpr int fadeTime = 120; // milliseconds

// The toolkit learns late that the keyboard has left a popup, and then closes every popup, also
// one that was opened since.
constexpr int staleCloseTime = 150; // milliseconds

// A bar of a Wayland session covers every X11 window, and some sessions do not tell where it is.
constexpr int unknownBarHeight = 40; // pixels

ScreenArea areaAround(QPoint point) {
    auto* screen = QGuiApplication::screenAt(point);
    if (screen == nullptr) {
        screen = QGuiApplication::primaryScreen();
    }
    ScreenArea area{screen->geometry(), screen->availableGeometry()};
    const auto panels = x11::panels();
    for (const QRect& panel : panels) {
        if (panel.contains(point)) {
            area = withoutPanel(area, panel);
        }
    }
    return area;
}

QRect placed(const PopoverAnchor& anchor, QSize size) {
    switch (anchor.kind) {
    case PopoverAnchor::Kind::icon:
        return placedAtIcon(anchor.icon, size, areaAround(anchor.icon.center()));
    case PopoverAnchor::Kind::pointer: {
        auto area = areaAround(anchor.point);
        if (x11::isXWayland() && area.available == area.whole) {
            area = withoutBarsAround(anchor.point, area);
        }
        return placedAtIcon(iconAround(anchor.point, area), size, area);
    }
    case PopoverAnchor::Kind::hiddenPointer:
    case PopoverAnchor::Kind::corner:
        break;
    }
    auto area = areaAround(QCursor::pos());
    if (x11::isXWayland() && area.available == area.whole) {
        area.available.adjust(0, unknownBarHeight, -unknownBarHeight, 0);
    }
    return placedInCorner(size, area);
}

} // namespace

PopoverWindow::PopoverWindow()
    : QWidget(nullptr, Qt::Popup | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint) {
    setAttribute(Qt::WA_NoMouseReplay);
    setAttribute(Qt::WA_TranslucentBackground);
    setWindowTitle(QStringLiteral("Kestrel"));
    setWindowRole(QStringLiteral("popover"));
    if (x11::isXWayland()) {
        catcher_ = std::make_unique<PointerCatcher>([this] { performClose(); });
    }
    grabRetry_.setInterval(grabInterval);
    connect(&grabRetry_, &QTimer::timeout, this, &PopoverWindow::grabInput);
    fade_.setTargetObject(this);
    fade_.setPropertyName("windowOpacity");
    fade_.setDuration(fadeTime);
    fade_.setStartValue(0.0);
    fade_.setEndValue(1.0);
}

PopoverWindow::~PopoverWindow() { hide(); }

void PopoverWindow::setContentViewController(std::unique_ptr<HostingController> controller) {
    auto* hosting = dynamic_cast<WidgetController*>(controller.get());
    Q_ASSERT_X(hosting != nullptr, "PopoverWindow", "a controller of another shell");
    static_cast<void>(controller.release());
    controller_.reset(hosting);
    auto* content = controller_->widget();
    if (content == nullptr) {
        return;
    }
    content->setParent(this);
    content->show();
    setFocusProxy(content);
    layOut();
}

void PopoverWindow::setContentSize(Size size) {
    contentSize_ = QSize(static_cast<int>(std::lround(size.width)),
                         static_cast<int>(std::lround(size.height)));
    layOut();
}

bool PopoverWindow::isShown() const {
    return isVisible() || (catcher_ != nullptr && catcher_->isVisible());
}

// The icon's panel decides on which side of the icon there is room.
void PopoverWindow::showRelativeTo(StatusBarButton& button, RectEdge preferredEdge) {
    Q_UNUSED(preferredEdge)
    const auto* anchored = dynamic_cast<const AnchoredButton*>(&button);
    open(anchored != nullptr ? anchored->anchor() : PopoverAnchor{});
}

void PopoverWindow::open(const PopoverAnchor& anchor) {
    if (catcher_ == nullptr) {
        showAt(placed(anchor, contentSize_));
        return;
    }
    if (anchor.kind != PopoverAnchor::Kind::hiddenPointer) {
        catcher_->cover();
        showAt(placed(anchor, contentSize_));
        return;
    }
    catcher_->find([this](std::optional<QPoint> pointer) {
        const auto found =
            pointer
                ? PopoverAnchor{.kind = PopoverAnchor::Kind::pointer, .icon = {}, .point = *pointer}
                : PopoverAnchor{};
        showAt(placed(found, contentSize_));
    });
}

void PopoverWindow::performClose() {
    hide();
    if (catcher_ != nullptr) {
        catcher_->hide();
    }
}

void PopoverWindow::prepare() {
    layOut();
    ensurePolished();
    winId();
    grab();
    if (catcher_ != nullptr) {
        catcher_->prepare();
    }
}

QRect PopoverWindow::contentRect() const { return {QPoint(margin_, margin_), contentSize_}; }

// Without blending the corners are cut off and there is no shadow.
void PopoverWindow::layOut() {
    const bool blends = !x11::isAvailable() || x11::isCompositing();
    margin_ = blends ? popover_frame::shadowMargin : 0;
    const QRect content = contentRect();
    setFixedSize(content.size() + QSize(2 * margin_, 2 * margin_));
    if (blends) {
        clearMask();
    } else {
        setMask(popover_frame::shape(content));
    }
    if (controller_ != nullptr && controller_->widget() != nullptr) {
        controller_->widget()->setGeometry(content);
    }
}

void PopoverWindow::showAt(const QRect& content) {
    layOut();
    move(content.topLeft() - QPoint(margin_, margin_));
    fadeIn();
    show();
    raise();
    if (!x11::isAvailable()) {
        activateWindow();
    }
    if (controller_ != nullptr && controller_->widget() != nullptr) {
        controller_->widget()->setFocus(Qt::PopupFocusReason);
    }
}

void PopoverWindow::fadeIn() {
    fade_.stop();
    if (!x11::isAvailable()) { // Wayland knows no opacity of a window, and Qt says so each time
        return;
    }
    const bool canFade = animates_ && margin_ > 0 && !x11::isXWayland() &&
                         style()->styleHint(QStyle::SH_Widget_Animation_Duration) > 0;
    if (canFade) {
        fade_.start();
    } else {
        setWindowOpacity(1);
    }
}

void PopoverWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    pressedOutside_ = false;
    sinceShown_.start();
    if (x11::isAvailable()) {
        grabRetry_.start();
    }
}

// A panel that reports the press of a button holds the pointer until its release, and the toolkit
// does not notice that its own grab was refused; without one a click elsewhere is never seen.
void PopoverWindow::grabInput() {
    if (x11::isMouseButtonDown()) {
        return;
    }
    grabRetry_.stop();
    if (auto* window = windowHandle()) {
        window->setKeyboardGrabEnabled(true);
        window->setMouseGrabEnabled(true);
    }
}

void PopoverWindow::hideEvent(QHideEvent* event) {
    grabRetry_.stop();
    fade_.stop();
    if (catcher_ != nullptr) {
        catcher_->hide();
    }
    QWidget::hideEvent(event);
}

void PopoverWindow::closeEvent(QCloseEvent* event) {
    event->setAccepted(sinceShown_.hasExpired(staleCloseTime));
}

// A press elsewhere is only remembered: were the popover gone before the release, a click on the
// icon would reach the panel and open it again.
void PopoverWindow::mousePressEvent(QMouseEvent* event) {
    event->accept();
    if (!contentRect().contains(event->position().toPoint())) {
        pressedOutside_ = true;
    }
}

void PopoverWindow::mouseReleaseEvent(QMouseEvent* event) {
    event->accept();
    if (pressedOutside_ && event->buttons() == Qt::NoButton) {
        pressedOutside_ = false;
        if (behavior_ != PopoverBehavior::applicationDefined) {
            performClose();
        }
    }
}

void PopoverWindow::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Cancel)) {
        performClose();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void PopoverWindow::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    if (margin_ > 0 && !contentRect().contains(event->rect())) {
        popover_frame::paintShadow(painter, contentRect());
    }
    popover_frame::paintGround(painter, contentRect(), palette());
}

bool PopoverWindow::event(QEvent* event) {
    if (event->type() == QEvent::PaletteChange) {
        update();
    }
    return QWidget::event(event);
}

} // namespace kestrel::linux_shell
