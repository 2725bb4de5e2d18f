// The button whose face is a symbol and a text: its names, its keys and how it looks when pressed.

#include "shells/macos/views/kit/face_button.h"
#include "shells/macos/views/kit/symbol_view.h"
#include "tests/macos/face_button_support.h"
#include "tests/macos/views_support.h"

namespace kestrel::tests {
namespace {

class MacFaceButtonTest : public testing::Test {
  protected:
    KSTTestFaceTarget* target_ = [[KSTTestFaceTarget alloc] init];
    KSTFaceButton* button_ = faceButton(target_);

    CGFloat opacity() {
        EXPECT_EQ(button_.symbol.alphaValue, button_.label.alphaValue);
        return button_.label.alphaValue;
    }
};

TEST_F(MacFaceButtonTest, ItIsReadByItsTitleAndNothingInIt) {
    EXPECT_EQ(textOf(button_.accessibilityLabel), "Quit");
    EXPECT_EQ(textOf(button_.cell.accessibilityLabel), "Quit");
    for (NSControl* control in @[ button_.symbol, button_.label ]) {
        EXPECT_FALSE(control.isAccessibilityElement);
        EXPECT_FALSE(control.cell.isAccessibilityElement);
    }
}

TEST_F(MacFaceButtonTest, ItHasNeitherABezelNorATitleOfItsOwn) {
    EXPECT_FALSE(button_.bordered);
    EXPECT_EQ(textOf(button_.title), "");
    EXPECT_EQ(button_.imagePosition, NSNoImage);
    EXPECT_TRUE([button_ acceptsFirstMouse:nil]);
}

TEST_F(MacFaceButtonTest, TheFaceIsDimmedWhileItIsHighlighted) {
    EXPECT_EQ(opacity(), 1);
    [button_ highlight:YES];
    EXPECT_EQ(opacity(), 0.5);
    [button_ highlight:NO];
    EXPECT_EQ(opacity(), 1);
    NSCell* const cell = button_.cell;
    cell.highlighted = YES;
    EXPECT_EQ(opacity(), 0.5);
    cell.highlighted = NO;
    EXPECT_EQ(opacity(), 1);
}

TEST_F(MacFaceButtonTest, ADisabledFaceIsNotDimmed) {
    button_.enabled = NO;
    [button_ highlight:YES];
    EXPECT_EQ(opacity(), 1);
}

TEST_F(MacFaceButtonTest, AFaceThatIsDisabledByItsActionIsWholeAgain) {
    [button_ highlight:YES];
    button_.enabled = NO;
    [button_ highlight:NO];
    EXPECT_EQ(opacity(), 1);
}

TEST_F(MacFaceButtonTest, ReturnAndEnterPressItAndOtherKeysDoNot) {
    [button_ keyDown:keyPress(NSCarriageReturnCharacter)];
    EXPECT_EQ(target_.presses, 1);
    [button_ keyDown:keyPress(NSEnterCharacter)];
    EXPECT_EQ(target_.presses, 2);
    button_.enabled = NO;
    [button_ keyDown:keyPress(NSCarriageReturnCharacter)];
    EXPECT_EQ(target_.presses, 2);
}

TEST_F(MacFaceButtonTest, TheWholeFrameTakesClicks) {
    NSView* const root = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 300, 100)];
    button_.frame = NSMakeRect(10, 10, 200, 60);
    [root addSubview:button_];
    EXPECT_EQ([root hitTest:NSMakePoint(12, 12)], button_);
    EXPECT_EQ([root hitTest:NSMakePoint(110, 40)], button_) << "the face itself";
    EXPECT_EQ([root hitTest:NSMakePoint(250, 40)], root);
}

TEST(MacSymbolViewTest, APictureSaysNothingToAssistivePrograms) {
    NSImageView* const symbol = macos_shell::symbolView({.name = "gear", .font = {.size = 13}});
    NSImageView* const picture = [[KSTItemPictureView alloc] initWithFrame:NSZeroRect];
    for (NSImageView* view in @[ symbol, picture ]) {
        EXPECT_FALSE(view.isAccessibilityElement);
        EXPECT_FALSE(view.cell.isAccessibilityElement);
    }
}

} // namespace
} // namespace kestrel::tests
