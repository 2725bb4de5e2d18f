#include "shells/linux/views/kit/autoscroll.h"

#include <gtest/gtest.h>

namespace kestrel::linux_shell {
namespace {

constexpr int height = 400;

TEST(AutoscrollTest, AListStandsStillBetweenItsZones) {
    for (const int y : {autoscrollZone, height / 2, height - 1 - autoscrollZone})
        EXPECT_EQ(autoscrollStep(y, height), 0) << y;
}

TEST(AutoscrollTest, ItIsFasterTheNearerToTheEdgeAndFastestThereAndBeyond) {
    int last = 0;
    for (int depth = 1; depth <= autoscrollZone; ++depth) {
        const int step = autoscrollStep(height - 1 - autoscrollZone + depth, height);
        EXPECT_GE(step, last) << depth;
        EXPECT_GE(step, 1) << depth;
        last = step;
    }
    EXPECT_EQ(autoscrollStep(height - autoscrollZone, height), 1);
    for (const int beyond : {0, 1, 100, 5000})
        EXPECT_EQ(autoscrollStep(height - 1 + beyond, height), autoscrollFastest) << beyond;
}

TEST(AutoscrollTest, UpwardsIsTheMirrorOfDownwards) {
    for (int y = -10; y < height / 2; ++y)
        EXPECT_EQ(autoscrollStep(y, height), -autoscrollStep(height - 1 - y, height)) << y;
}

TEST(AutoscrollTest, ALowListHasAMiddleToo) {
    for (const int low : {8, 40, 100}) {
        EXPECT_EQ(autoscrollStep(low / 2, low), 0) << low;
        EXPECT_EQ(autoscrollStep(-1, low), -autoscrollFastest) << low;
        EXPECT_EQ(autoscrollStep(low, low), autoscrollFastest) << low;
    }
}

TEST(AutoscrollTest, TwoHundredRowsPassInAboutFourSeconds) {
    const int rowHeight = 36;
    const int pixelsPerSecond = autoscrollFastest * 1000 / autoscrollInterval;
    EXPECT_NEAR(200.0 * rowHeight / pixelsPerSecond, 4, 0.4);
}

} // namespace
} // namespace kestrel::linux_shell
