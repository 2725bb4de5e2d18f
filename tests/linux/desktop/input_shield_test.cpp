#include "shells/linux/desktop/input_shield.h"

#include <QApplication>
#include <QMouseEvent>

#include <gmock/gmock.h>

namespace kestrel::linux_shell {
namespace {

class InputShieldTest : public testing::Test {
  protected:
    void release(QPoint place, Qt::MouseButtons stillDown = Qt::NoButton) {
        QMouseEvent event(QEvent::MouseButtonRelease, place, place, Qt::LeftButton, stillDown,
                          Qt::NoModifier);
        QApplication::sendEvent(&shield, &event);
    }

    int clicks = 0;
    InputShield shield{[this] { ++clicks; }};
};

TEST_F(InputShieldTest, TellsOfAClickOnceAllButtonsAreUp) {
    shield.cover(QRect());
    release(QPoint(10, 10), Qt::RightButton);
    EXPECT_EQ(clicks, 0);
    release(QPoint(10, 10));
    EXPECT_EQ(clicks, 1);
}

TEST_F(InputShieldTest, ClickInTheHoleIsNotElsewhere) {
    shield.cover(QRect(100, 100, 50, 50));
    release(QPoint(120, 120));
    EXPECT_EQ(clicks, 0) << "though a compositor that does not know of the hole yet sends it here";
    release(QPoint(99, 120));
    EXPECT_EQ(clicks, 1);
}

TEST_F(InputShieldTest, HoleIsThatOfTheLastTime) {
    shield.cover(QRect(100, 100, 50, 50));
    shield.hide();
    shield.cover(QRect());
    release(QPoint(120, 120));
    EXPECT_EQ(clicks, 1);
    EXPECT_TRUE(shield.mask().isEmpty());
}

} // namespace
} // namespace kestrel::linux_shell
