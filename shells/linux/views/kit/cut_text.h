#pragma once
// The tooltip with the whole of a text that a row shows cut.

#include <QString>
#include <Qt>

class QEvent;
class QWidget;

namespace kestrel::linux_shell {

/// `text` as a tooltip shows it: nothing in it is taken for markup, it wraps, a word without end
/// too, and of a text of many lines' length its beginning and its end are shown.
QString tooltipOf(const QString& text, Qt::LayoutDirection direction);

/// Answers a QEvent::ToolTip of `row` with `tooltip`; an empty one shows none.
void showCutText(QEvent& event, QWidget& row, const QString& tooltip);

} // namespace kestrel::linux_shell
