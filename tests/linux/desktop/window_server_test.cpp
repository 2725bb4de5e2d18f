#include "shells/linux/desktop/window_server.h"

#include "tests/linux/desktop/waiting.h"

#include <QApplication>
#include <QScreen>

#include <gmock/gmock.h>

#include <memory>
#include <vector>

namespace kestrel::linux_shell {
namespace {

class RecordingDelegate : public WindowDelegate {
  public:
    void windowWillClose(Window* window) override {
        closed.push_back(window);
        if (destroyOnClose != nullptr) {
            destroyOnClose->reset();
        }
    }
    std::vector<Window*> closed;
    std::unique_ptr<Window>* destroyOnClose = nullptr;
};

class WindowServerTest : public testing::Test {
  protected:
    WindowServerTest() {
        using enum WindowStyleMask;
        window = server.makeWindow({0, 0, 520, 420}, titled | closable | miniaturizable | resizable,
                                   BackingStore::buffered, WindowCreation::immediate);
        window->setTitle("Kestrel");
        window->setContentViewController(
            std::make_unique<WidgetController>(std::unique_ptr<QWidget>(content)));
        window->setDelegate(&delegate);
    }

    QWidget& widget() { return *static_cast<SettingsWindowShell&>(*window).widget(); }

    QtWindowServer server;
    RecordingDelegate delegate;
    QWidget* content = new QWidget;
    std::unique_ptr<Window> window;
};

TEST_F(WindowServerTest, NewWindowIsNotShown) { EXPECT_FALSE(widget().isVisible()); }

TEST_F(WindowServerTest, ContentHasTheSizeThatWasAskedFor) {
    window->makeKeyAndOrderFront();
    EXPECT_TRUE(content->isVisible());
    EXPECT_EQ(content->size(), QSize(520, 420));
    EXPECT_EQ(widget().windowTitle(), QStringLiteral("Kestrel"));
    EXPECT_EQ(widget().windowRole(), QStringLiteral("settings"));
}

TEST_F(WindowServerTest, ContentFollowsTheWindowsSize) {
    window->makeKeyAndOrderFront();
    widget().resize(700, 500);
    EXPECT_EQ(content->size(), QSize(700, 500));
}

TEST_F(WindowServerTest, CentersOnTheScreen) {
    window->center();
    const QPoint middle = widget().screen()->availableGeometry().center();
    // The frame that a window manager adds is not known before the window is shown.
    EXPECT_LE((widget().frameGeometry().center() - middle).manhattanLength(), 8);
}

TEST_F(WindowServerTest, ClosingTellsTheDelegateOnce) {
    window->makeKeyAndOrderFront();
    widget().close();
    EXPECT_EQ(delegate.closed, std::vector<Window*>{window.get()});
    EXPECT_FALSE(widget().isVisible());
}

TEST_F(WindowServerTest, DelegateMayDestroyTheWindowWhileItCloses) {
    delegate.destroyOnClose = &window;
    window->makeKeyAndOrderFront();
    const QPointer<QWidget> frame = &widget();
    const QPointer<QWidget> hosted = content;
    widget().close();
    EXPECT_EQ(window, nullptr);
    settle();
    EXPECT_TRUE(frame.isNull());
    EXPECT_TRUE(hosted.isNull());
    EXPECT_EQ(delegate.closed.size(), 1U);
}

TEST_F(WindowServerTest, DestroyingItTellsNobodyAndTakesItOffTheScreen) {
    window->makeKeyAndOrderFront();
    QWidget& frame = widget();
    const QPointer<QWidget> hosted = content;
    window.reset();
    EXPECT_FALSE(frame.isVisible());
    settle();
    EXPECT_TRUE(hosted.isNull());
    EXPECT_TRUE(delegate.closed.empty());
}

TEST_F(WindowServerTest, WithoutADelegateClosingIsStillFine) {
    window->setDelegate(nullptr);
    window->makeKeyAndOrderFront();
    widget().close();
    EXPECT_FALSE(widget().isVisible());
    EXPECT_TRUE(delegate.closed.empty());
}

TEST_F(WindowServerTest, MinimisedWindowComesBack) {
    window->makeKeyAndOrderFront();
    widget().setWindowState(Qt::WindowMinimized);
    window->makeKeyAndOrderFront();
    EXPECT_FALSE(widget().isMinimized());
    EXPECT_TRUE(widget().isVisible());
}

} // namespace
} // namespace kestrel::linux_shell
