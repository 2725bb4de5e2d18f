#pragma once
// The images of the status icon: a template in the sizes and the colour that a panel wants.

#include <QColor>
#include <QIcon>
#include <QImage>
#include <QList>

#include <functional>

namespace kestrel::linux_shell {

/// Draws the icon's shape into a square of so many pixels; null where there is no such drawing.
using IconRenderer = std::function<QImage(int pixels)>;

/// The shape in `color` in all the sizes that panels show icons at; none without a drawing.
QList<QImage> statusIconImages(const IconRenderer& renderer, const QColor& color);

/// One icon of several sizes.
QIcon iconOf(const QList<QImage>& images);

} // namespace kestrel::linux_shell
