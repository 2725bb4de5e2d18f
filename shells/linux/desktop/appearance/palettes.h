#pragma once
// The colours that widgets are drawn in: this program's own light and dark ones, those of high
// contrast, and whatever a desktop's colour scheme says.

#include "shells/linux/desktop/appearance/appearance_settings.h"

#include <QColor>
#include <QPalette>

namespace kestrel::linux_shell {

/// What a palette is made from; edges, disabled texts and the like follow from these.
struct PaletteColors {
    QColor window;
    QColor windowText;
    QColor base; ///< the background of fields and lists
    QColor alternateBase;
    QColor text; ///< on `base`
    QColor button;
    QColor buttonText;
    QColor highlight;
    QColor highlightedText;
    QColor toolTip;
    QColor toolTipText;
    QColor link;
    QColor visitedLink;
    QColor placeholder; ///< taken where it can be read on `base`; may be invalid
};

/// Every colour set, so that nothing of the toolkit's own palette shows through.
QPalette paletteOf(const PaletteColors& colors);

QPalette paletteFor(ColorScheme scheme, Contrast contrast);

/// The palette itself where its placeholders can be read in fields; else with some made of the
/// text's colour, and nothing else of it set anew.
QPalette withReadablePlaceholder(const QPalette& palette);

/// True of plain black and white, be it of this program's or of a desktop's making: the user wants
/// nothing faint.
bool isHighContrast(const QPalette& palette);

} // namespace kestrel::linux_shell
