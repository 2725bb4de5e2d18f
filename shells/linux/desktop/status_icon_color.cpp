#include "shells/linux/desktop/status_icon_color.h"

#include "shells/linux/desktop/current_desktop.h"
#include "shells/linux/desktop/panel_color.h"
#include "shells/linux/desktop/template_icon.h"
#include "shells/linux/desktop/x11.h"

#include <QApplication>
#include <QPalette>

#include <chrono>
#include <utility>

namespace kestrel::linux_shell {
namespace {

// Readable on a light panel and on a dark one.
constexpr QColor neutral(0x8C, 0x8C, 0x8C);

constexpr std::chrono::milliseconds panelSettles{300};

} // namespace

StatusIconColor::StatusIconColor(std::function<QList<QRect>()> panels)
    : panels_(std::move(panels)) {
    settling_.setSingleShot(true);
    settling_.setInterval(panelSettles);
    connect(&settling_, &QTimer::timeout, this, &StatusIconColor::look);
    qApp->installEventFilter(this);
    // Panels that are no windows are only known by the room that is kept for them.
    connect(qGuiApp, &QGuiApplication::screenAdded, this, &StatusIconColor::watch);
    const auto screens = QGuiApplication::screens();
    for (const auto* screen : screens)
        watch(screen);
}

// The bar of GNOME's shell is dark whatever programs are to be.
QColor StatusIconColor::onNotifierPanel() const {
    if (panelColor_)
        return *panelColor_;
    if (currentDesktopIs(u"GNOME"))
        return colorOnDark;
    if (scheme_)
        return *scheme_ == ColorScheme::dark ? colorOnDark : colorOnLight;
    return neutral;
}

QColor StatusIconColor::inTray() const {
    return x11::trayForeground().value_or(
        panelColor_.value_or(QApplication::palette().color(QPalette::WindowText)));
}

void StatusIconColor::setColorScheme(std::optional<ColorScheme> scheme) {
    if (std::exchange(scheme_, scheme) != scheme)
        Q_EMIT changed();
}

void StatusIconColor::watch(const QScreen* screen) {
    connect(screen, &QScreen::availableGeometryChanged, &settling_, qOverload<>(&QTimer::start));
}

// A panel that does not name its colours is looked at: its corners, or those of the icon in it,
// show the background. A change of colour paints the icon again and has this look once more, which
// then finds no other.
void StatusIconColor::look() {
    if (x11::isXWayland())
        return;
    if (QApplication::activePopupWidget() != nullptr) {
        lookSoon(); // until nothing may lie over the panel
        return;
    }
    const auto color = colorOn(panels_(), panelColor_);
    if (std::exchange(panelColor_, color) != color)
        Q_EMIT changed();
}

bool StatusIconColor::eventFilter(QObject* watched, QEvent* event) {
    if (watched == qApp && (event->type() == QEvent::ApplicationPaletteChange ||
                            event->type() == QEvent::ThemeChange)) {
        forgetPanel();
        Q_EMIT changed();
        lookSoon();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace kestrel::linux_shell
