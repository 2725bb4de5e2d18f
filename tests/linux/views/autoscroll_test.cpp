#include "shells/linux/views/kit/autoscroll.h"

#include <gtest/gtest.h>

namespace kestrel::linux_shell {
namespace {

constexpr int viewportHeight = 400;

TEST(AutoscrollTest, AListStandsStillBetweenItsZones) {
    for (const int y : {autoscrollZone, viewportHeight / 2, viewportHeight - 1 - autoscrollZone})
        EXPECT_EQ(autoscrollStep(y, viewportHeight), 0) << y;
}

TEST(AutoscrollTest, ItIsFasterTheNearerToTheEdgeAndFastestThereAndBeyond) {
    int last = 0;
    for (int depth = 1; depth <= autoscrollZone; ++depth) {
        const int step =
            autoscrollStep(viewportHeight - 1 - autoscrollZone + depth, viewportHeight);
        EXPECT_GE(step, last) << depth;
        EXPECT_GE(step, 1) << depth;
        last = step;
    }
    EXPECT_EQ(autoscrollStep(viewportHeight - autoscrollZone, viewportHeight), 1);
    for (const int beyond : {0, 1, 100, 5000})
        EXPECT_EQ(autoscrollStep(viewportHeight - 1 + beyond, viewportHeight), autoscrollFastest)
            << beyond;
}

TEST(AutoscrollTest, UpwardsIsTheMirrorOfDownwards) {
    for (int y = -10; y < viewportHeight / 2; ++y)
        EXPECT_EQ(autoscrollStep(y, viewportHeight),
                  -autoscrollStep(viewportHeight - 1 - y, viewportHeight))
            << y;
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
