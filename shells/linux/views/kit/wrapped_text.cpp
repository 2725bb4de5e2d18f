#include "shells/linux/views/kit/wrapped_text.h"

#include "shells/linux/views/kit/text_line.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyle>
#include <QTextLayout>

#include <cmath>

namespace kestrel::linux_shell {

namespace {

/// Lays the lines out below each other; the height of all of them.
double layOut(QTextLayout& layout, int width, Qt::Alignment alignment = Qt::AlignLeft) {
    QTextOption option(alignment);
    option.setTextDirection(directionOf(layout.text()));
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    double y = 0;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        line.setPosition(QPointF(0, y));
        y += line.height();
    }
    layout.endLayout();
    return y;
}

/// The layout breaks lines at one character only.
QString withLineSeparators(QString text) {
    text.replace(QLatin1Char('\n'), QChar(QChar::LineSeparator));
    return text.replace(QChar(QChar::ParagraphSeparator), QChar(QChar::LineSeparator));
}

} // namespace

int wrappedHeight(const QString& text, const QFont& font, int width) {
    const QString lines = withLineSeparators(text);
    // In parts of a pixel, as the layout measures: a line that is wider by one breaks.
    const bool oneLine = !lines.contains(QChar(QChar::LineSeparator)) &&
                         QFontMetricsF(font).horizontalAdvance(lines) <= width;
    if (oneLine)
        return QFontMetrics(font).height();
    QTextLayout layout(lines, font);
    return static_cast<int>(std::ceil(layOut(layout, width)));
}

int evenWidth(const QString& text, const QFont& font, int width) {
    const int height = wrappedHeight(text, font, width);
    int tooNarrow = 0;
    int enough = width;
    while (enough - tooNarrow > 1) {
        const int between = (tooNarrow + enough) / 2;
        (wrappedHeight(text, font, between) > height ? tooNarrow : enough) = between;
    }
    return enough;
}

void drawWrapped(QPainter& painter, const QRect& rect, const QString& text, const QFont& font,
                 Qt::Alignment alignment) {
    QTextLayout layout(withLineSeparators(text), font);
    layOut(layout, rect.width(), QStyle::visualAlignment(painter.layoutDirection(), alignment));
    layout.draw(&painter, rect.topLeft());
}

} // namespace kestrel::linux_shell
