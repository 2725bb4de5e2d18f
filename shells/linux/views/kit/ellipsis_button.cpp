#include "shells/linux/views/kit/ellipsis_button.h"

#include "shells/linux/desktop/appearance/symbol.h"
#include "shells/linux/views/kit/painting.h"
#include "shells/linux/views/kit/style_bridge.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>

namespace kestrel::linux_shell {

namespace {

constexpr int sidePadding = 3; // pixels around the symbol that react as well
constexpr double hoverWash = 0.08;

/// Opens the menu for assistive technology, which the toolkit's own interface does not do for a
/// menu that opens at once. Opens it later: the menu runs an event loop, and the call is answered
/// before.
class AccessibleEllipsisButton : public QAccessibleWidget {
  public:
    explicit AccessibleEllipsisButton(EllipsisButton& button)
        : QAccessibleWidget(&button, QAccessible::ButtonMenu) {}

    static QAccessibleInterface* make(const QString& /*className*/, QObject* object) {
        auto* const button = qobject_cast<EllipsisButton*>(object);
        return button == nullptr ? nullptr : new AccessibleEllipsisButton(*button);
    }

    QStringList actionNames() const override {
        return widget()->isEnabled() ? QStringList{showMenuAction(), setFocusAction()}
                                     : QStringList();
    }

    void doAction(const QString& name) override {
        if (name == showMenuAction() && widget()->isEnabled())
            QMetaObject::invokeMethod(widget(), "showMenu", Qt::QueuedConnection);
        else if (name != showMenuAction())
            QAccessibleWidget::doAction(name);
    }
};

} // namespace

EllipsisButton::EllipsisButton(const style::SymbolStyle& symbol, const QString& name,
                               QWidget* parent)
    : QToolButton(parent), symbol_(symbol) {
    QAccessible::installFactory(AccessibleEllipsisButton::make);
    setPopupMode(QToolButton::InstantPopup);
    setAccessibleName(name);
    setToolTip(name);
    setAttribute(Qt::WA_Hover);
    setFixedSize(EllipsisButton::sizeHint());
}

void EllipsisButton::setOpacity(double opacity) {
    if (opacity != opacity_) {
        opacity_ = opacity;
        update();
    }
}

double EllipsisButton::shownOpacity() const {
    const bool menuOpen = menu() != nullptr && menu()->isVisible();
    return hasFocus() || menuOpen ? 1 : opacity_;
}

QSize EllipsisButton::sizeHint() const {
    const int side = symbolExtent(symbol_.font.size) + 2 * sidePadding;
    return {side, side};
}

void EllipsisButton::paintEvent(QPaintEvent* /*event*/) {
    if (shownOpacity() == 0)
        return;
    QPainter painter(this);
    painter.setOpacity(shownOpacity());
    if (underMouse() || isDown())
        fillRounded(painter, rect(), controlRadius, washColor(palette(), hoverWash));
    if (hasFocus())
        drawFocusRing(painter, rect(), controlRadius, palette());
    drawSymbol(painter, QPoint(sidePadding, sidePadding), symbol_.name,
               symbolExtent(symbol_.font.size), colorFor(symbol_.color, palette()));
}

// The base class would take the arrow keys to walk among neighbouring buttons; they are the
// list's.
void EllipsisButton::keyPressEvent(QKeyEvent* event) {
    const bool presses = event->key() == Qt::Key_Space || event->key() == Qt::Key_Return ||
                         event->key() == Qt::Key_Enter;
    if (presses)
        showMenu();
    else
        event->ignore();
}

} // namespace kestrel::linux_shell
