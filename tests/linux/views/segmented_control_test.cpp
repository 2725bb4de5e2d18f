#include "shells/linux/views/kit/segmented_control.h"

#include "shells/linux/views/kit/style_bridge.h"
#include "tests/linux/views/widget_fixture.h"

#include <QAbstractButton>
#include <QFontMetrics>

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>

namespace kestrel::linux_shell {
namespace {

class SegmentedControlTest : public testing::Test {
  protected:
    const QStringList titles{QStringLiteral("App"), QStringLiteral("Command File"),
                             QStringLiteral("Inline Command")};
    SegmentedControl control{titles, QStringLiteral("Type")};

    /// What a title leaves of its segment, in pixels on each side; negative where it is cut.
    int paddingOf(int index) {
        const QFontMetrics metrics(fontFor(style::body.withWeight(FontWeight::medium)));
        return (control.segment(index).width() - metrics.horizontalAdvance(titles[index])) / 2;
    }

    int leastPadding() { return std::min({paddingOf(0), paddingOf(1), paddingOf(2)}); }

    /// The width at which the widest title has just the least padding in a third of the control.
    int widthForEqual() {
        const QFontMetrics metrics(fontFor(style::body.withWeight(FontWeight::medium)));
        return 3 * (metrics.horizontalAdvance(titles[2]) + 16) + 8;
    }

    void resize(int width) {
        control.resize(width, control.height());
        control.show();
        turnEventLoop();
    }
};

TEST_F(SegmentedControlTest, SegmentsAreAsWideAsEachOtherWhileEveryTitleHasRoom) {
    for (const int width : {widthForEqual(), widthForEqual() + 1, 700}) {
        resize(width);
        EXPECT_EQ(control.segment(0).width(), control.segment(1).width()) << width;
        EXPECT_EQ(control.segment(1).width(), control.segment(2).width()) << width;
        EXPECT_GE(leastPadding(), 8) << width;
    }
}

TEST_F(SegmentedControlTest, WhereOneTitleNeedsMoreEachHasTheSamePadding) {
    resize(widthForEqual() - 9);
    EXPECT_GE(leastPadding(), 8);
    EXPECT_LE(std::abs(paddingOf(0) - paddingOf(1)), 1);
    EXPECT_LE(std::abs(paddingOf(1) - paddingOf(2)), 1);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(control.segment(i).toolTip(), QString());
}

TEST_F(SegmentedControlTest, WhereTheTitlesDoNotFitTheLongOnesAreCutAndTold) {
    resize(180);
    EXPECT_GE(paddingOf(0), 8);
    EXPECT_EQ(control.segment(0).toolTip(), QString());
    for (int i = 1; i < 3; ++i) {
        EXPECT_LT(paddingOf(i), 8);
        EXPECT_EQ(control.segment(i).toolTip(), titles[i]);
        EXPECT_TRUE(control.rect().contains(control.segment(i).geometry()));
    }
    resize(700);
    EXPECT_EQ(control.segment(2).toolTip(), QString());
}

TEST_F(SegmentedControlTest, ARightToLeftLanguageHasTheFirstSegmentOnTheRight) {
    resize(700);
    const QRect first = control.segment(0).geometry();
    EXPECT_LT(first.x(), control.segment(1).x());
    control.setLayoutDirection(Qt::RightToLeft);
    turnEventLoop();
    EXPECT_GT(control.segment(0).x(), control.segment(1).x());
    EXPECT_EQ(control.width() - control.segment(0).geometry().right() - 1, first.x());
}

} // namespace
} // namespace kestrel::linux_shell
