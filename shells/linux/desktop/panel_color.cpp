#include "shells/linux/desktop/panel_color.h"

#include "shells/linux/desktop/popover_placement.h"
#include "shells/linux/desktop/template_icon.h"
#include "shells/linux/desktop/x11.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace kestrel::linux_shell {
namespace {

QList<QRect> strips() {
    QList<QRect> found;
    const auto screens = QGuiApplication::screens();
    for (const auto* screen : screens)
        for (const QRect& strip : keptFree({screen->geometry(), screen->availableGeometry()}))
            found.append(strip);
    return found;
}

} // namespace

QList<QRect> likelyPanels(std::optional<QPoint> click) {
    if (!x11::isAvailable() || x11::isXWayland())
        return {};
    auto panels = x11::panels();
    if (panels.isEmpty())
        panels = strips();
    const auto clicked = std::ranges::find_if(
        panels, [click](const QRect& panel) { return click && panel.contains(*click); });
    return clicked != panels.end() ? QList{*clicked} : panels;
}

std::optional<QColor> colorOn(const QList<QRect>& panels, std::optional<QColor> before) {
    std::optional<QColor> color;
    for (const QRect& panel : panels) {
        const QImage background = seenAt(panel);
        if (background.isNull())
            return before;
        const QColor contrasting = contrastingColor(background);
        if (color && *color != contrasting)
            return std::nullopt;
        color = contrasting;
    }
    return color ? color : before;
}

} // namespace kestrel::linux_shell
