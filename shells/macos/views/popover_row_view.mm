#include "shells/macos/views/popover_row_view.h"

#include "shells/macos/foundation/text.h"
#include "shells/macos/views/kit/accessibility.h"
#include "shells/macos/views/kit/rounded_fill_view.h"
#include "shells/macos/views/kit/style_bridge.h"
#include "shells/macos/views/kit/symbol_view.h"
#include "shells/macos/views/kit/text_label.h"
#include "views/popover/menu_popover_style.h"

#include <functional>

using namespace kestrel;
using namespace kestrel::macos_shell;
namespace row_style = kestrel::menu_popover_style::row;

@interface KSTPopoverRowView ()
- (void)addParts;
- (void)layOutParts;
- (void)tap;
@end

@implementation KSTPopoverRowView {
    std::function<void()> _onTap;
    KSTRoundedFillView* _highlight;
    KSTItemPictureView* _picture;
    NSTextField* _title;
}

@synthesize underPointer = _underPointer;

- (instancetype)initWithFrame:(NSRect)frame {
    if ((self = [super initWithFrame:frame])) {
        [self addParts];
        [self layOutParts];
        [self setAccessibilityElement:YES];
        [self setAccessibilityRole:NSAccessibilityButtonRole];
    }
    return self;
}

- (void)addParts {
    // The opacity is the view's: a colour with another opacity may no longer follow the appearance.
    _highlight = [[KSTRoundedFillView alloc] initWithFrame:NSZeroRect
                                                     color:colorFor(row_style::title.color)
                                                    radius:row_style::highlightRadius];
    _highlight.alphaValue = row_style::highlightOpacity;
    _highlight.hidden = YES;
    _picture = [[KSTItemPictureView alloc] initWithFrame:NSZeroRect];
    _title = lineLabel(@"", row_style::title);
    _title.maximumNumberOfLines = row_style::titleLineLimit;
    hideFromAssistivePrograms(_title);
    for (NSView* part in @[ _highlight, _picture, _title ])
        [self addSubview:part];
}

- (void)showRow:(const ItemRowView&)row icon:(NSImage*)icon {
    _onTap = row.onTap;
    _title.stringValue = toNSString(row.item.title);
    _picture.image = icon;
    self.highlighted = row.isHovered;
    [self setAccessibilityLabel:_title.stringValue];
    [self layOutParts];
}

- (void)setHighlighted:(BOOL)highlighted {
    _highlighted = highlighted;
    _highlight.hidden = !highlighted;
}

- (BOOL)isFlipped {
    return YES;
}

- (void)layOutParts {
    const NSSize size = self.bounds.size;
    const style::Insets& inset = row_style::highlightInsets;
    _highlight.frame = NSMakeRect(inset.left, inset.top, size.width - inset.left - inset.right,
                                  size.height - inset.top - inset.bottom);
    const NSSize icon = sizeFor(row_style::iconSize);
    _picture.frame = NSMakeRect(row_style::padding.left, centeredOrigin(icon.height, size.height),
                                icon.width, icon.height);
    const CGFloat left = row_style::padding.left + icon.width + row_style::spacing;
    const CGFloat width = size.width - row_style::padding.right - left;
    const NSSize title = sizeOfLabel(_title, CGFLOAT_MAX);
    _title.frame = NSMakeRect(left, centeredOrigin(title.height, size.height), width, title.height);
    self.toolTip = title.width > width ? _title.stringValue : nil;
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

- (NSView*)hitTest:(NSPoint)point {
    return [super hitTest:point] ? self : nil;
}

- (BOOL)acceptsFirstMouse:(NSEvent*)event {
    (void)event;
    return YES;
}

// Taken, so that the button that goes up is reported here as well.
- (void)mouseDown:(NSEvent*)event {
    (void)event;
}

- (void)mouseUp:(NSEvent*)event {
    const NSPoint point = [self convertPoint:event.locationInWindow fromView:nil];
    if (NSPointInRect(point, self.bounds))
        [self tap];
}

- (void)setUnderPointer:(BOOL)underPointer {
    if (_underPointer == underPointer)
        return;
    _underPointer = underPointer;
    if (underPointer)
        [self.delegate pointerEnteredRow:self];
    else
        [self.delegate pointerLeftRow:self];
}

- (BOOL)accessibilityPerformPress {
    [self tap];
    return YES;
}

- (void)tap {
    // A copy, because the action may change the list and with it this row.
    const auto onTap = _onTap;
    if (onTap)
        onTap();
}

@end
