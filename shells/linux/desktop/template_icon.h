#pragma once
// Icons that are only a shape and take the colour of what they stand on.

#include <QColor>
#include <QImage>
#include <QRect>

namespace kestrel::linux_shell {

/// Colours of icons on dark and on light backgrounds.
inline constexpr QColor colorOnDark(0xF2, 0xF2, 0xF2);
inline constexpr QColor colorOnLight(0x2E, 0x2E, 0x2E);

/// The shape of `image` filled with `color`; transparency stays.
QImage tinted(const QImage& image, const QColor& color);

/// The one of these colours that stands out from the corners of `background`, where no icon
/// covers it. `background` is not empty.
QColor contrastingColor(const QImage& background);

/// What the screen shows at `rect`, in device-independent pixels; null when that cannot be seen.
QImage seenAt(const QRect& rect);

} // namespace kestrel::linux_shell
