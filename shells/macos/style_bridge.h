#pragma once
// The core's fonts, colour levels, sizes and texts as AppKit's. Colours follow the appearance of
// the view that they are used in. Main thread only.

#import <AppKit/AppKit.h>

#include "platform/geometry.h"
#include "views/style.h"

#include <string>
#include <string_view>

namespace kestrel::macos_shell {

NSFont* fontFor(const style::Font& font);
NSFontWeight weightFor(FontWeight weight);
NSColor* colorFor(style::ColorLevel level);
NSSize sizeFor(const Size& size);

/// A localizable text in the user's language, a verbatim one as it stands.
NSString* textFor(const style::Text& text);

/// Text that is not UTF-8 becomes the empty text.
NSString* toNSString(std::string_view utf8);

/// A half of a surrogate pair, which UTF-8 cannot hold, becomes a question mark.
std::string toUtf8(NSString* text);

} // namespace kestrel::macos_shell
