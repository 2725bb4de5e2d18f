#include "shells/macos/views/menu_popover_view_controller.h"

#include "shells/macos/foundation/text.h"
#include "shells/macos/views/item_icon_image.h"
#include "shells/macos/views/kit/centered_column_view.h"
#include "shells/macos/views/kit/face_button.h"
#include "shells/macos/views/kit/hover_tracking.h"
#include "shells/macos/views/kit/redraw_schedule.h"
#include "shells/macos/views/kit/rounded_fill_view.h"
#include "shells/macos/views/kit/style_bridge.h"
#include "shells/macos/views/kit/symbol_view.h"
#include "shells/macos/views/kit/text_label.h"
#include "shells/macos/views/popover_list_view.h"
#include "views/popover/menu_popover_style.h"

#include <cstdint>
#include <optional>
#include <utility>

using namespace kestrel;
using namespace kestrel::macos_shell;
namespace popover_style = kestrel::menu_popover_style;

/// The whole view. It takes the keys as long as none of the buttons does, and passes them on to
/// its controller, the next responder.
@interface KSTMenuPopoverContentView : NSView
@end

@implementation KSTMenuPopoverContentView

- (BOOL)acceptsFirstResponder {
    return YES;
}

@end

@interface KSTMenuPopoverViewController () <KSTPopoverRowViewDelegate,
                                            NSStandardKeyBindingResponding>
- (void)updateNow;
- (void)showRows;
- (NSView*)firstWithKeys;
- (void)connectKeyViews;
- (void)footerHasFocus:(BOOL)hasFocus;
- (void)takeKeys;
- (void)showHighlightedRow;
- (void)moveHighlight:(MenuPopoverView::Step)step;
- (void)addContentTo:(NSView*)root;
- (NSScrollView*)makeListIn:(NSRect)frame;
- (void)addFooterTo:(NSView*)root;
- (void)settingsClicked:(id)sender;
- (void)quitClicked:(id)sender;
@end

namespace {

KSTFaceButton* footerButton(const popover_style::footer::Button& button, id target, SEL action) {
    const ButtonFace face{.symbol = button.symbol,
                          .title = button.title,
                          .titleStyle = button.titleStyle,
                          .axis = ButtonFace::Axis::horizontal,
                          .spacing = popover_style::footer::buttonSpacing};
    return [[KSTFaceButton alloc] initWithFace:face target:target action:action];
}

KSTCenteredColumnView* emptyStateView(NSRect frame) {
    namespace state = popover_style::empty_state;
    KSTCenteredColumnView* const column = [[KSTCenteredColumnView alloc] initWithFrame:frame];
    [column addView:symbolView(state::symbol) gapAbove:0];
    [column addView:lineLabel(textFor(state::title), state::titleStyle) gapAbove:state::spacing];
    [column
         addView:centeredParagraph(textFor(state::hint), state::hintStyle, state::hintMaximumWidth)
        gapAbove:state::spacing];
    return column;
}

} // namespace

@implementation KSTMenuPopoverViewController {
    std::unique_ptr<MenuPopoverView> _state;
    NSScrollView* _scrollView;
    KSTPopoverListView* _list;
    KSTHoverTracker* _hover;
    KSTCenteredColumnView* _emptyState;
    NSArray<KSTFaceButton*>* _footerButtons;
    std::optional<std::uint64_t> _shownRevision; // of the items
    std::optional<RedrawSchedule> _redraws;
}

- (instancetype)initWithMenuPopoverView:(std::unique_ptr<MenuPopoverView>)view {
    if ((self = [super initWithNibName:nil bundle:nil])) {
        _state = std::move(view);
        __weak KSTMenuPopoverViewController* weakSelf = self;
        _redraws.emplace(_state->objectWillChange, [weakSelf] { [weakSelf updateNow]; });
    }
    return self;
}

- (void)dealloc {
    [self discardView];
}

- (void)discardView {
    _hover = nil;
    _redraws.reset();
    _state.reset();
}

// ---- the views

- (void)loadView {
    const NSSize size = sizeFor(popover_style::contentSize(_state->items().size()));
    NSView* const root =
        [[KSTMenuPopoverContentView alloc] initWithFrame:NSMakeRect(0, 0, size.width, size.height)];
    [self addContentTo:root];
    [self addFooterTo:root];
    self.view = root;
    [self updateNow];
}

- (void)addContentTo:(NSView*)root {
    const NSSize size = root.bounds.size;
    const CGFloat dividerY = popover_style::footer::height;
    const CGFloat contentY = dividerY + popover_style::dividerHeight;
    const NSRect content = NSMakeRect(0, contentY, size.width, size.height - contentY);
    _scrollView = [self makeListIn:content];
    _emptyState = emptyStateView(content);
    for (NSView* view in @[ _scrollView, _emptyState ]) {
        view.autoresizingMask = NSViewWidthSizable | NSViewHeightSizable;
        [root addSubview:view];
    }
    KSTRoundedFillView* const divider = [[KSTRoundedFillView alloc]
        initWithFrame:NSMakeRect(0, dividerY, size.width, popover_style::dividerHeight)];
    divider.autoresizingMask = NSViewWidthSizable | NSViewMaxYMargin;
    [root addSubview:divider];
}

- (NSScrollView*)makeListIn:(NSRect)frame {
    _list = [[KSTPopoverListView alloc]
        initWithFrame:NSMakeRect(0, 0, frame.size.width, frame.size.height)];
    NSScrollView* const scrollView = [[NSScrollView alloc] initWithFrame:frame];
    scrollView.hasVerticalScroller = NO;
    scrollView.hasHorizontalScroller = NO;
    scrollView.drawsBackground = NO;
    scrollView.borderType = NSNoBorder;
    scrollView.documentView = _list;
    _hover = [[KSTHoverTracker alloc] initWithList:_list];
    return scrollView;
}

- (void)addFooterTo:(NSView*)root {
    namespace footer = popover_style::footer;
    KSTFaceButton* const settings =
        footerButton(footer::settings, self, @selector(settingsClicked:));
    KSTFaceButton* const quit = footerButton(footer::quit, self, @selector(quitClicked:));
    const auto place = [&](KSTFaceButton* button, CGFloat x, NSAutoresizingMaskOptions margin) {
        // As high as the footer, so that a click need not hit the text.
        button.frame = NSMakeRect(x, 0, button.frame.size.width, footer::height);
        button.autoresizingMask = NSViewMaxYMargin | margin;
        [root addSubview:button];
    };
    place(settings, footer::padding.left, NSViewMaxXMargin);
    const CGFloat right = root.bounds.size.width - footer::padding.right;
    place(quit, right - quit.frame.size.width, NSViewMinXMargin);
    __weak KSTMenuPopoverViewController* weakSelf = self;
    _footerButtons = @[ settings, quit ];
    for (KSTFaceButton* button in _footerButtons)
        button.onFocusChange = ^(BOOL hasFocus) {
            [weakSelf footerHasFocus:hasFocus];
        };
}

// ---- drawing the state

- (void)updateNow {
    if (!_state || !_list)
        return;
    const std::uint64_t revision = _state->items().revision();
    if (std::exchange(_shownRevision, revision) != revision)
        [self showRows];
    const std::optional<std::size_t> hovered = _state->hoveredRow();
    for (KSTPopoverRowView* row in _list.rows)
        row.highlighted = hovered == row.position;
}

- (void)showRows {
    [_hover forget]; // other items stand under the pointer, which reports itself again
    const std::size_t count = _state->items().size();
    [_list setRowCount:count delegate:self];
    for (KSTPopoverRowView* row in _list.rows) {
        const ItemRowView value = _state->row(row.position);
        [row showRow:value icon:itemIconImage(_state->manager().icon(value.item))];
    }
    _scrollView.hidden = count == 0;
    _emptyState.hidden = count != 0;
}

- (void)viewWillAppear {
    [super viewWillAppear];
    if (_state)
        _state->resetHighlight();
    [self updateNow];
}

- (void)viewDidAppear {
    [super viewDidAppear];
    [self.view.window makeFirstResponder:[self firstWithKeys]];
    [self connectKeyViews];
}

// Without a list, the button that leads to one: for those who go through buttons with the keyboard,
// all others expect no ring around it.
- (NSView*)firstWithKeys {
    const bool isEmpty = !_state || _state->items().empty();
    return isEmpty && NSApp.fullKeyboardAccessEnabled ? _footerButtons.firstObject : self.view;
}

// Now, because a window that comes onto the screen makes a loop of its own.
- (void)connectKeyViews {
    NSView* last = self.view;
    for (KSTFaceButton* button in _footerButtons) {
        last.nextKeyView = button;
        last = button;
    }
    last.nextKeyView = self.view;
}

- (void)viewDidDisappear {
    [super viewDidDisappear];
    [_hover forget];
    if (!_state)
        return;
    _state->resetHighlight();
    _state->setFooterHasFocus(false);
}

- (void)footerHasFocus:(BOOL)hasFocus {
    if (_state)
        _state->setFooterHasFocus(hasFocus);
}

// From a button of the footer: the mark goes where the user acts.
- (void)takeKeys {
    NSWindow* const window = self.view.window;
    if ([window.firstResponder isKindOfClass:KSTFaceButton.class])
        [window makeFirstResponder:self.view];
}

// ---- the pointer

- (void)pointerEnteredRow:(KSTPopoverRowView*)row {
    if (!_state)
        return;
    [self takeKeys];
    _state->pointerEntered(row.position);
}

- (void)pointerLeftRow:(KSTPopoverRowView*)row {
    if (_state)
        _state->pointerLeft(row.position);
}

- (void)settingsClicked:(id)sender {
    (void)sender;
    if (_state)
        _state->settingsClicked();
}

- (void)quitClicked:(id)sender {
    (void)sender;
    if (_state)
        _state->quitClicked();
}

// ---- the keyboard

- (void)keyDown:(NSEvent*)event {
    [self interpretKeyEvents:@[ event ]];
}

// The highlight stays in the row that the keyboard leads to, whatever scrolls under the pointer.
- (void)showHighlightedRow {
    _hover.paused = YES;
    if (const auto row = _state->hoveredRow())
        [_list scrollToRow:*row];
    _hover.paused = NO;
}

- (void)moveHighlight:(MenuPopoverView::Step)step {
    if (!_state)
        return;
    [self takeKeys];
    _state->moveHighlight(step);
    [self showHighlightedRow];
}

- (void)moveUp:(id)sender {
    (void)sender;
    [self moveHighlight:MenuPopoverView::Step::previous];
}

- (void)moveDown:(id)sender {
    (void)sender;
    [self moveHighlight:MenuPopoverView::Step::next];
}

- (void)scrollPageUp:(id)sender {
    (void)sender;
    [self moveHighlight:MenuPopoverView::Step::pageUp];
}

- (void)scrollPageDown:(id)sender {
    (void)sender;
    [self moveHighlight:MenuPopoverView::Step::pageDown];
}

- (void)scrollToBeginningOfDocument:(id)sender {
    (void)sender;
    [self moveHighlight:MenuPopoverView::Step::first];
}

- (void)scrollToEndOfDocument:(id)sender {
    (void)sender;
    [self moveHighlight:MenuPopoverView::Step::last];
}

- (void)insertTab:(id)sender {
    [self.view.window selectNextKeyView:sender];
}

- (void)insertBacktab:(id)sender {
    [self.view.window selectPreviousKeyView:sender];
}

- (void)cancelOperation:(id)sender {
    (void)sender;
    if (_state)
        _state->cancelled();
}

- (void)insertNewline:(id)sender {
    (void)sender;
    if (_state)
        _state->activateHighlighted();
}

- (void)insertText:(id)text {
    if (!_state)
        return;
    [self takeKeys];
    NSString* const letters = [text isKindOfClass:NSString.class] ? text : @"";
    _state->typed(toUtf8(letters));
    [self showHighlightedRow];
}

@end
