#pragma once
// One line of text in the order in which it is read: whatever the direction of the window, a text
// runs in the direction of its own first letter. It stands where the window's direction puts it,
// as the rows of a list do.

#include <QRect>
#include <QString>
#include <Qt>

class QFontMetrics;
class QPainter;

namespace kestrel::linux_shell {

/// That of the first letter that has one; from left to right without any.
Qt::LayoutDirection directionOf(const QString& text);

/// The flags of QPainter::drawText for a line in the middle of the height. Qt::AlignLeft is the
/// edge at which the window's direction begins.
int lineFlags(Qt::LayoutDirection window, Qt::Alignment alignment, Qt::LayoutDirection direction);

/// What of `text` fits into `width` pixels and into its first line, with an ellipsis where it is
/// cut.
QString cutAtEnd(const QString& text, const QFontMetrics& metrics, int width);

/// In the painter's font and pen colour, in the middle of the height. Qt::AlignLeft is the edge at
/// which the painter's own layout direction begins.
void drawLine(QPainter& painter, const QRect& rect, const QString& text, Qt::Alignment alignment,
              Qt::LayoutDirection direction);

} // namespace kestrel::linux_shell
