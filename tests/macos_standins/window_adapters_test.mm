// The popover and the settings window with a controller in them, without the program around them.
#include "shells/macos/desktop/popover.h"
#include "shells/macos/desktop/settings_window.h"
#include "shells/macos/desktop/status_item.h"
#include "tests/macos_standins/macos_fixture.h"

#include <algorithm>

/// A view of 10 by 10 points.
@interface SmallViewController : NSViewController <KSTViewStateOwner>
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

class SettingsWindowAdapterTest : public MacosFixture {
  protected:
    SmallViewController* controller = [[SmallViewController alloc] initWithNibName:nil bundle:nil];
    std::unique_ptr<macos_shell::AppKitSettingsWindow> window =
        std::make_unique<macos_shell::AppKitSettingsWindow>(controller, Size{300, 200}, "Title",
                                                            nil);

    NSWindow* native() const { return window->window(); }
};

TEST_F(SettingsWindowAdapterTest, TheWindowKeepsItsSizeWhateverThatOfTheViewIs) {
    EXPECT_EQ(native().contentViewController, controller);
    EXPECT_TRUE(NSEqualSizes(native().contentView.frame.size, NSMakeSize(300, 200)));
}

TEST_F(SettingsWindowAdapterTest, AMinimisedWindowIsBroughtBack) {
    window->bringForward();
    [native() miniaturize:nil];
    recording::reset();
    window->bringForward();
    const Lines calls = linesOf({"NSWindow deminiaturize:", "NSWindow makeKeyAndOrderFront:"});
    ASSERT_FALSE(calls.empty());
    EXPECT_EQ(calls.front(), "NSWindow deminiaturize: nil");
    EXPECT_EQ(std::ranges::count(calls, "NSWindow makeKeyAndOrderFront: nil"), 1);
    EXPECT_FALSE(native().miniaturized);
    EXPECT_TRUE(native().visible);
}

TEST_F(SettingsWindowAdapterTest, TheControllersViewEndsWithTheWindowAndTheWindowLeavesTheScreen) {
    window->bringForward();
    NSWindow* const shown = native();
    EXPECT_TRUE(shown.visible);
    window.reset();
    EXPECT_EQ(controller.discards, 1);
    EXPECT_FALSE(shown.visible);
    runMainQueue();
    EXPECT_EQ(shown.contentViewController, nil);
}

TEST(PopoverAdapterTest, TheControllersViewEndsWithThePopoverWhichIsClosed) {
    const MacosSystem system;
    SmallViewController* const controller = [[SmallViewController alloc] initWithNibName:nil
                                                                                  bundle:nil];
    const macos_shell::AppKitStatusItem statusItem("plus", "Item", nil, [] {});
    auto popover =
        std::make_unique<macos_shell::AppKitPopover>(controller, Size{100, 50}, statusItem);
    EXPECT_FALSE(popover->isShown());
    popover->show({100, 60});
    ASSERT_TRUE(popover->isShown());
    EXPECT_EQ(controller.discards, 0);
    popover.reset();
    EXPECT_EQ(controller.discards, 1);
    EXPECT_EQ(recording::shownPopover(), nil);
}

} // namespace
} // namespace kestrel::tests
