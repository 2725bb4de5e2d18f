#include "shells/linux/views/kit/sheet.h"

#include "shells/linux/views/kit/accessible_role.h"
#include "shells/linux/views/kit/painting.h"
#include "shells/linux/views/kit/style_bridge.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWheelEvent>

namespace kestrel::linux_shell {

namespace {

constexpr double cornerRadius = 10;
constexpr int shadowReach = 18; // pixels
constexpr int shadowDrop = 4;   // pixels
constexpr double dimOnLight = 0.16;
constexpr double dimOnDark = 0.4;

QColor panelColor(const QPalette& palette) {
    const QColor window = palette.color(QPalette::Active, QPalette::Window);
    return isDark(palette) ? mixed(window, Qt::white, 0.05) : window;
}

// Rings of falling strength; the eye takes them for a soft edge.
void paintShadow(QPainter& painter, const QRectF& panel, bool dark) {
    const double strength = dark ? 0.09 : 0.035;
    for (int reach = shadowReach; reach > 0; reach -= 2) {
        const QRectF ring = panel.adjusted(-reach, -reach, reach, reach).translated(0, shadowDrop);
        const double share = 1 - static_cast<double>(reach) / shadowReach;
        fillRounded(painter, ring, cornerRadius + reach,
                    QColor::fromRgbF(0, 0, 0, static_cast<float>(strength * share)));
    }
}

} // namespace

Sheet::Sheet(QWidget& content, const QString& name, QWidget& behind, QWidget& window)
    : QWidget(&window),
      content_(content),
      behind_(&behind),
      focusBefore_(QApplication::focusWidget()) {
    setAccessibleRole(*this, QAccessible::Dialog);
    setAccessibleName(name);
    setFocusPolicy(Qt::NoFocus);
    content_.setParent(this);
    content_.installEventFilter(this);
    window.installEventFilter(this);
    behind.setEnabled(false);
    resize(window.size());
    raise();
    show();
    content_.show();
    place();
}

Sheet::~Sheet() = default;

void Sheet::close() {
    hide();
    if (QWidget* behind = behind_.data())
        behind->setEnabled(true);
    QWidget* focusBefore = focusBefore_.data();
    if (focusBefore != nullptr && focusBefore->isVisible())
        focusBefore->setFocus(Qt::PopupFocusReason); // it only comes back
    deleteLater();
}

void Sheet::place() {
    content_.adjustSize();
    content_.move((width() - content_.width()) / 2, 0);
    update();
}

bool Sheet::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parent() && event->type() == QEvent::Resize)
        resize(parentWidget()->size());
    else if (watched == &content_ && event->type() == QEvent::LayoutRequest)
        place();
    return QWidget::eventFilter(watched, event);
}

// Tab goes round inside the sheet.
bool Sheet::focusNextPrevChild(bool next) {
    QWidget* const focused = QApplication::focusWidget();
    QWidget* const start = focused != nullptr && isAncestorOf(focused) ? focused : &content_;
    QWidget* widget = start;
    do {
        widget = next ? widget->nextInFocusChain() : widget->previousInFocusChain();
        const bool stops = isAncestorOf(widget) && widget->isVisible() && widget->isEnabled() &&
                           (widget->focusPolicy() & Qt::TabFocus) != 0;
        if (stops) {
            widget->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            return true;
        }
    } while (widget != start);
    return true;
}

// What the content leaves over goes no further.
void Sheet::keyPressEvent(QKeyEvent* event) { event->accept(); }
void Sheet::mousePressEvent(QMouseEvent* event) { event->accept(); }
void Sheet::wheelEvent(QWheelEvent* event) { event->accept(); }
void Sheet::contextMenuEvent(QContextMenuEvent* event) { event->accept(); }

void Sheet::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    place();
}

void Sheet::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const bool dark = isDark(palette());
    painter.fillRect(rect(),
                     QColor::fromRgbF(0, 0, 0, static_cast<float>(dark ? dimOnDark : dimOnLight)));
    // The upper corners lie above the edge from which the panel hangs.
    const QRectF panel = QRectF(content_.geometry()).adjusted(0, -cornerRadius, 0, 0);
    paintShadow(painter, panel, dark);
    fillRounded(painter, panel, cornerRadius, panelColor(palette()));
    strokeRounded(painter, panel, cornerRadius, separatorColor(palette()));
}

} // namespace kestrel::linux_shell
