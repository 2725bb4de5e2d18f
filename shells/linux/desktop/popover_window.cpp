#include "shells/linux/desktop/popover_window.h"

#include "shells/linux/desktop/popover_frame.h"
#include "shells/linux/desktop/popover_placement.h"
#include "shells/linux/desktop/x11.h"

#include <QApplication>
#include <QBackingStore>
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
#include <utility>

namespace kestrel::linux_shell {
namespace {

constexpr int fadeTime = 120; // milliseconds

// The toolkit learns late that the keyboard has left a popup, and then closes every popup, also
// one that was opened since.
constexpr int staleCloseTime = 150; // milliseconds

// Changes come in groups, and a session that starts has enough to do.
constexpr std::chrono::milliseconds idleTime{300};

// A bar of a Wayland session covers every X11 window, and some sessions do not tell where it is.
constexpr int unknownBarHeight = 40; // pixels

ScreenArea areaOf(const QScreen& screen) { return {screen.geometry(), screen.availableGeometry()}; }

ScreenArea areaAround(QPoint point) {
    const auto* screen = QGuiApplication::screenAt(point);
    auto area = areaOf(screen != nullptr ? *screen : *QGuiApplication::primaryScreen());
    const auto panels = x11::panels();
    for (const QRect& panel : panels) {
        if (panel.contains(point)) {
            area = withoutPanel(area, panel);
        }
    }
    return area;
}

/// The screen that has a panel, as far as that is told; else that with the pointer.
ScreenArea areaWithPanel() {
    const auto panels = x11::panels();
    const auto screens = QGuiApplication::screens();
    for (const auto* screen : screens) {
        auto area = areaOf(*screen);
        for (const QRect& panel : panels) {
            if (area.whole.contains(panel.center())) {
                area = withoutPanel(area, panel);
            }
        }
        if (area.available != area.whole) {
            return area;
        }
    }
    auto area = areaAround(QCursor::pos());
    if (x11::isXWayland()) {
        area.available.adjust(0, unknownBarHeight, -unknownBarHeight, 0);
    }
    return area;
}

/// The toolkit posts to each widget that is shown that it is to be painted, and has all of a window
/// painted a second time when the server has asked for it before that arrives.
void forgetUpdatesOf(QWidget& window) {
    QCoreApplication::removePostedEvents(&window, QEvent::UpdateLater);
    const auto widgets = window.findChildren<QWidget*>();
    for (QWidget* widget : widgets) {
        QCoreApplication::removePostedEvents(widget, QEvent::UpdateLater);
    }
}

QRect placed(const PopoverAnchor& anchor, QSize size) {
    switch (anchor.kind) {
    case PopoverAnchor::Kind::icon:
        return placedAtIcon(anchor.icon, size, areaAround(anchor.icon.center()));
    case PopoverAnchor::Kind::pointer: {
        auto area = areaAround(*anchor.point);
        if (x11::isXWayland() && area.available == area.whole) {
            area = withoutBarsAround(*anchor.point, area);
        }
        return placedAtIcon(iconAround(*anchor.point, area), size, area);
    }
    case PopoverAnchor::Kind::panel: {
        const auto area = areaAround(*anchor.point);
        return placedAtIcon(iconOnPanel(*anchor.point, area), size, area);
    }
    case PopoverAnchor::Kind::hiddenPointer:
    case PopoverAnchor::Kind::corner:
        break;
    }
    return placedAtPanelEnd(size, areaWithPanel(), QGuiApplication::layoutDirection());
}

} // namespace

PopoverWindow::PopoverWindow()
    : input_(PopoverInput::forSession(*this, [this] { performClose(); })) {
    setWindowFlags(input_->windowFlags());
    setAttribute(Qt::WA_NoMouseReplay);
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_TranslucentBackground);
    setWindowTitle(QStringLiteral("Kestrel"));
    setWindowRole(QStringLiteral("popover"));
    fade_.setTargetObject(this);
    fade_.setPropertyName("windowOpacity");
    fade_.setDuration(fadeTime);
    fade_.setStartValue(0.0);
    fade_.setEndValue(1.0);
    preparation_.setSingleShot(true);
    preparation_.setInterval(idleTime);
    connect(&preparation_, &QTimer::timeout, this, &PopoverWindow::prepare);
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
    prepareSoon();
}

void PopoverWindow::setContentSize(Size size) {
    contentSize_ = QSize(static_cast<int>(std::lround(size.width)),
                         static_cast<int>(std::lround(size.height)));
    layOut();
}

bool PopoverWindow::isShown() const { return isVisible() || input_->isSearching(); }

// The icon's panel decides on which side of the icon there is room.
void PopoverWindow::showRelativeTo(StatusBarButton& button, RectEdge preferredEdge) {
    Q_UNUSED(preferredEdge)
    auto* anchored = dynamic_cast<AnchoredButton*>(&button);
    const auto anchor = anchored != nullptr ? anchored->anchor() : PopoverAnchor{};
    if (anchor.kind != PopoverAnchor::Kind::hiddenPointer) {
        showAt(placed(anchor, contentSize_));
        return;
    }
    input_->findPointer([this, anchored, last = anchor.point](std::optional<QPoint> pointer) {
        if (pointer) {
            anchored->setClickedPoint(*pointer);
        } else {
            pointer = last;
        }
        const auto kind = pointer ? PopoverAnchor::Kind::pointer : PopoverAnchor::Kind::corner;
        showAt(placed({.kind = kind, .icon = {}, .point = pointer}, contentSize_));
    });
}

void PopoverWindow::performClose() {
    hide();
    input_->end();
}

void PopoverWindow::prepareSoon() {
    isPrepared_ = false;
    if (!isVisible()) {
        preparation_.start();
    }
}

void PopoverWindow::prepare() {
    if (isShown()) {
        return;
    }
    isPrepared_ = true;
    takeSizeOfContent();
    layOut();
    ensurePolished();
    winId();
    input_->prepare();
    fillCaches();
}

void PopoverWindow::takeSizeOfContent() {
    const auto* content = controller_ != nullptr ? controller_->widget() : nullptr;
    const QSize wanted = content != nullptr ? content->sizeHint() : QSize();
    if (wanted.isValid()) {
        contentSize_ = wanted;
    }
}

// What is painted now is thrown away, but not the pictures and glyphs that it took.
void PopoverWindow::fillCaches() {
    grab();
    if (auto* window = windowHandle()) {
        window->setCursor(cursor()); // looked up for the program's first window that has it
    }
    // Has the memory for the window's pixels set up, without touching it.
    if (auto* store = backingStore()) {
        store->resize(size());
        store->beginPaint(QRegion());
        store->endPaint();
    }
    x11::panels();
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
    input_->begin(content, {margin_, margin_, margin_, margin_});
    fadeIn();
    show();
    raise();
    input_->take();
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
    isPainted_ = false;
    isPrepared_ = true;
    preparation_.stop();
    sinceShown_.start();
}

void PopoverWindow::hideEvent(QHideEvent* event) {
    fade_.stop();
    input_->end();
    if (!isPrepared_) {
        preparation_.start();
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
    if (event->rect() == rect() && !std::exchange(isPainted_, true)) {
        forgetUpdatesOf(*this);
    }
    QPainter painter(this);
    if (margin_ > 0 && !contentRect().contains(event->rect())) {
        popover_frame::paintShadow(painter, contentRect());
    }
    popover_frame::paintGround(painter, contentRect(), palette());
}

bool PopoverWindow::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::PaletteChange:
        update();
        prepareSoon();
        break;
    case QEvent::FontChange:
    case QEvent::StyleChange:
        prepareSoon();
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

} // namespace kestrel::linux_shell
