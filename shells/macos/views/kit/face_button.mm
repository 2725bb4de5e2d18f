#include "shells/macos/views/kit/face_button.h"

#include "shells/macos/views/kit/accessibility.h"
#include "shells/macos/views/kit/style_bridge.h"
#include "shells/macos/views/kit/symbol_view.h"
#include "shells/macos/views/kit/text_label.h"

#include <algorithm>

using namespace kestrel;
using namespace kestrel::macos_shell;

namespace {

constexpr CGFloat ringMargin = 4; // points around the face
constexpr CGFloat pressedOpacity = 0.5;

} // namespace

@interface KSTFaceButton ()
- (void)showPressed:(BOOL)isPressed;
- (NSSize)faceSize;
- (void)layOutFace;
@end

/// Tells its button when it is pressed: with the pointer, by a key or by an assistive program.
@interface KSTFaceButtonCell : NSButtonCell
@end

@implementation KSTFaceButtonCell

- (void)highlight:(BOOL)flag withFrame:(NSRect)cellFrame inView:(NSView*)controlView {
    [super highlight:flag withFrame:cellFrame inView:controlView];
    [static_cast<KSTFaceButton*>(self.controlView) showPressed:flag];
}

// Not every way to press a button is documented to come through the method above.
- (void)setHighlighted:(BOOL)flag {
    [super setHighlighted:flag];
    [static_cast<KSTFaceButton*>(self.controlView) showPressed:flag];
}

@end

@implementation KSTFaceButton {
    ButtonFace::Axis _axis;
    CGFloat _spacing;
}

+ (Class)cellClass {
    return KSTFaceButtonCell.class;
}

- (instancetype)initWithFace:(const ButtonFace&)face target:(id)target action:(SEL)action {
    if ((self = [super initWithFrame:NSZeroRect])) {
        _axis = face.axis;
        _spacing = face.spacing;
        _symbol = symbolView(face.symbol);
        _label = lineLabel(textFor(face.title), face.titleStyle);
        self.title = @"";
        self.bordered = NO;
        self.imagePosition = NSNoImage;
        self.target = target;
        self.action = action;
        nameForAssistivePrograms(self, _label.stringValue);
        hideFromAssistivePrograms(_label);
        [self addSubview:_symbol];
        [self addSubview:_label];
        const NSSize size = [self faceSize];
        self.frame = NSMakeRect(0, 0, size.width, size.height);
        [self layOutFace];
    }
    return self;
}

- (void)setFaceColor:(style::ColorLevel)level {
    self.symbol.contentTintColor = colorFor(level);
    self.label.textColor = colorFor(level);
}

// As the system dims the picture and the title of a button without a border.
- (void)showPressed:(BOOL)isPressed {
    const CGFloat opacity = isPressed && self.enabled ? pressedOpacity : 1;
    self.symbol.alphaValue = opacity;
    self.label.alphaValue = opacity;
}

- (BOOL)isFlipped {
    return YES;
}

// The face is this view's, not the cell's.
- (void)drawRect:(NSRect)dirtyRect {
    (void)dirtyRect;
}

- (NSView*)hitTest:(NSPoint)point {
    return [super hitTest:point] ? self : nil;
}

- (BOOL)acceptsFirstMouse:(NSEvent*)event {
    (void)event;
    return YES;
}

// ---- the keyboard

- (BOOL)becomeFirstResponder {
    const BOOL isFirst = [super becomeFirstResponder];
    if (isFirst && self.onFocusChange)
        self.onFocusChange(YES);
    return isFirst;
}

- (BOOL)resignFirstResponder {
    const BOOL isLast = [super resignFirstResponder];
    if (isLast && self.onFocusChange)
        self.onFocusChange(NO);
    return isLast;
}

// Space is the system's own.
- (void)keyDown:(NSEvent*)event {
    NSString* const characters = event.charactersIgnoringModifiers;
    const unichar character = characters.length > 0 ? [characters characterAtIndex:0] : u'\0';
    if (character == NSCarriageReturnCharacter || character == NSEnterCharacter)
        [self performClick:self];
    else
        [super keyDown:event];
}

// The cell, which draws nothing, has no shape for the system's ring.
- (NSRect)focusRingMaskBounds {
    const NSRect face = NSUnionRect(self.symbol.frame, self.label.frame);
    return NSIntersectionRect(NSInsetRect(face, -ringMargin, -ringMargin), self.bounds);
}

- (void)drawFocusRingMask {
    [[NSBezierPath bezierPathWithRoundedRect:self.focusRingMaskBounds
                                     xRadius:ringMargin
                                     yRadius:ringMargin] fill];
}

- (NSSize)faceSize {
    const NSSize symbol = self.symbol.frame.size;
    const NSSize label = self.label.frame.size;
    if (_axis == ButtonFace::Axis::horizontal)
        return NSMakeSize(symbol.width + _spacing + label.width,
                          std::max(symbol.height, label.height));
    return NSMakeSize(std::max(symbol.width, label.width), symbol.height + _spacing + label.height);
}

- (void)layOutFace {
    const NSSize size = self.bounds.size;
    const NSSize face = [self faceSize];
    const NSSize symbol = self.symbol.frame.size;
    const NSSize label = self.label.frame.size;
    const CGFloat left = centeredOrigin(face.width, size.width);
    const CGFloat top = centeredOrigin(face.height, size.height);
    if (_axis == ButtonFace::Axis::horizontal) {
        [self.symbol setFrameOrigin:NSMakePoint(left, centeredOrigin(symbol.height, size.height))];
        [self.label setFrameOrigin:NSMakePoint(left + symbol.width + _spacing,
                                               centeredOrigin(label.height, size.height))];
    } else {
        [self.symbol setFrameOrigin:NSMakePoint(centeredOrigin(symbol.width, size.width), top)];
        [self.label setFrameOrigin:NSMakePoint(centeredOrigin(label.width, size.width),
                                               top + symbol.height + _spacing)];
    }
}

- (void)layout {
    [super layout];
    [self layOutFace];
}

- (void)resizeSubviewsWithOldSize:(NSSize)oldSize {
    (void)oldSize;
    [self layOutFace];
}

@end

namespace kestrel::macos_shell {

NSButton* prominentButton(NSString* title, id target, SEL action) {
    NSButton* const button = [NSButton buttonWithTitle:title target:target action:action];
    button.bezelStyle = NSBezelStyleRounded;
    button.bezelColor = colorFor(style::ColorLevel::accent);
    [button sizeToFit];
    return button;
}

} // namespace kestrel::macos_shell
