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
    for (const QRect& panel : panels)
        if (panel.contains(point))
            area = withoutPanel(area, panel);
    return area;
}

/// The screen that has a panel, as far as that is told; else that with the pointer.
ScreenArea areaWithPanel() {
    const auto panels = x11::panels();
    const auto screens = QGuiApplication::screens();
    for (const auto* screen : screens) {
        auto area = areaOf(*screen);
        for (const QRect& panel : panels)
            if (area.whole.contains(panel.center()))
                area = withoutPanel(area, panel);
        if (area.available != area.whole)
            return area;
    }
    auto area = areaAround(QCursor::pos());
    if (x11::isXWayland())
        area.available.adjust(0, unknownBarHeight, -unknownBarHeight, 0);
    return area;
}

/// The toolkit posts to each widget that is shown that it is to be painted, and has all of a window
/// painted a second time when the server has asked for it before that arrives.
void forgetUpdatesOf(QWidget& window) {
    QCoreApplication::removePostedEvents(&window, QEvent::UpdateLater);
    const auto widgets = window.findChildren<QWidget*>();
    for (QWidget* widget : widgets)
        QCoreApplication::removePostedEvents(widget, QEvent::UpdateLater);
}

} // namespace

PopoverWindow::PopoverWindow(std::unique_ptr<QWidget> content, PopoverAnchorSource& anchor)
    : content_(content.release()),
      anchor_(anchor),
      input_(PopoverInput::forSession(*this, [this] { close(); })) {
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
    content_->setParent(this);
    content_->show();
    setFocusProxy(content_);
    layOut();
    prepareSoon();
}

PopoverWindow::~PopoverWindow() { hide(); }

PopoverWindow::Placement PopoverWindow::placementAt(const PopoverAnchor& anchor) {
    const auto atIcon = [](const QRect& icon, const ScreenArea& area) {
        return [icon, area](QSize size) { return placedAtIcon(icon, size, area); };
    };
    switch (anchor.kind) {
    case PopoverAnchor::Kind::icon:
        return atIcon(anchor.icon, areaAround(anchor.icon.center()));
    case PopoverAnchor::Kind::pointer: {
        auto area = areaAround(*anchor.point);
        if (x11::isXWayland() && area.available == area.whole)
            area = withoutBarsAround(*anchor.point, area);
        return atIcon(iconAround(*anchor.point, area), area);
    }
    case PopoverAnchor::Kind::panel: {
        const auto area = areaAround(*anchor.point);
        return atIcon(iconOnPanel(*anchor.point, area), area);
    }
    case PopoverAnchor::Kind::hiddenPointer:
    case PopoverAnchor::Kind::corner:
        break;
    }
    return [area = areaWithPanel()](QSize size) {
        return placedAtPanelEnd(size, area, QGuiApplication::layoutDirection());
    };
}

bool PopoverWindow::isShown() const { return isVisible() || input_->isSearching(); }

void PopoverWindow::show(Size size) {
    contentSize_ = QSizeF(size.width, size.height).toSize();
    const auto anchor = anchor_.anchor();
    if (anchor.kind != PopoverAnchor::Kind::hiddenPointer) {
        showAt(anchor);
        return;
    }
    input_->findPointer([this, last = anchor.point](std::optional<QPoint> pointer) {
        if (pointer)
            anchor_.setClickedPoint(*pointer);
        else
            pointer = last;
        const auto kind = pointer ? PopoverAnchor::Kind::pointer : PopoverAnchor::Kind::corner;
        showAt({.kind = kind, .icon = {}, .point = pointer});
    });
}

// In one step: a window above its icon would jump if it grew first and moved then.
void PopoverWindow::setContentSize(Size size) {
    const QSize wanted = QSizeF(size.width, size.height).toSize();
    if (!isShown() || wanted == contentSize_)
        return;
    contentSize_ = wanted;
    if (!isVisible()) // it is shown at this size once the pointer is found
        return;
    const QRect content = placement_(contentSize_);
    setMinimumSize(0, 0);
    setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    setGeometry(content.marginsAdded(margins()));
    layOut();
    input_->follow(content);
}

void PopoverWindow::close() {
    hide();
    input_->end();
}

void PopoverWindow::prepareSoon() {
    isPrepared_ = false;
    if (!isVisible())
        preparation_.start();
}

void PopoverWindow::prepare() {
    if (isShown())
        return;
    isPrepared_ = true;
    if (const QSize wanted = content_->sizeHint(); wanted.isValid())
        contentSize_ = wanted;
    layOut();
    ensurePolished();
    winId();
    input_->prepare();
    fillCaches();
}

// What is painted now is thrown away, but not the images and glyphs that it took.
void PopoverWindow::fillCaches() {
    grab();
    if (auto* window = windowHandle())
        window->setCursor(cursor()); // looked up for the program's first window that has it
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
    if (blends)
        clearMask();
    else
        setMask(popover_frame::shape(content));
    content_->setGeometry(content);
}

void PopoverWindow::showAt(const PopoverAnchor& anchor) {
    placement_ = placementAt(anchor);
    const QRect content = placement_(contentSize_);
    layOut();
    move(content.topLeft() - QPoint(margin_, margin_));
    input_->begin(content, margins());
    fadeIn();
    QWidget::show();
    raise();
    input_->take();
    activateWindow();
    content_->setFocus(Qt::PopupFocusReason);
}

void PopoverWindow::fadeIn() {
    fade_.stop();
    if (!x11::isAvailable()) // Wayland knows no opacity of a window, and Qt says so each time
        return;
    const bool canFade = margin_ > 0 && !x11::isXWayland() &&
                         style()->styleHint(QStyle::SH_Widget_Animation_Duration) > 0;
    if (canFade)
        fade_.start();
    else
        setWindowOpacity(1);
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
    if (!isPrepared_)
        preparation_.start();
    QWidget::hideEvent(event);
}

void PopoverWindow::closeEvent(QCloseEvent* event) {
    event->setAccepted(sinceShown_.hasExpired(staleCloseTime));
}

// A press elsewhere is only remembered: were the popover gone before the release, a click on the
// icon would reach the panel and open it again.
void PopoverWindow::mousePressEvent(QMouseEvent* event) {
    event->accept();
    if (!contentRect().contains(event->position().toPoint()))
        pressedOutside_ = true;
}

void PopoverWindow::mouseReleaseEvent(QMouseEvent* event) {
    event->accept();
    if (pressedOutside_ && event->buttons() == Qt::NoButton) {
        pressedOutside_ = false;
        close();
    }
}

void PopoverWindow::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Cancel))
        close();
    else
        QWidget::keyPressEvent(event);
}

void PopoverWindow::paintEvent(QPaintEvent* event) {
    if (event->rect() == rect() && !std::exchange(isPainted_, true))
        forgetUpdatesOf(*this);
    QPainter painter(this);
    if (margin_ > 0 && !contentRect().contains(event->rect()))
        popover_frame::paintShadow(painter, contentRect());
    popover_frame::paintBackground(painter, contentRect(), palette());
}

void PopoverWindow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange ||
        event->type() == QEvent::StyleChange)
        prepareSoon();
    QWidget::changeEvent(event);
}

} // namespace kestrel::linux_shell
