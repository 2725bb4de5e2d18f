#include "shells/macos/views/item_editor_view_controller.h"

#import <objc/runtime.h>

#include "shells/macos/foundation/text.h"
#include "shells/macos/views/kit/accessibility.h"
#include "shells/macos/views/kit/face_button.h"
#include "shells/macos/views/kit/redraw_schedule.h"
#include "shells/macos/views/kit/rounded_fill_view.h"
#include "shells/macos/views/kit/style_bridge.h"
#include "shells/macos/views/kit/text_label.h"
#include "views/settings/add_edit_item_style.h"

#include <algorithm>
#include <optional>
#include <utility>

using namespace kestrel;
using namespace kestrel::macos_shell;
namespace form_style = kestrel::add_edit_item_style;

@interface KSTItemEditorViewController () <NSTextFieldDelegate>
- (NSView*)makeColumn;
- (NSView*)makeTitleRow;
- (NSView*)makeTypeRow;
- (NSTextField*)makeField;
- (NSView*)makePathRow;
- (NSView*)makeCommandRow;
- (NSView*)makeButtonRow;
- (void)updateNow;
- (void)typeChosen:(NSSegmentedControl*)sender;
- (void)browse:(id)sender;
- (void)confirm:(id)sender;
- (void)cancel:(id)sender;
@end

namespace {

/// The control is as wide as its text.
void keepWidth(NSControl* control) {
    [control setContentHuggingPriority:NSLayoutPriorityDefaultHigh
                        forOrientation:NSLayoutConstraintOrientationHorizontal];
}

/// The control takes the width that its row has left.
void stretch(NSControl* control) {
    [control setContentHuggingPriority:NSLayoutPriorityDefaultLow
                        forOrientation:NSLayoutConstraintOrientationHorizontal];
}

/// The platform's labelled row: the label at the leading edge, the control in the rest.
NSStackView* labeledRow(NSTextField* label, NSArray<NSView*>* controls) {
    NSStackView* const row =
        [NSStackView stackViewWithViews:[@[ label ] arrayByAddingObjectsFromArray:controls]];
    row.orientation = NSUserInterfaceLayoutOrientationHorizontal;
    row.alignment = NSLayoutAttributeFirstBaseline;
    row.distribution = NSStackViewDistributionFill;
    keepWidth(label);
    [label setContentCompressionResistancePriority:NSLayoutPriorityRequired
                                    forOrientation:NSLayoutConstraintOrientationHorizontal];
    return row;
}

/// The rows of the form below each other, all as wide as the padding leaves; without gaps.
NSStackView* columnOf(NSArray<NSView*>* rows) {
    const style::Insets& padding = form_style::padding;
    NSStackView* const column = [NSStackView stackViewWithViews:rows];
    column.orientation = NSUserInterfaceLayoutOrientationVertical;
    column.alignment = NSLayoutAttributeLeading;
    column.spacing = 0;
    column.edgeInsets = NSEdgeInsetsMake(padding.top, padding.left, padding.bottom, padding.right);
    [[column.widthAnchor constraintEqualToConstant:form_style::width] setActive:YES];
    const CGFloat rowWidth = form_style::width - padding.left - padding.right;
    for (NSView* row in rows)
        [[row.widthAnchor constraintEqualToConstant:rowWidth] setActive:YES];
    return column;
}

NSTextField* rowLabel(const style::Text& text) {
    return lineLabel(textFor(text), form_style::label);
}

/// Writes only what differs, so that the insertion point stays where the user has it.
void show(const std::string& text, NSTextField* field) {
    NSString* const shown = toNSString(text);
    if (![field.stringValue isEqualToString:shown])
        field.stringValue = shown;
}

std::size_t segmentOf(ItemType type) {
    const auto found = std::ranges::find(allItemTypes, type);
    return static_cast<std::size_t>(found - allItemTypes.begin());
}

} // namespace

@implementation KSTItemEditorViewController {
    std::unique_ptr<AddEditItemView> _form;
    NSSegmentedControl* _typeControl;
    NSTextField* _pathLabel;
    NSTextField* _pathField;
    NSView* _pathRow;
    NSTextField* _commandField;
    NSView* _commandRow;
    NSButton* _confirmButton;
    std::optional<RedrawSchedule> _redraws;
}

- (instancetype)initWithForm:(std::unique_ptr<AddEditItemView>)form {
    if ((self = [super initWithNibName:nil bundle:nil])) {
        _form = std::move(form);
        self.title = textFor(_form->header());
        __weak KSTItemEditorViewController* weakSelf = self;
        _redraws.emplace(_form->objectWillChange, [weakSelf] { [weakSelf updateNow]; });
    }
    return self;
}

// ---- the views

- (void)loadView {
    self.view = [self makeColumn];
    [self updateNow];
}

- (NSView*)makeColumn {
    NSTextField* const header = lineLabel(textFor(_form->header()), form_style::header);
    NSView* const titleRow = [self makeTitleRow];
    NSView* const typeRow = [self makeTypeRow];
    _pathRow = [self makePathRow];
    _commandRow = [self makeCommandRow];
    KSTRoundedFillView* const divider = [[KSTRoundedFillView alloc] initWithFrame:NSZeroRect];
    NSStackView* const column = columnOf(
        @[ header, titleRow, typeRow, _pathRow, _commandRow, divider, [self makeButtonRow] ]);
    [[divider.heightAnchor constraintEqualToConstant:form_style::dividerHeight] setActive:YES];

    [column setCustomSpacing:form_style::spaceBelowHeader afterView:header];
    [column setCustomSpacing:form_style::spaceBelowRow afterView:titleRow];
    [column setCustomSpacing:form_style::spaceBelowRow afterView:typeRow];
    const double aboveDivider = form_style::spaceBelowRow + form_style::spaceAboveDivider;
    [column setCustomSpacing:aboveDivider afterView:_pathRow];
    [column setCustomSpacing:aboveDivider afterView:_commandRow];
    [column setCustomSpacing:form_style::spaceBelowDivider afterView:divider];
    return column;
}

- (NSView*)makeTitleRow {
    NSTextField* const label = rowLabel(form_style::titleLabel);
    _titleField = [self makeField];
    _titleField.font = fontFor(form_style::label.font);
    _titleField.placeholderString = textFor(form_style::titlePlaceholder);
    nameForAssistivePrograms(_titleField, label.stringValue);
    return labeledRow(label, @[ _titleField ]);
}

- (NSView*)makeTypeRow {
    NSTextField* const label = rowLabel(form_style::typeLabel);
    NSMutableArray<NSString*>* const types = [NSMutableArray array];
    for (const ItemType type : allItemTypes)
        [types addObject:toNSString(rawValue(type))];
    _typeControl = [NSSegmentedControl segmentedControlWithLabels:types
                                                     trackingMode:NSSegmentSwitchTrackingSelectOne
                                                           target:self
                                                           action:@selector(typeChosen:)];
    _typeControl.segmentDistribution = NSSegmentDistributionFillEqually;
    stretch(_typeControl);
    nameForAssistivePrograms(_typeControl, label.stringValue);
    return labeledRow(label, @[ _typeControl ]);
}

- (NSTextField*)makeField {
    NSTextField* const field = [NSTextField textFieldWithString:@""];
    field.bezelStyle = NSTextFieldRoundedBezel;
    field.delegate = self;
    stretch(field);
    [field setContentCompressionResistancePriority:NSLayoutPriorityDefaultLow
                                    forOrientation:NSLayoutConstraintOrientationHorizontal];
    return field;
}

- (NSView*)makePathRow {
    _pathLabel = rowLabel(form_style::rowOf(_form->type()).label);
    _pathField = [self makeField];
    NSButton* const browse = [NSButton buttonWithTitle:textFor(form_style::browse)
                                                target:self
                                                action:@selector(browse:)];
    keepWidth(browse);
    NSStackView* const row = labeledRow(_pathLabel, @[ _pathField, browse ]);
    [row setCustomSpacing:form_style::browseSpacing afterView:_pathField];
    return row;
}

- (NSView*)makeCommandRow {
    const form_style::TypeRow& typeRow = form_style::commandRow;
    NSTextField* const label = rowLabel(typeRow.label);
    _commandField = [self makeField];
    _commandField.font = fontFor(typeRow.font);
    _commandField.placeholderString = textFor(typeRow.placeholder);
    nameForAssistivePrograms(_commandField, label.stringValue);
    return labeledRow(label, @[ _commandField ]);
}

- (NSView*)makeButtonRow {
    NSView* const space = [[NSView alloc] initWithFrame:NSZeroRect];
    NSButton* const cancel = [NSButton buttonWithTitle:textFor(form_style::cancel)
                                                target:self
                                                action:@selector(cancel:)];
    cancel.keyEquivalent = @"\033";
    _confirmButton = prominentButton(textFor(_form->confirmTitle()), self, @selector(confirm:));
    // In this order: Return without a modifier would make it the window's default button.
    _confirmButton.keyEquivalentModifierMask = NSEventModifierFlagCommand;
    _confirmButton.keyEquivalent = @"\r";
    keepWidth(cancel);
    keepWidth(_confirmButton);
    NSStackView* const row = [NSStackView stackViewWithViews:@[ space, cancel, _confirmButton ]];
    row.orientation = NSUserInterfaceLayoutOrientationHorizontal;
    row.distribution = NSStackViewDistributionFill;
    return row;
}

// ---- drawing the state

- (void)updateNow {
    if (!_titleField)
        return;
    const ItemType type = _form->type();
    const form_style::TypeRow& typeRow = form_style::rowOf(type);
    const bool showsPath = !usesCommand(type);
    show(_form->title(), _titleField);
    show(_form->path(), _pathField);
    show(_form->command(), _commandField);
    _typeControl.selectedSegment = static_cast<NSInteger>(segmentOf(type));
    _pathRow.hidden = !showsPath;
    _commandRow.hidden = showsPath;
    if (showsPath) {
        _pathLabel.stringValue = textFor(typeRow.label);
        _pathField.font = fontFor(typeRow.font);
        _pathField.placeholderString = textFor(typeRow.placeholder);
        nameForAssistivePrograms(_pathField, _pathLabel.stringValue);
    }
    _confirmButton.enabled = _form->canSave();
}

// ---- what the user does

- (void)controlTextDidChange:(NSNotification*)notification {
    NSTextField* const field = notification.object;
    std::string text = toUtf8(field.stringValue);
    if (field == _titleField)
        _form->setTitle(std::move(text));
    else if (field == _pathField)
        _form->setPath(std::move(text));
    else if (field == _commandField)
        _form->setCommand(std::move(text));
}

// A field editor takes both keys before any button sees them.
- (BOOL)control:(NSControl*)control
               textView:(NSTextView*)textView
    doCommandBySelector:(SEL)commandSelector {
    (void)control;
    (void)textView;
    if (sel_isEqual(commandSelector, @selector(cancelOperation:))) {
        [self cancel:nil];
        return YES;
    }
    // Plain Return does nothing: it neither submits the form nor ends the editing.
    return sel_isEqual(commandSelector, @selector(insertNewline:));
}

- (void)typeChosen:(NSSegmentedControl*)sender {
    const NSInteger segment = sender.selectedSegment;
    if (segment >= 0 && static_cast<std::size_t>(segment) < allItemTypes.size())
        _form->setType(allItemTypes[static_cast<std::size_t>(segment)]);
}

- (void)browse:(id)sender {
    (void)sender;
    _form->browse();
}

- (void)confirm:(id)sender {
    (void)sender;
    _form->commitSave();
}

- (void)cancel:(id)sender {
    (void)sender;
    _form->cancel();
}

@end
