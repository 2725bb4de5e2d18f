#include "shells/macos/views/popover_list_view.h"

#include "shells/macos/views/kit/style_bridge.h"
#include "views/accessible_texts.h"
#include "views/popover/menu_popover_style.h"

#include <algorithm>

namespace popover_style = kestrel::menu_popover_style;

@implementation KSTPopoverListView {
    NSMutableArray<KSTPopoverRowView*>* _rows;
}

- (instancetype)initWithFrame:(NSRect)frame {
    if ((self = [super initWithFrame:frame])) {
        _rows = [NSMutableArray array];
        self.autoresizingMask = NSViewWidthSizable;
        [self setAccessibilityElement:YES];
        [self setAccessibilityRole:NSAccessibilityListRole];
        [self setAccessibilityLabel:kestrel::macos_shell::textFor(
                                        kestrel::accessible_texts::itemList)];
    }
    return self;
}

- (NSArray<KSTPopoverRowView*>*)rows {
    return _rows;
}

- (BOOL)isFlipped {
    return YES;
}

- (void)setRowCount:(NSUInteger)count delegate:(id<KSTPopoverRowViewDelegate>)delegate {
    while (_rows.count > count) {
        [_rows.lastObject removeFromSuperview];
        [_rows removeLastObject];
    }
    const kestrel::style::Insets& padding = popover_style::listPadding;
    const CGFloat width = self.bounds.size.width;
    while (_rows.count < count) {
        const CGFloat top =
            padding.top + static_cast<CGFloat>(_rows.count) * popover_style::rowHeight;
        KSTPopoverRowView* const row = [[KSTPopoverRowView alloc]
            initWithFrame:NSMakeRect(padding.left, top, width - padding.left - padding.right,
                                     popover_style::rowHeight)];
        row.autoresizingMask = NSViewWidthSizable;
        row.position = _rows.count;
        row.delegate = delegate;
        [_rows addObject:row];
        [self addSubview:row];
    }
    const CGFloat height = static_cast<CGFloat>(count) * popover_style::rowHeight;
    [self setFrameSize:NSMakeSize(width, padding.top + height + padding.bottom)];
}

- (void)scrollToRow:(NSUInteger)position {
    if (position >= _rows.count)
        return;
    KSTPopoverRowView* const row = _rows[position];
    [self scrollRectToVisible:NSInsetRect(row.frame, 0, -popover_style::listPadding.top)];
}

- (KSTPopoverRowView*)hoverRowAtPoint:(NSPoint)point {
    const CGFloat y = point.y - popover_style::listPadding.top;
    const auto position = static_cast<NSUInteger>(std::max(y, 0.0) / popover_style::rowHeight);
    if (position >= _rows.count)
        return nil;
    KSTPopoverRowView* const row = _rows[position];
    return NSPointInRect(point, row.frame) ? row : nil;
}

@end
