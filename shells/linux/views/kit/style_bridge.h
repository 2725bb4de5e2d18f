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

/// The hairlines that divide what is told apart without them; fainter than any text.
QColor separatorColor(const QPalette& palette);

/// The primary colour, `opacity` from 0 to 1: hover and press washes.
QColor washColor(const QPalette& palette, double opacity);

/// The same for the outlines of controls, which high contrast makes plain to see.
QColor outlineColor(const QPalette& palette, double opacity);

enum class Pointer { elsewhere, over };

/// The outline that a text field is known by.
QColor fieldOutlineColor(const QPalette& palette, Pointer pointer = Pointer::elsewhere);

/// The mark of the keyboard focus: the accent colour, or what comes near it and is seen.
QColor focusColor(const QPalette& palette);

/// The fill of a prominent button, under a title in the highlighted text's colour.
QColor prominentColor(const QPalette& palette);

/// The background of what hangs over a window.
QColor panelColor(const QPalette& palette);

/// A selected row while its list has the keys, and while it has not: what the second one gives is
/// to be drawn over the list's background. Under high contrast both are the full highlight colour.
QColor selectionColor(const QPalette& palette);
QColor inactiveSelectionColor(const QPalette& palette);

/// The colours of what stands on a selection; others than the palette's only under high contrast.
QPalette paletteOnSelection(const QPalette& palette);

/// A text that stands in a field until there is one, on the colour of fields.
QColor placeholderColor(const QPalette& palette);

bool isDark(const QPalette& palette);

QMargins marginsFor(const style::Insets& insets);
QSize sizeFor(const Size& size);
int pixels(double points);

} // namespace kestrel::linux_shell
