#pragma once
// Buttons: the plain one whose face is a symbol and a text, and the prominent one.

#import <AppKit/AppKit.h>

#include "views/style.h"

namespace kestrel::macos_shell {

struct ButtonFace {
    enum class Axis { horizontal, vertical };

    style::SymbolStyle symbol;
    style::Text title;
    style::TextStyle titleStyle;
    Axis axis = Axis::horizontal;
    double spacing = 0; ///< points between the symbol and the title
};

/// A filled button in the accent colour.
NSButton* prominentButton(NSString* title, id target, SEL action);

} // namespace kestrel::macos_shell

/// Has neither a bezel nor a background; its whole frame takes clicks, the face is centred in it
/// and dimmed while the button is pressed. While it has the keyboard focus, Space and Return press
/// it.
@interface KSTFaceButton : NSButton

/// As large as its face.
- (instancetype)initWithFace:(const kestrel::macos_shell::ButtonFace&)face
                      target:(id)target
                      action:(SEL)action NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithFrame:(NSRect)frame NS_UNAVAILABLE;
- (instancetype)initWithCoder:(NSCoder*)coder NS_UNAVAILABLE;

/// The colour of the symbol and of the title.
- (void)setFaceColor:(kestrel::style::ColorLevel)level;

/// Called with whether the button has the keyboard focus, when that changes.
@property(nonatomic, copy) void (^onFocusChange)(BOOL hasFocus);

@property(nonatomic, readonly) NSImageView* symbol;
@property(nonatomic, readonly) NSTextField* label;

@end
