#include "shells/macos/views/item_row_cell_view.h"

#include "shells/macos/foundation/text.h"
#include "shells/macos/views/kit/accessibility.h"
#include "shells/macos/views/kit/rounded_fill_view.h"
#include "shells/macos/views/kit/style_bridge.h"
#include "shells/macos/views/kit/symbol_view.h"
#include "shells/macos/views/kit/text_label.h"
#include "views/accessible_texts.h"
#include "views/settings/item_row_style.h"

#include <algorithm>
#include <functional>

using namespace kestrel;
using namespace kestrel::macos_shell;
namespace row_style = kestrel::item_row_style;

namespace {

// Opacities of text and of what stands behind text, on the accent colour.
constexpr CGFloat secondaryOnSelection = 0.8;
constexpr CGFloat backgroundOnSelection = 0.2;

/// The system's colour for text in a selected row, with that opacity, in every appearance.
NSColor* onSelectionColor(CGFloat opacity) {
    return [NSColor colorWithName:nil
                  dynamicProvider:^NSColor*(NSAppearance* appearance) {
                      __block NSColor* color = NSColor.alternateSelectedControlTextColor;
                      [appearance performAsCurrentDrawingAppearance:^{
                          color = [color colorWithAlphaComponent:opacity];
                      }];
                      return color;
                  }];
}

/// Where the parts of a row of some width stand.
struct Geometry {
    NSRect icon;
    NSRect title;
    NSRect detail;
    NSRect actions;
    NSRect badge;
    CGFloat height; // of the row
};

struct RowColors {
    NSColor* title;
    NSColor* detail;
    NSColor* actions;
    NSColor* badge;
    NSColor* badgeText;
};

RowColors plainColors() {
    return {.title = colorFor(row_style::title.color),
            .detail = colorFor(row_style::detail.color),
            .actions = colorFor(row_style::actions.color),
            .badge = colorFor(row_style::badge::background),
            .badgeText = colorFor(row_style::badge::text.color)};
}

/// Readable on the accent colour.
RowColors selectedColors() {
    return {.title = onSelectionColor(1),
            .detail = onSelectionColor(secondaryOnSelection),
            .actions = onSelectionColor(1),
            .badge = onSelectionColor(backgroundOnSelection),
            .badgeText = onSelectionColor(1)};
}

/// Centres `size` upright in a row.
NSRect placed(CGFloat x, NSSize size, CGFloat rowHeight) {
    return NSMakeRect(x, centeredOrigin(size.height, rowHeight), size.width, size.height);
}

} // namespace

@interface KSTItemRowCellView ()
- (void)addParts;
- (NSPopUpButton*)makeActionsButton;
- (NSMenu*)makeActionsMenu;
- (Geometry)geometryForWidth:(CGFloat)width height:(CGFloat)height;
- (void)layOutParts;
- (void)updateActions;
- (void)updateColors;
- (void)editChosen:(id)sender;
- (void)deleteChosen:(id)sender;
@end

@implementation KSTItemRowCellView {
    ItemRow _row;
    KSTItemPictureView* _picture;
    NSTextField* _title;
    NSTextField* _detail;
    KSTRoundedFillView* _badge;
    NSTextField* _badgeText;
}

@synthesize underPointer = _underPointer;

- (instancetype)initWithFrame:(NSRect)frame {
    if ((self = [super initWithFrame:frame])) {
        [self addParts];
        [self updateColors];
        [self setAccessibilityElement:YES];
        [self setAccessibilityRole:NSAccessibilityCellRole];
    }
    return self;
}

- (void)addParts {
    _picture = [[KSTItemPictureView alloc] initWithFrame:NSZeroRect];
    _title = paragraphLabel(@"", row_style::title);
    _detail = lineLabel(@"", row_style::detail);
    _detail.maximumNumberOfLines = row_style::detailLineLimit;
    _detail.lineBreakMode = NSLineBreakByTruncatingMiddle;
    _actions = [self makeActionsButton];
    _badge = [[KSTRoundedFillView alloc] initWithFrame:NSZeroRect
                                                 color:colorFor(row_style::badge::background)
                                                radius:row_style::badge::radius];
    _badgeText = lineLabel(@"", row_style::badge::text);
    [_badge addSubview:_badgeText];
    for (NSView* part in @[ _picture, _title, _detail, _actions, _badge ])
        [self addSubview:part];
    self.textField = _title;
    self.imageView = _picture;
}

- (NSPopUpButton*)makeActionsButton {
    NSPopUpButton* const button = [[NSPopUpButton alloc] initWithFrame:NSZeroRect pullsDown:YES];
    button.bordered = NO;
    button.imagePosition = NSImageOnly;
    static_cast<NSPopUpButtonCell*>(button.cell).arrowPosition = NSPopUpNoArrow;
    button.menu = [self makeActionsMenu];
    [button sizeToFit];
    nameForAssistivePrograms(button, textFor(accessible_texts::rowActions));
    return button;
}

- (NSMenu*)makeActionsMenu {
    NSMenu* const menu = [[NSMenu alloc] initWithTitle:@""];
    // The first entry of a pull-down menu is the button's face.
    NSMenuItem* const face = [[NSMenuItem alloc] initWithTitle:@"" action:nil keyEquivalent:@""];
    face.image = symbolImage(row_style::actions);
    [menu addItem:face];
    NSMenuItem* const edit = [[NSMenuItem alloc] initWithTitle:textFor(row_style::editAction)
                                                        action:@selector(editChosen:)
                                                 keyEquivalent:@""];
    edit.target = self;
    [menu addItem:edit];
    [menu addItem:[NSMenuItem separatorItem]];
    NSMenuItem* const remove = [[NSMenuItem alloc] initWithTitle:textFor(row_style::deleteAction)
                                                          action:@selector(deleteChosen:)
                                                   keyEquivalent:@""];
    remove.target = self;
    NSDictionary<NSAttributedStringKey, id>* const attributes = @{
        NSForegroundColorAttributeName : colorFor(row_style::deleteColor),
        NSFontAttributeName : [NSFont menuFontOfSize:0]
    };
    remove.attributedTitle = [[NSAttributedString alloc] initWithString:remove.title
                                                             attributes:attributes];
    [menu addItem:remove];
    return menu;
}

- (void)showRow:(const ItemRow&)row icon:(NSImage*)icon {
    _row = row;
    _row.isHovered = self.underPointer;
    _picture.image = icon;
    _title.stringValue = toNSString(_row.item.title);
    _detail.stringValue = toNSString(_row.detail());
    _badgeText.stringValue = toNSString(_row.badge());
    [self updateActions];
    [self layOutParts];
}

- (void)updateActions {
    _actions.alphaValue = _row.actionsOpacity();
}

// ---- selection

// What the table says goes no further than this view's own parts, and colours that follow the
// appearance do not follow the selection.
- (void)setBackgroundStyle:(NSBackgroundStyle)backgroundStyle {
    [super setBackgroundStyle:backgroundStyle];
    [self updateColors];
}

- (void)updateColors {
    const RowColors colors =
        self.backgroundStyle == NSBackgroundStyleEmphasized ? selectedColors() : plainColors();
    _picture.contentTintColor = colors.title;
    _title.textColor = colors.title;
    _detail.textColor = colors.detail;
    _actions.contentTintColor = colors.actions;
    _badge.color = colors.badge;
    _badgeText.textColor = colors.badgeText;
}

// ---- the menu

- (void)editChosen:(id)sender {
    (void)sender;
    // A copy, because the action may change the list and with it this row.
    const auto onEdit = _row.onEdit;
    if (onEdit)
        onEdit();
}

- (void)deleteChosen:(id)sender {
    (void)sender;
    const auto onDelete = _row.onDelete;
    if (onDelete)
        onDelete();
}

// ---- layout

- (BOOL)isFlipped {
    return YES;
}

- (Geometry)geometryForWidth:(CGFloat)width height:(CGFloat)height {
    const style::Insets& padding = row_style::padding;
    const style::Insets& badgePadding = row_style::badge::padding;
    const CGFloat spacing = row_style::spacing;
    const NSSize icon = sizeFor(row_style::iconSize);
    const NSSize actions = _actions.frame.size;
    const NSSize badgeText = sizeOfLabel(_badgeText, CGFLOAT_MAX);
    const NSSize badge = NSMakeSize(badgePadding.left + badgeText.width + badgePadding.right,
                                    badgePadding.top + badgeText.height + badgePadding.bottom);

    // From both edges inwards; the texts take what is left, with the flexible space after them.
    const CGFloat textX = padding.left + icon.width + spacing;
    const CGFloat badgeX = width - padding.right - badge.width;
    const CGFloat actionsX = badgeX - spacing - actions.width;
    const CGFloat textWidth = std::max(actionsX - 2 * spacing - textX, 0.0);
    const CGFloat titleHeight = sizeOfLabel(_title, textWidth).height;
    const CGFloat detailHeight = sizeOfLabel(_detail, CGFLOAT_MAX).height;
    const CGFloat textHeight = titleHeight + row_style::lineSpacing + detailHeight;
    const CGFloat textY = centeredOrigin(textHeight, height);
    const CGFloat content = std::max({icon.height, textHeight, actions.height, badge.height});
    return {.icon = placed(padding.left, icon, height),
            .title = NSMakeRect(textX, textY, textWidth, titleHeight),
            .detail = NSMakeRect(textX, textY + titleHeight + row_style::lineSpacing, textWidth,
                                 detailHeight),
            .actions = placed(actionsX, actions, height),
            .badge = placed(badgeX, badge, height),
            .height = padding.top + content + padding.bottom};
}

- (CGFloat)heightForWidth:(CGFloat)width {
    return [self geometryForWidth:width height:0].height;
}

- (void)layOutParts {
    const NSSize size = self.bounds.size;
    const Geometry geometry = [self geometryForWidth:size.width height:size.height];
    _picture.frame = geometry.icon;
    _title.frame = geometry.title;
    _detail.frame = geometry.detail;
    const bool isCut = sizeOfLabel(_detail, CGFLOAT_MAX).width > geometry.detail.size.width;
    _detail.toolTip = isCut ? _detail.stringValue : nil;
    _actions.frame = geometry.actions;
    _badge.frame = geometry.badge;
    const style::Insets& inset = row_style::badge::padding;
    _badgeText.frame =
        NSMakeRect(inset.left, inset.bottom, geometry.badge.size.width - inset.left - inset.right,
                   geometry.badge.size.height - inset.top - inset.bottom);
}

- (void)layout {
    [super layout];
    [self layOutParts];
}

- (void)resizeSubviewsWithOldSize:(NSSize)oldSize {
    (void)oldSize;
    [self layOutParts];
}

// ---- the pointer

- (void)setUnderPointer:(BOOL)underPointer {
    _underPointer = underPointer;
    _row.isHovered = underPointer;
    [self updateActions];
}

// The row comes back for another item and in another place.
- (void)prepareForReuse {
    [super prepareForReuse];
    self.underPointer = NO;
    self.backgroundStyle = NSBackgroundStyleNormal;
}

// ---- assistive programs

// The type before the path, which may be long.
- (NSArray*)accessibilityChildrenInNavigationOrder {
    return NSAccessibilityUnignoredChildren(@[ _title, _badgeText, _detail, _actions ]);
}

@end
