// Windows and the controllers in them, without the program around them.
#include "shells/macos/desktop/hosting_controller.h"
#include "shells/macos/desktop/window_server.h"
#include "tests/macos_standins/macos_fixture.h"

#include <utility>

/// A view of 10 by 10 points.
@interface SmallViewController : NSViewController <ViewStateOwner>
@property(nonatomic) NSInteger discards;
@end

@implementation SmallViewController
- (void)loadView {
    self.view = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 10, 10)];
}
- (void)discardView {
    self.discards++;
}
@end

namespace kestrel::tests {
namespace {

class WindowServerTest : public MacosFixture {
  protected:
    SmallViewController* controller = [[SmallViewController alloc] initWithNibName:nil bundle:nil];
    macos_shell::AppKitWindowServer server{nil};
    std::unique_ptr<Window> window =
        server.makeWindow({20, 30, 300, 200}, WindowStyleMask::titled | WindowStyleMask::resizable,
                          BackingStore::buffered, WindowCreation::deferred);

    void SetUp() override {
        window->setReleasedWhenClosed(false);
        window->setContentViewController(
            std::make_unique<macos_shell::AppKitHostingController>(controller));
    }

    NSWindow* native() const {
        return static_cast<const macos_shell::AppKitWindow&>(*window).window();
    }
};

TEST_F(WindowServerTest, AWindowIsMadeWithTheValuesGiven) {
    EXPECT_EQ(recording::count(
                  "NSWindow initWithContentRect:styleMask:backing:defer: 20 30 300 200 9 2 1"),
              1);
}

TEST_F(WindowServerTest, TheWindowKeepsItsSizeWhateverThatOfTheViewIs) {
    EXPECT_EQ(native().contentViewController, controller);
    EXPECT_TRUE(NSEqualSizes(native().contentView.frame.size, NSMakeSize(300, 200)));
}

TEST_F(WindowServerTest, AMinimisedWindowIsBroughtBack) {
    window->makeKeyAndOrderFront();
    [native() miniaturize:nil];
    window->makeKeyAndOrderFront();
    EXPECT_FALSE(native().miniaturized);
    EXPECT_TRUE(native().visible);
}

TEST_F(WindowServerTest, TheControllersViewEndsWithTheWindowAndTheWindowLeavesTheScreen) {
    window->makeKeyAndOrderFront();
    NSWindow* const shown = native();
    EXPECT_TRUE(shown.visible);
    window.reset();
    EXPECT_EQ(controller.discards, 1);
    EXPECT_FALSE(shown.visible);
    runMainQueue();
    EXPECT_EQ(shown.contentViewController, nil);
}

} // namespace
} // namespace kestrel::tests
