#pragma once
// System symbols and item pictures as views.

#import <AppKit/AppKit.h>

#include "views/style.h"

/// Shows a picture stretched over its whole frame, smoothly. A template picture takes the colour
/// of text. It says nothing to assistive programs: the text beside it does.
@interface KSTItemPictureView : NSImageView
@end

namespace kestrel::macos_shell {

/// The symbol in its font's size and weight; an empty picture where the system has no such symbol.
NSImage* symbolImage(const style::SymbolStyle& symbol);

/// The symbol in its colour, as large as it is. It says nothing to assistive programs: the text
/// beside it does.
NSImageView* symbolView(const style::SymbolStyle& symbol);

} // namespace kestrel::macos_shell
