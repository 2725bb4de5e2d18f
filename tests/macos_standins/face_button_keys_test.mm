// A face button under Space. The stand-ins' toolkit sends the action after the press has been
// drawn, so the test listens to the face.

#include "tests/macos/face_button_support.h"
#include "tests/macos/views_support.h"

#include <memory>

/// Keeps each opacity that a view is given.
@interface KSTTestOpacityLog : NSObject
@property(nonatomic) NSMutableArray<NSNumber*>* values;
@end

@implementation KSTTestOpacityLog
- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary*)change
                       context:(const void*)context {
    (void)keyPath;
    (void)change;
    (void)context;
    [self.values addObject:[object valueForKey:@"alphaValue"]];
}
@end

namespace kestrel::tests {
namespace {

class MacFaceButtonKeysTest : public testing::Test {
  protected:
    void SetUp() override {
        controller_.view = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 200, 100)];
        button_.frame = NSMakeRect(50, 30, 100, 40);
        [controller_.view addSubview:button_];
        window_ = std::make_unique<ShownWindow>(controller_);
        log_.values = [NSMutableArray array];
        for (NSView* view in @[ button_.symbol, button_.label ])
            [view addObserver:log_ forKeyPath:@"alphaValue" options:0 context:nullptr];
    }

    void TearDown() override {
        for (NSView* view in @[ button_.symbol, button_.label ])
            [view removeObserver:log_ forKeyPath:@"alphaValue"];
    }

    bool wasDimmed() { return [log_.values containsObject:@0.5]; }
    bool isWhole() { return button_.symbol.alphaValue == 1 && button_.label.alphaValue == 1; }

    KSTTestFaceTarget* target_ = [[KSTTestFaceTarget alloc] init];
    KSTFaceButton* button_ = faceButton(target_);
    KSTTestOpacityLog* log_ = [[KSTTestOpacityLog alloc] init];
    NSViewController* controller_ = [[NSViewController alloc] initWithNibName:nil bundle:nil];
    std::unique_ptr<ShownWindow> window_;
};

TEST_F(MacFaceButtonKeysTest, TheFaceIsDimmedWhileSpacePressesIt) {
    [button_ keyDown:keyPress(' ')];
    EXPECT_EQ(target_.presses, 1);
    EXPECT_TRUE(wasDimmed());
    EXPECT_TRUE(isWhole());
}

TEST_F(MacFaceButtonKeysTest, ADisabledFaceIsNeverDimmed) {
    button_.enabled = NO;
    [button_ keyDown:keyPress(' ')];
    EXPECT_EQ(target_.presses, 0);
    EXPECT_FALSE(wasDimmed());
    EXPECT_TRUE(isWhole());
}

} // namespace
} // namespace kestrel::tests
