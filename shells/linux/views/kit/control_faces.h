#pragma once
// How buttons and fields look without their texts: drawn by the kit's own and, through
// FallbackStyle, by the toolkit's.

#include <QColor>
#include <QPalette>
#include <QRectF>

class QPainter;

namespace kestrel::linux_shell {

struct ButtonFace {
    bool isProminent = false;
    bool isEnabled = true;
    bool isHovered = false;
    bool isDown = false;
    bool showsFocus = false;
};

void drawButtonFace(QPainter& painter, const QRectF& rect, const QPalette& palette,
                    const ButtonFace& face);

/// That of the title on the face.
QColor buttonTitleColor(const QPalette& palette, const ButtonFace& face);

struct FieldFace {
    bool isHovered = false;
    bool hasFocus = false;
};

void drawFieldFace(QPainter& painter, const QRectF& rect, const QPalette& palette,
                   const FieldFace& face);

} // namespace kestrel::linux_shell
