#include "shells/linux/views/item_row_metrics.h"

#include "shells/linux/views/kit/badge.h"
#include "shells/linux/views/kit/style_bridge.h"
#include "shells/linux/views/kit/symbol.h"
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

bool hasLineBreak(std::string_view title) {
    const auto contains = [title](std::string_view text) {
        return title.find(text) != std::string_view::npos;
    };
    return contains("\n") || contains("\u2028") || contains("\u2029");
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
    for (unsigned char letter = firstPrintable; letter <= lastPrintable; ++letter) {
        advances_.at(letter) = metrics.horizontalAdvance(QLatin1Char(static_cast<char>(letter)));
    }
    widest_ = 2 * metrics.height();
    lineHeight_ = itemRowLineHeight(row_style::title.font);
    others_ = pixels(row_style::lineSpacing) + itemRowLineHeight(row_style::detail.font);
}

// A byte other than printable ASCII counts as a letter of the greatest width.
bool ItemRowMetrics::surelyFits(std::string_view title, int width) const {
    if (hasLineBreak(title)) {
        return false;
    }
    double sum = 0;
    for (const char byte : title) {
        const auto letter = static_cast<unsigned char>(byte);
        const bool printable = letter >= firstPrintable && letter <= lastPrintable;
        sum += printable ? advances_[letter] : widest_;
    }
    return sum * kerningReserve <= width;
}

int ItemRowMetrics::heightFor(std::string_view title, ItemType type) const {
    const int width = textWidths_.at(static_cast<std::size_t>(type));
    const int titleHeight =
        surelyFits(title, width)
            ? lineHeight_
            : wrappedHeight(toQString(title), fontFor(row_style::title.font), width);
    const int content = std::max(titleHeight + others_, pixels(row_style::iconSize.height));
    return content + pixels(row_style::padding.top) + pixels(row_style::padding.bottom);
}

} // namespace kestrel::linux_shell
