#include "shells/macos/views/kit/text_label.h"

#include "shells/macos/views/kit/style_bridge.h"

#include <algorithm>
#include <cmath>

namespace kestrel::macos_shell {

namespace {

void apply(const style::TextStyle& style, NSTextField* label) {
    label.font = fontFor(style.font);
    label.textColor = colorFor(style.color);
    label.selectable = NO;
}

} // namespace

NSTextField* lineLabel(NSString* text, const style::TextStyle& style) {
    NSTextField* const label = [NSTextField labelWithString:text];
    apply(style, label);
    label.usesSingleLineMode = YES;
    label.lineBreakMode = NSLineBreakByTruncatingTail;
    [label sizeToFit];
    return label;
}

NSTextField* paragraphLabel(NSString* text, const style::TextStyle& style) {
    NSTextField* const label = [NSTextField wrappingLabelWithString:text];
    apply(style, label);
    return label;
}

NSTextField* centeredParagraph(NSString* text, const style::TextStyle& style,
                               CGFloat maximumWidth) {
    NSTextField* const label = paragraphLabel(text, style);
    label.alignment = NSTextAlignmentCenter;
    const CGFloat height = sizeOfLabel(label, maximumWidth).height;
    CGFloat tooNarrow = 0;
    CGFloat enough = maximumWidth;
    while (enough - tooNarrow > 1) {
        const CGFloat between = std::floor((tooNarrow + enough) / 2);
        (sizeOfLabel(label, between).height > height ? tooNarrow : enough) = between;
    }
    const NSSize size = sizeOfLabel(label, enough);
    label.frame = NSMakeRect(0, 0, size.width, size.height);
    return label;
}

NSSize sizeOfLabel(NSTextField* label, CGFloat maximumWidth) {
    const NSRect room = NSMakeRect(0, 0, std::max(maximumWidth, 0.0), CGFLOAT_MAX);
    const NSSize size = [label.cell cellSizeForBounds:room];
    return NSMakeSize(std::min(std::ceil(size.width), maximumWidth), std::ceil(size.height));
}

CGFloat centeredOrigin(CGFloat length, CGFloat available) {
    return std::floor((available - length) / 2);
}

} // namespace kestrel::macos_shell
