#include "shells/linux/views/kit/fallback_file_dialog.h"

#include <QDateTime>
#include <QFileDialog>
#include <QFontMetrics>
#include <QHeaderView>
#include <QLocale>
#include <QScreen>
#include <QTreeView>

#include <algorithm>

namespace kestrel::linux_shell {
namespace {

// The columns of the toolkit's model of files.
constexpr int sizeColumn = 1;
constexpr int dateColumn = 3;

constexpr int cellPadding = 16;  // pixels on both sides together
constexpr int screenMargin = 64; // the same, around the dialog
constexpr qint64 smallFile = 1'000;
constexpr qint64 largeFile = 1'023'900;

/// The width of the longest sizes.
int sizeWidth(const QFontMetrics& metrics) {
    const QLocale locale = QLocale::system();
    int width = 0;
    for (const qint64 bytes : {smallFile, largeFile})
        width = std::max(width, metrics.horizontalAdvance(locale.formattedDataSize(bytes)));
    return width;
}

int dateWidth(const QFontMetrics& metrics) {
    const QDateTime date(QDate(2022, 12, 28), QTime(22, 58, 58));
    return metrics.horizontalAdvance(QLocale::system().toString(date, QLocale::ShortFormat));
}

/// By how much the column grows.
int widen(QHeaderView& header, int column, int contents) {
    const int before = header.sectionSize(column);
    header.resizeSection(column, std::max(before, contents + cellPadding));
    return header.sectionSize(column) - before;
}

} // namespace

void fitFileList(QFileDialog& dialog) {
    auto* const list = dialog.findChild<QTreeView*>(QStringLiteral("treeView"));
    if (list == nullptr)
        return;
    const QFontMetrics metrics(list->font());
    const int growth = widen(*list->header(), sizeColumn, sizeWidth(metrics)) +
                       widen(*list->header(), dateColumn, dateWidth(metrics));
    // A size would not outlive the dialog's first showing.
    const int available = dialog.screen()->availableSize().width() - screenMargin;
    dialog.setMinimumWidth(std::min(dialog.sizeHint().width() + growth, available));
}

} // namespace kestrel::linux_shell
