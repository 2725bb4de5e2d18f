#include "shells/linux/desktop/settings_window.h"

#include "tests/linux/desktop/waiting.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QScreen>

#include <gmock/gmock.h>

#include <memory>

namespace kestrel::linux_shell {
namespace {

class SettingsWindowTest : public testing::Test {
  protected:
    void SetUp() override {
        window = std::make_unique<SettingsWindow>(std::unique_ptr<QWidget>(content),
                                                  QSize(520, 420), QIcon(), [this] {
                                                      ++closed;
                                                      if (dropsWindow)
                                                          window.reset();
                                                  });
    }

    QWidget& widget() { return window->widget(); }

    int closed = 0;
    bool dropsWindow = false; ///< when it is closed
    QWidget* content = new QWidget;
    std::unique_ptr<SettingsWindow> window;
};

TEST_F(SettingsWindowTest, NewWindowIsNotShown) { EXPECT_FALSE(widget().isVisible()); }

TEST_F(SettingsWindowTest, ContentHasTheSizeThatWasAskedFor) {
    window->bringForward();
    EXPECT_TRUE(content->isVisible());
    EXPECT_EQ(content->size(), QSize(520, 420));
}

TEST_F(SettingsWindowTest, CanBeFoundByTitleAndRole) {
    EXPECT_EQ(widget().windowTitle(), QStringLiteral("Kestrel"));
    EXPECT_EQ(widget().windowRole(), QStringLiteral("settings"));
}

TEST_F(SettingsWindowTest, ContentFollowsTheWindowsSize) {
    window->bringForward();
    widget().resize(700, 500);
    EXPECT_EQ(content->size(), QSize(700, 500));
}

TEST_F(SettingsWindowTest, NewWindowIsCentredOnTheScreen) {
    const QPoint middle = widget().screen()->availableGeometry().center();
    // The frame that a window manager adds is not known before the window is shown.
    EXPECT_LE((widget().frameGeometry().center() - middle).manhattanLength(), 8);
}

TEST_F(SettingsWindowTest, ClosingIsToldOnce) {
    window->bringForward();
    widget().close();
    EXPECT_EQ(closed, 1);
    EXPECT_FALSE(widget().isVisible());
}

TEST_F(SettingsWindowTest, ControlWClosesItUnlessTheContentTakesTheKey) {
    class Taking : public QObject {
        bool eventFilter(QObject*, QEvent* event) override {
            return event->type() == QEvent::KeyPress;
        }
    } taking;
    const auto press = [this] {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_W, Qt::ControlModifier);
        QCoreApplication::sendEvent(content, &event);
    };
    window->bringForward();
    content->installEventFilter(&taking);
    press();
    EXPECT_EQ(closed, 0);
    content->removeEventFilter(&taking);
    press();
    EXPECT_EQ(closed, 1);
}

TEST_F(SettingsWindowTest, TheWindowMayBeDestroyedWhileItCloses) {
    dropsWindow = true;
    window->bringForward();
    const QPointer<QWidget> frame = &widget();
    const QPointer<QWidget> hosted = content;
    widget().close();
    EXPECT_EQ(window, nullptr);
    settle();
    EXPECT_TRUE(frame.isNull());
    EXPECT_TRUE(hosted.isNull());
    EXPECT_EQ(closed, 1);
}

TEST_F(SettingsWindowTest, DestroyingItTellsNobodyAndTakesItOffTheScreen) {
    window->bringForward();
    QWidget& frame = widget();
    const QPointer<QWidget> hosted = content;
    window.reset();
    EXPECT_FALSE(frame.isVisible());
    settle();
    EXPECT_TRUE(hosted.isNull());
    EXPECT_EQ(closed, 0);
}

TEST_F(SettingsWindowTest, MinimisedWindowComesBack) {
    window->bringForward();
    widget().setWindowState(Qt::WindowMinimized);
    window->bringForward();
    EXPECT_FALSE(widget().isMinimized());
    EXPECT_TRUE(widget().isVisible());
}

} // namespace
} // namespace kestrel::linux_shell
