#pragma once
// The core's fonts, colour levels, sizes and texts as AppKit's. Colours follow the appearance of
// the view that they are used in. Main thread only.

#import <AppKit/AppKit.h>

#include "platform/geometry.h"
#include "views/style.h"

namespace kestrel::macos_shell {

NSFont* fontFor(const style::Font& font);
NSFontWeight weightFor(FontWeight weight);
NSColor* colorFor(style::ColorLevel level);
NSSize sizeFor(const Size& size);

/// A localizable text in the user's language, a verbatim one as it stands.
NSString* textFor(const style::Text& text);

} // namespace kestrel::macos_shell
