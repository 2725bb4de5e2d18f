#pragma once
// How strong the faded colours of a palette have to be for everyone to see them, wherever this
// program draws them.

#include <QColor>
#include <QPalette>

namespace kestrel::linux_shell {

/// Opacities of the palette's text colour, from 0 to 1, and the colours that stand out.
struct ContrastLevels {
    float secondary = 1;   ///< text, also on a badge in a selected row
    float tertiary = 1;    ///< text on the plain backgrounds of windows and lists
    float outline = 1;     ///< shapes that a control is known by
    float placeholder = 1; ///< of the text in fields
    QColor mark;           ///< of the keyboard focus
    QColor prominent;      ///< under the title of a prominent button
    QColor destructive;    ///< text in menus
};

/// Those of this palette, computed once for many questions. Main thread only; valid until the next
/// call.
const ContrastLevels& contrastLevelsOf(const QPalette& palette);

} // namespace kestrel::linux_shell
