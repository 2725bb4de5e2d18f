#pragma once
// A text that wraps at words, and inside a word that is longer than a line, with as many lines as
// it needs.

#include <QFont>
#include <QRect>
#include <QString>

class QPainter;

namespace kestrel::linux_shell {

/// Pixels that `text` needs in the given width; quick for short texts.
int wrappedHeight(const QString& text, const QFont& font, int width);

/// The least width in which `text` needs no more lines than in `width`: there they are even.
int evenWidth(const QString& text, const QFont& font, int width);

/// Draws in the painter's pen colour. Qt::AlignLeft is the edge at which the painter's own layout
/// direction begins.
void drawWrapped(QPainter& painter, const QRect& rect, const QString& text, const QFont& font,
                 Qt::Alignment alignment);

} // namespace kestrel::linux_shell
