#include "shells/linux/views/kit/row_geometry.h"

#include <gtest/gtest.h>

#include <vector>

namespace kestrel::linux_shell {
namespace {

TEST(RowGeometryTest, EqualRowsAreCountedFromThePadding) {
    const RowGeometry rows = RowGeometry::uniform(3, 34, {.top = 6, .bottom = 8});
    EXPECT_EQ(rows.contentHeight(), 6 + 3 * 34 + 8);
    EXPECT_EQ(rows.top(2), 74);
    EXPECT_EQ(rows.height(2), 34);
}

TEST(RowGeometryTest, BothKindsAgreeOnEveryPixelWhenTheHeightsAreEqual) {
    const RowGeometry uniform = RowGeometry::uniform(7, 11, {.top = 4, .bottom = 5});
    const RowGeometry varying =
        RowGeometry::varying(std::vector<int>(7, 11), {.top = 4, .bottom = 5});
    for (int y = -3; y < uniform.contentHeight() + 3; ++y) {
        EXPECT_EQ(uniform.rowAt(y), varying.rowAt(y)) << y;
        EXPECT_EQ(uniform.gapAt(y), varying.gapAt(y)) << y;
        EXPECT_EQ(uniform.visible(y, 20).first, varying.visible(y, 20).first) << y;
        EXPECT_EQ(uniform.visible(y, 20).last, varying.visible(y, 20).last) << y;
    }
}

TEST(RowGeometryTest, ThePaddingBelongsToNoRow) {
    const RowGeometry rows = RowGeometry::varying({10, 20, 30}, {.top = 6, .bottom = 6});
    EXPECT_EQ(rows.rowAt(5), -1);
    EXPECT_EQ(rows.rowAt(6), 0);
    EXPECT_EQ(rows.rowAt(15), 0);
    EXPECT_EQ(rows.rowAt(16), 1);
    EXPECT_EQ(rows.rowAt(65), 2);
    EXPECT_EQ(rows.rowAt(66), -1);
}

TEST(RowGeometryTest, RowsThatShowByOnePixelAreVisible) {
    const RowGeometry rows = RowGeometry::uniform(100, 10, {});
    EXPECT_EQ(rows.visible(0, 10).last, 0);
    EXPECT_EQ(rows.visible(0, 11).last, 1);
    EXPECT_EQ(rows.visible(9, 2).first, 0);
    EXPECT_EQ(rows.visible(9, 2).last, 1);
}

TEST(RowGeometryTest, AListWithoutRowsShowsNoneAndHasOneGap) {
    const RowGeometry rows = RowGeometry::uniform(0, 34, {.top = 6, .bottom = 6});
    EXPECT_EQ(rows.contentHeight(), 12);
    EXPECT_GT(rows.visible(0, 300).first, rows.visible(0, 300).last);
    EXPECT_EQ(rows.rowAt(6), -1);
    EXPECT_EQ(rows.gapAt(100), 0);
}

TEST(RowGeometryTest, TheGapIsTheNearestOne) {
    const RowGeometry rows = RowGeometry::varying({10, 20}, {});
    EXPECT_EQ(rows.gapAt(-5), 0);
    EXPECT_EQ(rows.gapAt(4), 0);
    EXPECT_EQ(rows.gapAt(5), 1);
    EXPECT_EQ(rows.gapAt(19), 1);
    EXPECT_EQ(rows.gapAt(20), 2);
    EXPECT_EQ(rows.gapAt(500), 2);
}

} // namespace
} // namespace kestrel::linux_shell
