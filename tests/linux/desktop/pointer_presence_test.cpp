#include "shells/linux/desktop/pointer_presence.h"

#include "tests/linux/desktop/waiting.h"

#include <QApplication>
#include <QEnterEvent>

#include <gmock/gmock.h>

namespace kestrel::linux_shell {
namespace {

class PointerPresenceTest : public testing::Test {
  protected:
    PointerPresenceTest() {
        for (auto* window : {&one, &other}) {
            presence.watch(*window);
            window->show();
            settle(); // its own pointer events
        }
    }

    static void enter(QWidget& window) {
        QEnterEvent event(QPointF{}, QPointF{}, QPointF{});
        QApplication::sendEvent(&window, &event);
    }
    static void leave(QWidget& window) {
        QEvent event(QEvent::Leave);
        QApplication::sendEvent(&window, &event);
    }

    /// A timer of the same length that is started later fires later.
    bool isLeftSoon() {
        bool isOver = false;
        QTimer::singleShot(200, &one, [&] { isOver = true; });
        waitUntil([&] { return isOver || departures > 0; });
        return departures > 0;
    }

    int departures = 0;
    QWidget one;
    QWidget other;
    PointerPresence presence{[this] { ++departures; }};
};

TEST_F(PointerPresenceTest, TellsThatThePointerIsOnNoneOfTheWindows) {
    enter(one);
    leave(one);
    EXPECT_TRUE(isLeftSoon());
}

TEST_F(PointerPresenceTest, GoingFromOneToTheOtherIsNotLeaving) {
    enter(one);
    leave(one);
    enter(other);
    EXPECT_FALSE(isLeftSoon());
}

TEST_F(PointerPresenceTest, WindowThatIsHiddenIsNotLeft) {
    enter(one);
    one.hide();
    leave(one);
    EXPECT_FALSE(isLeftSoon());
    enter(other);
    leave(other);
    presence.stop();
    EXPECT_FALSE(isLeftSoon());
}

} // namespace
} // namespace kestrel::linux_shell
