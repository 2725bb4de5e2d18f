#include "shells/linux/views/kit/control_faces.h"

#include "shells/linux/views/kit/painting.h"
#include "shells/linux/views/kit/style_bridge.h"

#include <QPainter>

namespace kestrel::linux_shell {
namespace {

constexpr int halfLight = 128;

QColor prominentFill(const QPalette& palette, const ButtonFace& face) {
    // Away from the title's colour, so that it stays readable.
    const QColor shade =
        buttonTitleColor(palette, face).lightness() < halfLight ? Qt::white : Qt::black;
    return mixed(prominentColor(palette), shade, face.isDown ? 0.2 : face.isHovered ? 0.1 : 0);
}

QColor plainFill(const QPalette& palette, const ButtonFace& face) {
    const QColor window = palette.color(QPalette::Active, QPalette::Window);
    const QColor text = colorFor(style::ColorLevel::primary, palette);
    if (!face.isEnabled)
        return mixed(window, text, 0.06);
    const QColor fill =
        isDark(palette) ? mixed(window, text, 0.12) : mixed(window, Qt::white, 0.75);
    return mixed(fill, text, face.isDown ? 0.12 : face.isHovered ? 0.05 : 0);
}

// On the accent colour the ring stands off the edge to be seen.
void drawFocus(QPainter& painter, const QRectF& rect, const QPalette& palette,
               const ButtonFace& face) {
    if (face.isProminent) {
        strokeRounded(painter, rect.adjusted(2, 2, -2, -2), controlRadius - 2,
                      buttonTitleColor(palette, face), 1.5);
    } else {
        drawFocusRing(painter, rect, controlRadius, palette);
    }
}

} // namespace

void drawButtonFace(QPainter& painter, const QRectF& rect, const QPalette& palette,
                    const ButtonFace& face) {
    const bool isFilled = face.isProminent && face.isEnabled;
    fillRounded(painter, rect, controlRadius,
                isFilled ? prominentFill(palette, face) : plainFill(palette, face));
    if (!isFilled)
        strokeRounded(painter, rect, controlRadius,
                      outlineColor(palette, face.isEnabled ? 0.2 : 0.1));
    if (face.showsFocus)
        drawFocus(painter, rect, palette, face);
}

QColor buttonTitleColor(const QPalette& palette, const ButtonFace& face) {
    if (!face.isEnabled)
        return colorFor(style::ColorLevel::tertiaryLabel, palette);
    return face.isProminent ? palette.color(QPalette::Active, QPalette::HighlightedText)
                            : colorFor(style::ColorLevel::primary, palette);
}

void drawFieldFace(QPainter& painter, const QRectF& rect, const QPalette& palette,
                   const FieldFace& face) {
    fillRounded(painter, rect, controlRadius, palette.color(QPalette::Active, QPalette::Base));
    if (face.hasFocus) {
        drawFocusRing(painter, rect, controlRadius, palette);
    } else {
        strokeRounded(
            painter, rect, controlRadius,
            fieldOutlineColor(palette, face.isHovered ? Pointer::over : Pointer::elsewhere));
    }
}

} // namespace kestrel::linux_shell
