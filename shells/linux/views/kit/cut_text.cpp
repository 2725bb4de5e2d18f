#include "shells/linux/views/kit/cut_text.h"

#include <QHelpEvent>
#include <QToolTip>
#include <QWidget>

namespace kestrel::linux_shell {
namespace {

constexpr qsizetype longestText = 1000; // characters, about twelve lines
constexpr qsizetype longestWord = 60;   // characters, less than a line
constexpr char16_t zeroWidthSpace = 0x200B;

QString shortened(const QString& text) {
    if (text.size() <= longestText)
        return text;
    constexpr qsizetype half = longestText / 2;
    const qsizetype front = text[half - 1].isHighSurrogate() ? half - 1 : half;
    const qsizetype back = text[text.size() - half].isLowSurrogate() ? half - 1 : half;
    return text.left(front) + QStringLiteral(" … ") + text.right(back);
}

/// With places to break inside long words, first of all behind the slashes of a path.
QString breakable(const QString& text) {
    QString result;
    qsizetype word = 0;
    for (const QChar c : text) {
        const bool full = word >= longestWord && !c.isLowSurrogate() && !c.isMark();
        if (full)
            result += QChar(zeroWidthSpace);
        result += c;
        if (c == u'/')
            result += QChar(zeroWidthSpace);
        word = full || c.isSpace() || c == u'/' ? 0 : word + 1;
    }
    return result;
}

} // namespace

QString tooltipOf(const QString& text, Qt::LayoutDirection direction) {
    QString html = breakable(shortened(text)).toHtmlEscaped();
    for (const QChar lineBreak :
         {QChar(u'\n'), QChar(QChar::LineSeparator), QChar(QChar::ParagraphSeparator)})
        html.replace(lineBreak, QStringLiteral("<br>"));
    return QStringLiteral("<p dir='%1' style='white-space: pre-wrap'>%2</p>")
        .arg(direction == Qt::RightToLeft ? QStringLiteral("rtl") : QStringLiteral("ltr"), html);
}

void showCutText(QEvent& event, QWidget& row, const QString& tooltip) {
    if (tooltip.isEmpty())
        event.ignore();
    else
        QToolTip::showText(static_cast<QHelpEvent&>(event).globalPos(), tooltip, &row, row.rect());
}

} // namespace kestrel::linux_shell
