#pragma once
// How well colours can be told apart, as the Web Content Accessibility Guidelines define it for
// opaque colours.

#include <QColor>

namespace kestrel::linux_shell {

inline constexpr double readableText = 4.5; ///< the least contrast of a text
inline constexpr double visibleShape = 3;   ///< of symbols, outlines and placeholders

/// From 1 to 21.
double contrastRatio(const QColor& one, const QColor& other);

/// How much of `over`, from 0 to 1, has to be mixed into `under` for the mixture to have a contrast
/// of `ratio` with `against`; 1 where even `over` alone has less. The nearer to `over`, the higher
/// the contrast has to be.
double leastShare(const QColor& under, const QColor& over, const QColor& against, double ratio);

} // namespace kestrel::linux_shell
