#include "shells/linux/views/kit/cut_text.h"

#include <QHelpEvent>
#include <QStringList>
#include <QTextLayout>
#include <QToolTip>
#include <QWidget>

namespace kestrel::linux_shell {
namespace {

constexpr qsizetype longestText = 1000; // characters, about twelve lines
constexpr int lineWidth = 420;          // pixels

QString shortened(const QString& text) {
    if (text.size() <= longestText)
        return text;
    constexpr qsizetype half = longestText / 2;
    const qsizetype front = text[half - 1].isHighSurrogate() ? half - 1 : half;
    const qsizetype back = text[text.size() - half].isLowSurrogate() ? half - 1 : half;
    return text.left(front) + QStringLiteral(" … ") + text.right(back);
}

/// As it breaks into lines; a word that is longer than one breaks inside. The toolkit would make
/// the tooltip of a long text a narrow column.
QStringList linesOf(QString text) {
    for (const QChar lineBreak : {QChar(u'\n'), QChar(QChar::ParagraphSeparator)})
        text.replace(lineBreak, QChar(QChar::LineSeparator));
    QTextLayout layout(text, QToolTip::font());
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    QStringList lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(lineWidth);
        QString shown = text.mid(line.textStart(), line.textLength());
        // The white space at which a line ends would widen it.
        while (!shown.isEmpty() && shown.back().isSpace())
            shown.chop(1);
        lines << shown;
    }
    layout.endLayout();
    return lines;
}

} // namespace

QString tooltipOf(const QString& text, Qt::LayoutDirection direction) {
    QStringList lines = linesOf(shortened(text));
    for (QString& line : lines)
        line = line.toHtmlEscaped();
    return QStringLiteral("<p dir='%1' style='white-space: pre'>%2</p>")
        .arg(direction == Qt::RightToLeft ? QStringLiteral("rtl") : QStringLiteral("ltr"),
             lines.join(QStringLiteral("<br>")));
}

void showCutText(QEvent& event, QWidget& row, const QString& tooltip) {
    if (tooltip.isEmpty())
        event.ignore();
    else
        QToolTip::showText(static_cast<QHelpEvent&>(event).globalPos(), tooltip, &row, row.rect());
}

} // namespace kestrel::linux_shell
