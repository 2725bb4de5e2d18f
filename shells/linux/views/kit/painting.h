#pragma once
// What the controls of the kit have in common when they draw themselves.

#include <QColor>
#include <QPalette>
#include <QRectF>

class QPainter;

namespace kestrel::linux_shell {

inline constexpr double controlRadius = 6; ///< corners of buttons and fields, pixels
inline constexpr int controlHeight = 30;   ///< of buttons, fields and segmented controls, pixels

/// `over` on top of `under`, both opaque afterwards; `share` of `over` from 0 to 1.
QColor mixed(const QColor& under, const QColor& over, double share);

void fillRounded(QPainter& painter, const QRectF& rect, double radius, const QColor& fill);

/// A line of one pixel inside the edges of `rect`.
void strokeRounded(QPainter& painter, const QRectF& rect, double radius, const QColor& color,
                   double width = 1);

/// The mark of the keyboard focus, inside `rect`.
void drawFocusRing(QPainter& painter, const QRectF& rect, double radius, const QPalette& palette);

} // namespace kestrel::linux_shell
