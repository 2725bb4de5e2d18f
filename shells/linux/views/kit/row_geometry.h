#pragma once
// Where the rows of a list lie, in pixels of the scrolled content. Equal heights cost nothing per
// row; different ones take one number each.

#include <vector>

namespace kestrel::linux_shell {

class RowGeometry {
  public:
    /// Pixels of empty space above the first and below the last row.
    struct Padding {
        int top = 0;
        int bottom = 0;
    };

    /// Rows from `first` to `last`, both included; none when `last < first`.
    struct Range {
        int first = 0;
        int last = -1;
    };

    RowGeometry() = default;
    static RowGeometry uniform(int count, int height, Padding padding);
    static RowGeometry varying(const std::vector<int>& heights, Padding padding);

    int count() const { return count_; }
    int contentHeight() const { return top(count_) + padding_.bottom; }

    /// For `row == count()`: where the next row would start.
    int top(int row) const;
    int height(int row) const { return top(row + 1) - top(row); }

    /// The row that covers `y`; -1 in the padding and outside the content.
    int rowAt(int y) const;

    /// The rows that show in the `height` pixels from `y` on.
    Range visible(int y, int height) const;

    /// The gap between rows that is nearest to `y`: 0 before the first row, `count()` after the
    /// last.
    int gapAt(int y) const;

  private:
    int rowNear(int y) const;

    int count_ = 0;
    int uniformHeight_ = 0;
    std::vector<int> tops_; ///< count + 1 values; empty when the heights are equal
    Padding padding_;
};

} // namespace kestrel::linux_shell
