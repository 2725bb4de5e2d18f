// What GNUstep lacks of controls and of the windows of forms: a form's size, how controls share a
// row, the default button. Priorities are kept, nothing is laid out.
#import "presets.h"

@implementation NSWindow (MacosCheckTermination)
- (void)setPreventsApplicationTerminationWhenModal:(BOOL)flag {
    setState(self, @selector(preventsApplicationTerminationWhenModal), @(flag));
}
/// Unless it is told otherwise, as on a Mac.
- (BOOL)preventsApplicationTerminationWhenModal {
    NSNumber* flag = stateOf(self, @selector(preventsApplicationTerminationWhenModal));
    return flag == nil || flag.boolValue;
}
@end

@implementation NSStackView (MacosCheckFitting)
/// For a column whose views are laid out by nobody: as wide as the widest, as high as all that are
/// not hidden, with the insets and without the gaps.
- (NSSize)fittingSize {
    NSSize size = NSZeroSize;
    for (NSView* view in self.arrangedSubviews) {
        if (view.hidden)
            continue;
        size.width = MAX(size.width, view.frame.size.width);
        size.height += view.frame.size.height;
    }
    const NSEdgeInsets insets = self.edgeInsets;
    size.width += insets.left + insets.right;
    size.height += insets.top + insets.bottom;
    return size;
}
@end

@implementation NSControl (MacosCheckHugging)
- (void)setContentHuggingPriority:(NSLayoutPriority)priority
                   forOrientation:(NSLayoutConstraintOrientation)orientation {
    if (orientation == NSLayoutConstraintOrientationHorizontal)
        setState(self, @selector(contentHuggingPriorityForOrientation:), @(priority));
}
/// Neither low nor high unless it was said: a Mac's own values differ by class.
- (NSLayoutPriority)contentHuggingPriorityForOrientation:
    (NSLayoutConstraintOrientation)orientation {
    NSNumber* priority = stateOf(self, @selector(contentHuggingPriorityForOrientation:));
    return priority != nil && orientation == NSLayoutConstraintOrientationHorizontal
               ? priority.floatValue
               : 500;
}
@end

/// A button whose key is Return becomes the default button of the window that it comes into,
/// whatever its modifiers are: a Mac may look at them, so that code has to do without.
@implementation NSButton (MacosCheckDefaultButton)
- (void)setKeyEquivalent:(NSString*)key {
    recording::add(@"NSButton setKeyEquivalent: %@ %lu", key,
                   static_cast<unsigned long>(self.keyEquivalentModifierMask));
    [(NSButtonCell*)self.cell setKeyEquivalent:key];
}
- (void)viewDidMoveToWindow {
    [super viewDidMoveToWindow];
    if ([self.keyEquivalent isEqualToString:@"\r"])
        self.window.defaultButtonCell = (NSButtonCell*)self.cell;
}
@end
