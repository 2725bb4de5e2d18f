#pragma once
// How the popover looks around its content: corners, hairline and shadow, in the desktop's colours.

#include <QPainter>
#include <QPalette>
#include <QRect>
#include <QRegion>

namespace kestrel::linux_shell::popover_frame {

inline constexpr double cornerRadius = 10; ///< of the content, device-independent pixels

/// The space in device-independent pixels that the shadow takes on each side.
inline constexpr int shadowMargin = 20;

/// The shadow of a popover whose content fills `content`.
void paintShadow(QPainter& painter, const QRect& content);

/// The background of the content, with a hairline around it.
void paintBackground(QPainter& painter, const QRect& content, const QPalette& palette);

/// The part of `content` inside the rounded corners.
QRegion shape(const QRect& content, double radius = cornerRadius);

} // namespace kestrel::linux_shell::popover_frame
