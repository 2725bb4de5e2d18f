#include "shells/linux/views/kit/text_line.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace kestrel::linux_shell {
namespace {

constexpr char16_t ellipsis = 0x2026;
constexpr char16_t leftToRightMark = 0x200E;
constexpr char16_t rightToLeftMark = 0x200F;

bool isLineBreak(QChar c) {
    return c == u'\n' || c == u'\r' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
}

/// The direction of the last letter that has one; that of the whole text without any.
Qt::LayoutDirection directionAtEnd(QStringView text, Qt::LayoutDirection whole) {
    for (qsizetype end = text.size(); end > 0; --end) {
        const QChar last = text[end - 1];
        const char32_t letter = last.isLowSurrogate() && end > 1
                                    ? QChar::surrogateToUcs4(text[end - 2], last)
                                    : static_cast<char32_t>(last.unicode());
        switch (QChar::direction(letter)) {
        case QChar::DirL:
            return Qt::LeftToRight;
        case QChar::DirR:
        case QChar::DirAL:
            return Qt::RightToLeft;
        default:
            break;
        }
    }
    return whole;
}

/// An ellipsis at the end of a text stands at the end of the line, which is not where the letters
/// were cut when these run against the line; a mark after it lets it run with them.
QString withEllipsisAtTheCut(QString cut, Qt::LayoutDirection whole) {
    const qsizetype at = cut.lastIndexOf(QChar(ellipsis));
    const Qt::LayoutDirection letters = directionAtEnd(QStringView(cut).left(at), whole);
    if (letters != whole)
        cut.insert(at + 1, QChar(letters == Qt::RightToLeft ? rightToLeftMark : leftToRightMark));
    return cut;
}

} // namespace

Qt::LayoutDirection directionOf(const QString& text) {
    return text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight;
}

int lineFlags(Qt::LayoutDirection window, Qt::Alignment alignment, Qt::LayoutDirection direction) {
    const Qt::Alignment visual = QStyle::visualAlignment(window, alignment);
    const int force =
        direction == Qt::RightToLeft ? Qt::TextForceRightToLeft : Qt::TextForceLeftToRight;
    // Some fonts draw an underscore below their own height.
    return static_cast<int>(visual | Qt::AlignAbsolute | Qt::AlignVCenter) | Qt::TextSingleLine |
           Qt::TextDontClip | force;
}

QString cutAtEnd(const QString& text, const QFontMetrics& metrics, int width) {
    const auto end = std::ranges::find_if(text, isLineBreak);
    QString line(text.constData(), end - text.begin());
    if (end != text.end())
        line += QChar(ellipsis);
    const QString cut = metrics.elidedText(line, Qt::ElideRight, width);
    return cut == text ? text : withEllipsisAtTheCut(cut, directionOf(text));
}

void drawLine(QPainter& painter, const QRect& rect, const QString& text, Qt::Alignment alignment,
              Qt::LayoutDirection direction) {
    painter.drawText(rect, lineFlags(painter.layoutDirection(), alignment, direction), text);
}

} // namespace kestrel::linux_shell
