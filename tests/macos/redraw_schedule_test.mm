#include "shells/macos/views/kit/redraw_schedule.h"
#include "tests/macos/views_support.h"

#include <optional>

namespace kestrel::tests {
namespace {

class RedrawScheduleTest : public testing::Test {
  protected:
    WillChangeSignal signal;
    int redraws = 0;
    std::optional<macos_shell::RedrawSchedule> schedule;

    void SetUp() override {
        schedule.emplace(signal, [this] { ++redraws; });
    }
};

TEST_F(RedrawScheduleTest, AnyNumberOfChangesMakeOneRedrawInTheNextTurn) {
    signal.fire();
    signal.fire();
    EXPECT_EQ(redraws, 0);
    redraw();
    EXPECT_EQ(redraws, 1);
    signal.fire();
    redraw();
    EXPECT_EQ(redraws, 2);
}

TEST_F(RedrawScheduleTest, AChangeDuringARedrawMakesAnother) {
    schedule.emplace(signal, [this] {
        if (++redraws == 1)
            signal.fire();
    });
    signal.fire();
    redraw();
    redraw();
    EXPECT_EQ(redraws, 2);
}

TEST_F(RedrawScheduleTest, NothingIsRedrawnOnceItIsGone) {
    signal.fire();
    schedule.reset();
    signal.fire();
    redraw();
    EXPECT_EQ(redraws, 0);
}

TEST_F(RedrawScheduleTest, ARedrawMayEndIt) {
    schedule.emplace(signal, [this] {
        schedule.reset();
        ++redraws;
    });
    signal.fire();
    redraw();
    EXPECT_EQ(redraws, 1);
}

} // namespace
} // namespace kestrel::tests
