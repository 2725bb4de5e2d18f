// The form of the sheet: its fields and the state behind them, its keys and its gaps.

#include "shells/macos/views/item_editor_view_controller.h"
#include "shells/macos/views/kit/rounded_fill_view.h"
#include "shells/macos/views/kit/style_bridge.h"
#include "tests/macos/views_support.h"

#include <memory>
#include <optional>

namespace kestrel::tests {
namespace {

class MacItemEditorTest : public testing::Test {
  protected:
    void SetUp() override { open(std::nullopt); }

    void open(const std::optional<LauncherItem>& item) {
        auto form = std::make_unique<AddEditItemView>(
            item, [this](LauncherItem saved) { saved_.push_back(std::move(saved)); }, openPanel_);
        form->dismiss = [this] { ++dismissals_; };
        form_ = form.get();
        @autoreleasepool {
            editor_ = [[KSTItemEditorViewController alloc] initWithForm:std::move(form)];
            [editor_ view];
        }
    }

    NSStackView* column() { return (NSStackView*)editor_.view; }
    /// The rows from top to bottom: header, title, type, path, command, divider, buttons.
    NSStackView* row(NSUInteger index) { return (NSStackView*)column().arrangedSubviews[index]; }
    NSTextField* field(NSUInteger index) { return (NSTextField*)row(index).arrangedSubviews[1]; }
    std::string label(NSUInteger index) {
        return textOf(((NSTextField*)row(index).arrangedSubviews[0]).stringValue);
    }
    NSTextField* titleField() { return field(1); }
    NSSegmentedControl* typeControl() { return (NSSegmentedControl*)row(2).arrangedSubviews[1]; }
    NSTextField* pathField() { return field(3); }
    NSTextField* commandField() { return field(4); }
    NSButton* button(const std::string& name) { return buttonWith(editor_.view, name); }

    void type(NSTextField* field, const std::string& text) {
        field.stringValue = macos_shell::toNSString(text);
        [(id<NSTextFieldDelegate>)field.delegate
            controlTextDidChange:[NSNotification
                                     notificationWithName:NSControlTextDidChangeNotification
                                                   object:field]];
        redraw();
    }

    void chooseType(NSInteger segment) {
        typeControl().selectedSegment = segment;
        click(typeControl());
        redraw();
    }

    /// A command of the field editor's; true when the form has dealt with it.
    bool key(SEL selector) {
        return [(id<NSTextFieldDelegate>)titleField().delegate control:titleField()
                                                              textView:[[NSTextView alloc] init]
                                                   doCommandBySelector:selector];
    }

    FakeOpenPanel openPanel_;
    std::vector<LauncherItem> saved_;
    int dismissals_ = 0;
    AddEditItemView* form_ = nullptr;
    KSTItemEditorViewController* editor_ = nil;
};

TEST_F(MacItemEditorTest, AddingStartsEmptyWithTheAppRow) {
    EXPECT_TRUE(fieldWith(editor_.view, "Add Item") != nil);
    EXPECT_EQ(textOf(titleField().stringValue), "");
    EXPECT_EQ(typeControl().selectedSegment, 0);
    EXPECT_EQ(label(3), "App");
    EXPECT_FALSE(row(3).hidden);
    EXPECT_TRUE(row(4).hidden);
    ASSERT_TRUE(button("Add") != nil);
    EXPECT_FALSE(button("Add").enabled);
    EXPECT_EQ(editor_.titleField, titleField());
    EXPECT_EQ(textOf(editor_.title), "Add Item");
}

TEST_F(MacItemEditorTest, EditingShowsTheItem) {
    const LauncherItem item = commandItem("List", "ls -l");
    open(item);
    EXPECT_TRUE(fieldWith(editor_.view, "Edit Item") != nil);
    EXPECT_EQ(textOf(titleField().stringValue), "List");
    EXPECT_EQ(typeControl().selectedSegment, 2);
    EXPECT_TRUE(row(3).hidden);
    EXPECT_FALSE(row(4).hidden);
    EXPECT_EQ(textOf(commandField().stringValue), "ls -l");
    EXPECT_TRUE(button("Save").enabled);
}

TEST_F(MacItemEditorTest, TheTextsAndPlaceholdersAreTheStatedOnes) {
    EXPECT_EQ(label(1), "Title");
    EXPECT_EQ(label(2), "Type");
    EXPECT_EQ(textOf(titleField().placeholderString), "e.g. Xcode, Deploy Script");
    EXPECT_EQ(textOf(pathField().placeholderString), "/Applications/MyApp.app");
    EXPECT_EQ(label(4), "Command");
    EXPECT_EQ(textOf(commandField().placeholderString), "e.g. open -a Safari");
    const char* const segments[] = {"App", "Command File", "Inline Command"};
    ASSERT_EQ(typeControl().segmentCount, 3);
    for (NSInteger i = 0; i < 3; ++i)
        EXPECT_EQ(textOf([typeControl() labelForSegment:i]), segments[i]);
    EXPECT_TRUE(button("Browse…") != nil);
    chooseType(1);
    EXPECT_EQ(label(3), "File");
    EXPECT_EQ(textOf(pathField().placeholderString), "~/Desktop/script.command");
}

TEST_F(MacItemEditorTest, TheGapsAreTheStatedOnes) {
    const double gaps[] = {20, 14, 14, 14 + 6, 14 + 6, 14};
    for (NSUInteger i = 0; i < 6; ++i)
        EXPECT_EQ([column() customSpacingAfterView:column().arrangedSubviews[i]], gaps[i]) << i;
    EXPECT_EQ(column().spacing, 0);
    EXPECT_EQ(column().edgeInsets.left, 24);
    EXPECT_EQ(column().edgeInsets.top, 24);
    EXPECT_EQ(column().edgeInsets.right, 24);
    EXPECT_EQ(column().edgeInsets.bottom, 24);
    EXPECT_EQ([row(3) customSpacingAfterView:pathField()], 8);
    EXPECT_TRUE([column().arrangedSubviews[5] isKindOfClass:KSTRoundedFillView.class]);
}

TEST_F(MacItemEditorTest, TheCommandFieldIsMonospacedAndAllFieldsAreRounded) {
    EXPECT_TRUE([commandField().font isEqual:[NSFont monospacedSystemFontOfSize:13 weight:0]]);
    EXPECT_FALSE([pathField().font isEqual:commandField().font]);
    for (NSTextField* field in @[ titleField(), pathField(), commandField() ])
        EXPECT_EQ(field.bezelStyle, NSTextFieldRoundedBezel);
}

TEST_F(MacItemEditorTest, EachControlIsReadByTheLabelOfItsRow) {
    const auto isNamed = [](NSControl* control, const std::string& name) {
        EXPECT_EQ(textOf(control.accessibilityLabel), name);
        EXPECT_EQ(textOf(control.cell.accessibilityLabel), name) << "the cell";
    };
    isNamed(titleField(), "Title");
    isNamed(typeControl(), "Type");
    isNamed(pathField(), "App");
    isNamed(commandField(), "Command");
    chooseType(1);
    isNamed(pathField(), "File");
}

TEST_F(MacItemEditorTest, AControlTakesTheWidthThatItsLabelLeaves) {
    const auto hugging = [this](NSUInteger rowIndex, NSUInteger place) {
        return [row(rowIndex).arrangedSubviews[place]
            contentHuggingPriorityForOrientation:NSLayoutConstraintOrientationHorizontal];
    };
    for (const NSUInteger index : {1U, 2U, 3U, 4U}) {
        EXPECT_EQ(row(index).distribution, NSStackViewDistributionFill) << index;
        EXPECT_EQ(hugging(index, 0), NSLayoutPriorityDefaultHigh) << index;
        EXPECT_EQ(hugging(index, 1), NSLayoutPriorityDefaultLow) << index;
    }
    EXPECT_EQ(hugging(3, 2), NSLayoutPriorityDefaultHigh) << "the button to browse";
    EXPECT_EQ(hugging(6, 1), NSLayoutPriorityDefaultHigh) << "the button to cancel";
    EXPECT_EQ(hugging(6, 2), NSLayoutPriorityDefaultHigh) << "the button to confirm";
}

TEST_F(MacItemEditorTest, WhatIsTypedReachesTheState) {
    type(titleField(), "Grüße 🙂");
    EXPECT_EQ(form_->title(), "Grüße 🙂");
    EXPECT_TRUE(button("Add").enabled);
    type(pathField(), "/apps/one ");
    EXPECT_EQ(form_->path(), "/apps/one ");
    chooseType(2);
    type(commandField(), "say hi");
    EXPECT_EQ(form_->command(), "say hi");
    type(titleField(), "   ");
    EXPECT_FALSE(button("Add").enabled);
}

TEST_F(MacItemEditorTest, ChangingTheTypeKeepsEveryText) {
    type(pathField(), "/apps/one");
    chooseType(2);
    EXPECT_EQ(form_->type(), ItemType::inlineCommand);
    EXPECT_TRUE(row(3).hidden);
    type(commandField(), "ls");
    chooseType(1);
    EXPECT_FALSE(row(3).hidden);
    EXPECT_TRUE(row(4).hidden);
    EXPECT_EQ(textOf(pathField().stringValue), "/apps/one");
    chooseType(2);
    EXPECT_EQ(textOf(commandField().stringValue), "ls");
}

TEST_F(MacItemEditorTest, BrowsingFillsPathAndEmptyTitle) {
    openPanel_.result = "/Applications/Safari.app";
    click(button("Browse…"));
    redraw();
    ASSERT_EQ(openPanel_.shown.size(), 1U);
    EXPECT_EQ(openPanel_.shown[0].content, OpenPanelOptions::Content::applications);
    EXPECT_EQ(textOf(pathField().stringValue), "/Applications/Safari.app");
    EXPECT_EQ(textOf(titleField().stringValue), "Safari");
    EXPECT_TRUE(button("Add").enabled);

    chooseType(1);
    openPanel_.result = "/home/deploy.command";
    click(button("Browse…"));
    redraw();
    ASSERT_EQ(openPanel_.shown.size(), 2U);
    EXPECT_EQ(openPanel_.shown[1].content, OpenPanelOptions::Content::anyFile);
    EXPECT_EQ(textOf(titleField().stringValue), "Safari");
}

TEST_F(MacItemEditorTest, TheConfirmButtonSavesOnceAndDismisses) {
    type(titleField(), "  Deploy  ");
    click(button("Add"));
    ASSERT_EQ(saved_.size(), 1U);
    EXPECT_EQ(saved_[0].title, "Deploy");
    EXPECT_EQ(dismissals_, 1);
}

TEST_F(MacItemEditorTest, CommandReturnConfirmsAndEscapeCancels) {
    NSButton* const confirm = button("Add");
    EXPECT_EQ(textOf(confirm.keyEquivalent), "\r");
    EXPECT_EQ(confirm.keyEquivalentModifierMask, NSEventModifierFlagCommand);
    EXPECT_TRUE([confirm.bezelColor isEqual:NSColor.controlAccentColor]);
    EXPECT_EQ(textOf(button("Cancel").keyEquivalent), "\033");
    EXPECT_EQ(button("Cancel").keyEquivalentModifierMask, 0U);
    click(button("Cancel"));
    EXPECT_EQ(dismissals_, 1);
    EXPECT_TRUE(saved_.empty());
}

TEST_F(MacItemEditorTest, PlainReturnInAFieldDoesNothing) {
    type(titleField(), "Deploy");
    EXPECT_TRUE(key(@selector(insertNewline:)));
    EXPECT_TRUE(saved_.empty());
    EXPECT_EQ(dismissals_, 0);
}

TEST_F(MacItemEditorTest, EscapeInAFieldCancels) {
    type(titleField(), "Deploy");
    EXPECT_TRUE(key(@selector(cancelOperation:)));
    EXPECT_TRUE(saved_.empty());
    EXPECT_EQ(dismissals_, 1);
}

TEST_F(MacItemEditorTest, OtherKeysAreTheFieldsOwn) {
    EXPECT_FALSE(key(@selector(moveLeft:)));
    EXPECT_FALSE(key(@selector(insertTab:)));
}

TEST_F(MacItemEditorTest, AFormThatGoesInItsOwnActionIsNotTouchedAgain) {
    __weak KSTItemEditorViewController* weakEditor = editor_;
    form_->dismiss = [this] {
        ++dismissals_;
        editor_ = nil;
    };
    @autoreleasepool {
        type(titleField(), "Deploy");
        click(button("Add"));
    }
    EXPECT_TRUE(runUntil([weakEditor] { return weakEditor == nil; }));
    redraw();
    EXPECT_EQ(dismissals_, 1);
    EXPECT_EQ(saved_.size(), 1U);
}

} // namespace
} // namespace kestrel::tests
