#include "shells/linux/views/kit/row_geometry.h"

#include <algorithm>

namespace kestrel::linux_shell {

RowGeometry RowGeometry::uniform(int count, int height, Padding padding) {
    RowGeometry geometry;
    geometry.count_ = count;
    geometry.uniformHeight_ = std::max(height, 1);
    geometry.padding_ = padding;
    return geometry;
}

RowGeometry RowGeometry::varying(const std::vector<int>& heights, Padding padding) {
    RowGeometry geometry;
    geometry.count_ = static_cast<int>(heights.size());
    geometry.padding_ = padding;
    geometry.tops_.reserve(heights.size() + 1);
    int y = padding.top;
    for (const int height : heights) {
        geometry.tops_.push_back(y);
        y += std::max(height, 1);
    }
    geometry.tops_.push_back(y);
    return geometry;
}

int RowGeometry::top(int row) const {
    if (tops_.empty())
        return padding_.top + row * uniformHeight_;
    return tops_[static_cast<std::size_t>(row)];
}

// The row that covers y, or the nearest one to it; only for lists that have a row.
int RowGeometry::rowNear(int y) const {
    int row = 0;
    if (tops_.empty())
        row = (y - padding_.top) / uniformHeight_;
    else
        row = static_cast<int>(std::ranges::upper_bound(tops_, y) - tops_.begin()) - 1;
    return std::clamp(row, 0, count_ - 1);
}

int RowGeometry::rowAt(int y) const {
    if (y < top(0) || y >= top(count_))
        return -1;
    return rowNear(y);
}

RowGeometry::Range RowGeometry::visible(int y, int height) const {
    if (count_ == 0 || height <= 0 || y >= top(count_) || y + height <= top(0))
        return {};
    return {rowNear(y), rowNear(y + height - 1)};
}

int RowGeometry::gapAt(int y) const {
    if (count_ == 0)
        return 0;
    const int row = rowNear(y);
    return y < top(row) + height(row) / 2 ? row : row + 1;
}

} // namespace kestrel::linux_shell
