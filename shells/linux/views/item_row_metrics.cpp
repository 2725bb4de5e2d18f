#include "shells/linux/views/item_row_metrics.h"

#include "shells/linux/desktop/appearance/symbol.h"
#include "shells/linux/views/badge.h"
#include "shells/linux/views/kit/style_bridge.h"
#include "shells/linux/views/kit/wrapped_text.h"
#include "views/settings/item_row_style.h"

#include <QFontMetricsF>

#include <algorithm>

namespace kestrel::linux_shell {

namespace {

namespace row_style = item_row_style;

constexpr double kerningReserve = 1.05; // letters next to each other may stand further apart
constexpr unsigned char firstPrintable = 0x20;
constexpr unsigned char lastPrintable = 0x7E;

/// Whether a line ends at this byte: a line feed, U+2028 or U+2029.
bool isLineBreak(std::string_view title, std::size_t position) {
    constexpr char firstOfSeparator = '\xE2';
    if (title[position] != firstOfSeparator)
        return title[position] == '\n';
    const auto text = title.substr(position);
    return text.starts_with("\u2028") || text.starts_with("\u2029");
}

} // namespace

ItemRowColumns itemRowColumns(const QString& badge, int width) {
    const int spacing = pixels(row_style::spacing);
    ItemRowColumns columns;
    columns.textLeft = itemRowInset + pixels(row_style::iconSize.width) + spacing;
    columns.badgeLeft = width - itemRowInset - badgeSize(badge).width();
    columns.actionsLeft = columns.badgeLeft - spacing - symbolExtent(row_style::actions.font.size);
    // The flexible space before the actions button may shrink to nothing but has two neighbours.
    columns.textWidth = std::max(columns.actionsLeft - 2 * spacing - columns.textLeft, 1);
    return columns;
}

int itemRowLineHeight(const style::Font& font) { return QFontMetrics(fontFor(font)).height(); }

ItemRowMetrics::ItemRowMetrics(int width) {
    for (std::size_t type = 0; type < allItemTypes.size(); ++type) {
        textWidths_.at(type) =
            itemRowColumns(toQString(rawValue(allItemTypes.at(type))), width).textWidth;
    }
    const QFontMetricsF metrics(fontFor(row_style::title.font));
    advances_.fill(2 * metrics.height()); // more than any letter takes
    for (unsigned char letter = firstPrintable; letter <= lastPrintable; ++letter)
        advances_.at(letter) = metrics.horizontalAdvance(QLatin1Char(static_cast<char>(letter)));
    others_ = pixels(row_style::lineSpacing) + itemRowLineHeight(row_style::detail.font);
    lowest_ = rowHeight(itemRowLineHeight(row_style::title.font));
}

// A byte other than printable ASCII counts as a letter of the greatest width.
bool ItemRowMetrics::surelyFits(std::string_view title, int width) const {
    double sum = 0;
    for (std::size_t i = 0; i < title.size(); ++i) {
        if (isLineBreak(title, i))
            return false;
        sum += advances_[static_cast<unsigned char>(title[i])];
    }
    return sum * kerningReserve <= width;
}

int ItemRowMetrics::rowHeight(int titleHeight) const {
    const int content = std::max(titleHeight + others_, pixels(row_style::iconSize.height));
    return content + pixels(row_style::padding.top) + pixels(row_style::padding.bottom);
}

int ItemRowMetrics::heightFor(std::string_view title, ItemType type) const {
    const int width = textWidths_.at(static_cast<std::size_t>(type));
    if (surelyFits(title, width))
        return lowest_;
    return rowHeight(wrappedHeight(toQString(title), fontFor(row_style::title.font), width));
}

} // namespace kestrel::linux_shell
