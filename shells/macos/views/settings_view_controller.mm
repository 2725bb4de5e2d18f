#include "shells/macos/views/settings_view_controller.h"

#include "app/app_style.h"
#include "shells/macos/desktop/main_queue.h"
#include "shells/macos/views/item_editor_view_controller.h"
#include "shells/macos/views/kit/announcer.h"
#include "shells/macos/views/kit/centered_column_view.h"
#include "shells/macos/views/kit/face_button.h"
#include "shells/macos/views/kit/redraw_schedule.h"
#include "shells/macos/views/kit/rounded_fill_view.h"
#include "shells/macos/views/kit/style_bridge.h"
#include "shells/macos/views/kit/symbol_view.h"
#include "shells/macos/views/kit/text_label.h"
#include "shells/macos/views/settings_list_controller.h"
#include "shells/macos/views/settings_toolbar_view.h"
#include "views/settings/settings_style.h"

#include <cstdint>
#include <optional>
#include <utility>

using namespace kestrel;
using namespace kestrel::macos_shell;

@interface KSTSettingsViewController ()
- (void)addContentTo:(NSView*)root;
- (NSView*)makePlaceholder:(NSRect)frame;
- (NSScrollView*)makeList:(NSRect)frame;
- (void)updateNow;
- (void)addFirstItem:(id)sender;
- (void)presentSheet;
- (void)presentForm:(std::unique_ptr<AddEditItemView>)form;
@end

namespace {

/// `title` is for assistive programs: a sheet shows none.
NSWindow* makeSheet(NSString* title) {
    NSWindow* const sheet = [[NSWindow alloc] initWithContentRect:NSZeroRect
                                                        styleMask:NSWindowStyleMaskTitled
                                                          backing:NSBackingStoreBuffered
                                                            defer:YES];
    sheet.title = title;
    sheet.releasedWhenClosed = NO;
    // A form half filled in stops neither Quit nor logging out.
    sheet.preventsApplicationTerminationWhenModal = NO;
    return sheet;
}

/// Puts the form into the sheet, which becomes as large as it.
void fill(NSWindow* sheet, KSTItemEditorViewController* editor) {
    sheet.contentViewController = editor;
    [sheet setContentSize:editor.view.fittingSize]; // its frame may not be laid out yet
    sheet.initialFirstResponder = editor.titleField;
    sheet.defaultButtonCell = nil; // Return alone is bound to nothing
}

} // namespace

@implementation KSTSettingsViewController {
    std::unique_ptr<SettingsView> _state;
    KSTSettingsToolbarView* _toolbar;
    NSView* _placeholder;
    NSScrollView* _list;
    KSTSettingsListController* _tableController;
    __weak NSWindow* _sheet;
    std::optional<std::uint64_t> _shownRevision; // of the items
    std::optional<RedrawSchedule> _redraws;
}

- (instancetype)initWithSettingsView:(std::unique_ptr<SettingsView>)view {
    if ((self = [super initWithNibName:nil bundle:nil])) {
        _state = std::move(view);
        __weak KSTSettingsViewController* weakSelf = self;
        _redraws.emplace(_state->objectWillChange, [weakSelf] { [weakSelf updateNow]; });
    }
    return self;
}

- (void)dealloc {
    [self discardView];
}

- (void)discardView {
    _redraws.reset();
    [_toolbar removeFromSuperview];
    _toolbar = nil;
    [_tableController detach];
    _tableController = nil;
    _state.reset();
    NSWindow* const sheet = _sheet;
    [sheet.sheetParent endSheet:sheet];
}

// ---- the views

- (void)loadView {
    // As large as the window is made: a window takes the size of the view that it is given.
    const NSSize size = sizeFor(app_style::settingsContentSize);
    NSView* const root = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, size.width, size.height)];
    [self addContentTo:root];
    self.view = root;
    [self updateNow];
}

- (void)addContentTo:(NSView*)root {
    const NSSize size = root.bounds.size;
    const CGFloat toolbarY = size.height - KSTSettingsToolbarView.height;
    _toolbar = [[KSTSettingsToolbarView alloc]
        initWithFrame:NSMakeRect(0, toolbarY, size.width, KSTSettingsToolbarView.height)
                state:*_state];
    const CGFloat dividerY = toolbarY - settings_style::dividerHeight;
    KSTRoundedFillView* const divider = [[KSTRoundedFillView alloc]
        initWithFrame:NSMakeRect(0, dividerY, size.width, settings_style::dividerHeight)];
    for (NSView* view in @[ _toolbar, divider ]) {
        view.autoresizingMask = NSViewWidthSizable | NSViewMinYMargin;
        [root addSubview:view];
    }
    const NSRect content = NSMakeRect(0, 0, size.width, dividerY);
    _placeholder = [self makePlaceholder:content];
    _list = [self makeList:content];
    for (NSView* view in @[ _placeholder, _list ]) {
        view.autoresizingMask = NSViewWidthSizable | NSViewHeightSizable;
        [root addSubview:view];
    }
}

- (NSView*)makePlaceholder:(NSRect)frame {
    namespace placeholder = settings_style::empty_placeholder;
    KSTCenteredColumnView* const column = [[KSTCenteredColumnView alloc] initWithFrame:frame];
    [column addView:symbolView(placeholder::symbol) gapAbove:0];
    [column addView:lineLabel(textFor(placeholder::title), placeholder::titleStyle)
           gapAbove:placeholder::spacing];
    [column addView:centeredParagraph(textFor(placeholder::hint), placeholder::hintStyle,
                                      placeholder::hintMaximumWidth)
           gapAbove:placeholder::spacing];
    [column addView:prominentButton(textFor(placeholder::button), self, @selector(addFirstItem:))
           gapAbove:placeholder::spacing + placeholder::buttonTopPadding];
    return column;
}

- (NSScrollView*)makeList:(NSRect)frame {
    _tableController = [[KSTSettingsListController alloc] initWithState:*_state];
    NSScrollView* const scrollView = [[NSScrollView alloc] initWithFrame:frame];
    scrollView.hasVerticalScroller = YES;
    scrollView.autohidesScrollers = YES;
    scrollView.borderType = NSNoBorder;
    scrollView.documentView = _tableController.table;
    [_tableController.table sizeLastColumnToFit];
    return scrollView;
}

- (void)viewDidAppear {
    [super viewDidAppear];
    self.view.window.contentMinSize = sizeFor(settings_style::minimumSize);
    [self presentSheet];
}

// ---- drawing the state

- (void)updateNow {
    if (!_state || !_toolbar)
        return;
    [_toolbar updateNow];
    const std::uint64_t revision = _state->items().revision();
    if (std::exchange(_shownRevision, revision) != revision) {
        [_tableController reload];
        const BOOL isEmpty = _state->items().empty();
        _placeholder.hidden = !isEmpty;
        _list.hidden = isEmpty;
    } else {
        [_tableController refresh];
    }
    [_tableController showAddedRow];
    [self presentSheet];
    if (const auto announcement = _state->nextAnnouncement())
        announce(*announcement, self.view.window);
}

- (void)addFirstItem:(id)sender {
    (void)sender;
    if (_state)
        _state->addClicked();
}

// ---- sheets

- (void)presentSheet {
    if (!_state || !self.view.window)
        return;
    if (auto form = _state->nextSheet())
        [self presentForm:std::move(form)];
}

- (void)presentForm:(std::unique_ptr<AddEditItemView>)form {
    NSWindow* const sheet = makeSheet(textFor(form->header()));
    __weak NSWindow* weakSheet = sheet;
    form->dismiss = [weakSheet] {
        NSWindow* const shown = weakSheet;
        if (shown)
            [shown.sheetParent endSheet:shown];
    };
    fill(sheet, [[KSTItemEditorViewController alloc] initWithForm:std::move(form)]);
    _sheet = sheet;
    __weak KSTSettingsViewController* weakSelf = self;
    [self.view.window beginSheet:sheet
               completionHandler:^(NSModalResponse response) {
                   (void)response;
                   KSTSettingsViewController* const strongSelf = weakSelf;
                   if (strongSelf && strongSelf->_state)
                       strongSelf->_state->sheetClosed();
                   NSWindow* const closed = weakSheet;
                   // Its form may still be in the action that closed it.
                   DispatchMainQueue().async([closed] { [closed close]; });
               }];
}

@end
