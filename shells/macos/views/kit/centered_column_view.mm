#include "shells/macos/views/kit/centered_column_view.h"

#include "shells/macos/views/kit/text_label.h"

#include <vector>

using kestrel::macos_shell::centeredOrigin;

@interface KSTCenteredColumnView ()
- (void)layOutColumn;
@end

@implementation KSTCenteredColumnView {
    std::vector<CGFloat> _gaps; // above each subview
}

- (void)addView:(NSView*)view gapAbove:(CGFloat)gap {
    _gaps.push_back(_gaps.empty() ? 0 : gap);
    [self addSubview:view];
    [self layOutColumn];
}

- (BOOL)isFlipped {
    return YES;
}

- (void)layOutColumn {
    CGFloat height = 0;
    for (NSView* view in self.subviews)
        height += view.frame.size.height;
    for (const CGFloat gap : _gaps)
        height += gap;

    CGFloat y = centeredOrigin(height, self.bounds.size.height);
    auto gap = _gaps.begin();
    for (NSView* view in self.subviews) {
        y += *gap++;
        const CGFloat x = centeredOrigin(view.frame.size.width, self.bounds.size.width);
        [view setFrameOrigin:NSMakePoint(x, y)];
        y += view.frame.size.height;
    }
}

- (void)layout {
    [super layout];
    [self layOutColumn];
}

- (void)resizeSubviewsWithOldSize:(NSSize)oldSize {
    (void)oldSize;
    [self layOutColumn];
}

@end
