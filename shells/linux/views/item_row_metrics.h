#pragma once
// The columns of a row of the settings list and the heights of many rows at once.

#include "model/item_type.h"
#include "views/style.h"

#include <QString>

#include <array>
#include <string_view>

namespace kestrel::linux_shell {

/// What the list adds to the left and right of a row's content, inside the selection's highlight.
inline constexpr int itemRowInset = 8; // pixels

/// Where the columns begin, in pixels of the row.
struct ItemRowColumns {
    int textLeft = 0;
    int textWidth = 0;
    int actionsLeft = 0;
    int badgeLeft = 0;
};

ItemRowColumns itemRowColumns(const QString& badge, int width);
int itemRowLineHeight(const style::Font& font);

/// Heights for one width and the fonts of the moment. A title that surely fits its line costs one
/// addition a letter; only the others are laid out.
class ItemRowMetrics {
  public:
    explicit ItemRowMetrics(int width);

    int heightFor(std::string_view title, ItemType type) const;

  private:
    bool surelyFits(std::string_view title, int width) const;
    int rowHeight(int titleHeight) const;

    std::array<int, allItemTypes.size()> textWidths_{};
    std::array<double, 256> advances_{}; ///< pixels, by the byte: at least what it takes
    int others_ = 0;                     ///< what stands above and below the title, pixels
    int lowest_ = 0;                     ///< the height of a row whose title has one line
};

} // namespace kestrel::linux_shell
