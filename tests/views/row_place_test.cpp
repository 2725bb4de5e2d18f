#include "views/row_place.h"

#include <gtest/gtest.h>

namespace kestrel {
namespace {

struct StepCase {
    RowPlace place;
    RowStep step = RowStep::next;
    std::size_t expected = 0;
};

constexpr std::size_t rowCount = 30;
constexpr std::size_t rowsOfAPage = 9;

void expectStep(const StepCase& row) {
    EXPECT_EQ(rowAfter(row.step, row.place, rowCount, rowsOfAPage), row.expected)
        << "row " << row.place.row.value_or(99) << ", gap " << row.place.gap.value_or(99)
        << ", step " << static_cast<int>(row.step);
}

TEST(RowPlaceTest, StepsLeadFromARowAndStopAtTheEnds) {
    for (const StepCase& row : {
             StepCase{{.row = 3}, RowStep::next, 4},
             StepCase{{.row = 3}, RowStep::previous, 2},
             StepCase{{.row = 3}, RowStep::pageDown, 12},
             StepCase{{.row = 12}, RowStep::pageUp, 3},
             StepCase{{.row = 0}, RowStep::previous, 0},
             StepCase{{.row = 3}, RowStep::pageUp, 0},
             StepCase{{.row = 29}, RowStep::next, 29},
             StepCase{{.row = 25}, RowStep::pageDown, 29},
             StepCase{{.row = 3}, RowStep::first, 0},
             StepCase{{.row = 3}, RowStep::last, 29},
         })
        expectStep(row);
}

TEST(RowPlaceTest, WithoutARowStepsForwardStartAtTheFirstAndBackwardAtTheLast) {
    for (const StepCase& row : {
             StepCase{{}, RowStep::next, 0},
             StepCase{{}, RowStep::pageDown, 0},
             StepCase{{}, RowStep::previous, 29},
             StepCase{{}, RowStep::pageUp, 29},
             StepCase{{}, RowStep::first, 0},
             StepCase{{}, RowStep::last, 29},
         })
        expectStep(row);
}

TEST(RowPlaceTest, StepsLeadFromAGapToTheRowsOnItsTwoSides) {
    for (const StepCase& row : {
             StepCase{{.gap = 3}, RowStep::next, 3},
             StepCase{{.gap = 3}, RowStep::previous, 2},
             StepCase{{.gap = 3}, RowStep::pageDown, 11},
             StepCase{{.gap = 12}, RowStep::pageUp, 3},
             StepCase{{.gap = 0}, RowStep::previous, 0},
             StepCase{{.gap = 0}, RowStep::next, 0},
             StepCase{{.gap = 30}, RowStep::next, 29},
             StepCase{{.gap = 30}, RowStep::previous, 29},
             StepCase{{.gap = 3}, RowStep::first, 0},
             StepCase{{.gap = 3}, RowStep::last, 29},
         })
        expectStep(row);
}

} // namespace
} // namespace kestrel
