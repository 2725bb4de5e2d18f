#pragma once
// The core's fonts, colour levels, sizes and texts as the toolkit's, in the desktop's own font and
// palette. One point is one device-independent pixel.

#include "platform/geometry.h"
#include "shells/linux/desktop/appearance/texts.h"
#include "views/style.h"

#include <QColor>
#include <QFont>
#include <QMargins>
#include <QPalette>
#include <QSize>

namespace kestrel::linux_shell {

/// The system font leaves its family open: a widget with this font follows the desktop's.
QFont fontFor(const style::Font& font);

/// Always the colours of an active window, so that text does not fade when the window loses the
/// focus.
QColor colorFor(style::ColorLevel level, const QPalette& palette);

/// The hairlines that divide and frame; fainter than any text.
QColor separatorColor(const QPalette& palette);

/// The primary colour, `opacity` from 0 to 1: hover and press washes.
QColor washColor(const QPalette& palette, double opacity);

/// The same for the outlines of controls, which high contrast makes plain to see.
QColor outlineColor(const QPalette& palette, double opacity);

/// A text that stands in a field until there is one, on the colour of fields.
QColor placeholderColor(const QPalette& palette);

bool isDark(const QPalette& palette);

QMargins marginsFor(const style::Insets& insets);
QSize sizeFor(const Size& size);
int pixels(double points);

} // namespace kestrel::linux_shell
