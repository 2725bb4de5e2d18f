#include "views/row_place.h"

#include <gtest/gtest.h>

namespace kestrel {
namespace {

struct Case {
    RowPlace place;
    RowStep step;
    std::size_t expected;
};

constexpr std::size_t count = 30;
constexpr std::size_t page = 9;

void expect(const Case& row) {
    EXPECT_EQ(rowAfter(row.step, row.place, count, page), row.expected)
        << "row " << row.place.row.value_or(99) << ", gap " << row.place.gap.value_or(99)
        << ", step " << static_cast<int>(row.step);
}

TEST(RowPlaceTest, StepsLeadFromARowAndStopAtTheEnds) {
    for (const Case& row : {
             Case{{.row = 3}, RowStep::next, 4},
             Case{{.row = 3}, RowStep::previous, 2},
             Case{{.row = 3}, RowStep::pageDown, 12},
             Case{{.row = 12}, RowStep::pageUp, 3},
             Case{{.row = 0}, RowStep::previous, 0},
             Case{{.row = 3}, RowStep::pageUp, 0},
             Case{{.row = 29}, RowStep::next, 29},
             Case{{.row = 25}, RowStep::pageDown, 29},
             Case{{.row = 3}, RowStep::first, 0},
             Case{{.row = 3}, RowStep::last, 29},
         })
        expect(row);
}

TEST(RowPlaceTest, WithoutARowStepsForwardStartAtTheFirstAndBackwardAtTheLast) {
    for (const Case& row : {
             Case{{}, RowStep::next, 0},
             Case{{}, RowStep::pageDown, 0},
             Case{{}, RowStep::previous, 29},
             Case{{}, RowStep::pageUp, 29},
             Case{{}, RowStep::first, 0},
             Case{{}, RowStep::last, 29},
         })
        expect(row);
}

TEST(RowPlaceTest, StepsLeadFromAGapToTheRowsOnItsTwoSides) {
    for (const Case& row : {
             Case{{.gap = 3}, RowStep::next, 3},
             Case{{.gap = 3}, RowStep::previous, 2},
             Case{{.gap = 3}, RowStep::pageDown, 11},
             Case{{.gap = 12}, RowStep::pageUp, 3},
             Case{{.gap = 0}, RowStep::previous, 0},
             Case{{.gap = 0}, RowStep::next, 0},
             Case{{.gap = 30}, RowStep::next, 29},
             Case{{.gap = 30}, RowStep::previous, 29},
             Case{{.gap = 3}, RowStep::first, 0},
             Case{{.gap = 3}, RowStep::last, 29},
         })
        expect(row);
}

} // namespace
} // namespace kestrel
