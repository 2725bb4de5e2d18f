#include "shells/macos/views/kit/style_bridge.h"

#include "shells/macos/foundation/text.h"

namespace kestrel::macos_shell {

NSFontWeight weightFor(FontWeight weight) {
    switch (weight) {
    case FontWeight::regular:
        return NSFontWeightRegular;
    case FontWeight::medium:
        return NSFontWeightMedium;
    case FontWeight::semibold:
        return NSFontWeightSemibold;
    case FontWeight::bold:
        break;
    }
    return NSFontWeightBold;
}

NSFont* fontFor(const style::Font& font) {
    const NSFontWeight weight = weightFor(font.weight);
    if (font.design == style::Font::Design::monospaced)
        return [NSFont monospacedSystemFontOfSize:font.size weight:weight];
    return [NSFont systemFontOfSize:font.size weight:weight];
}

NSColor* colorFor(style::ColorLevel level) {
    switch (level) {
    case style::ColorLevel::primary:
        return NSColor.labelColor;
    case style::ColorLevel::secondary:
        return NSColor.secondaryLabelColor;
    case style::ColorLevel::tertiary:
    case style::ColorLevel::tertiaryLabel:
        return NSColor.tertiaryLabelColor;
    case style::ColorLevel::quaternary:
        return NSColor.quaternaryLabelColor;
    case style::ColorLevel::windowBackground:
        return NSColor.windowBackgroundColor;
    case style::ColorLevel::accent:
        return NSColor.controlAccentColor;
    case style::ColorLevel::destructive:
        break;
    }
    return NSColor.systemRedColor;
}

NSSize sizeFor(const Size& size) { return NSMakeSize(size.width, size.height); }

NSString* textFor(const style::Text& text) {
    NSString* const english = toNSString(text.english);
    if (text.lookup == style::Text::Lookup::verbatim)
        return english;
    return [NSBundle.mainBundle localizedStringForKey:english value:english table:nil];
}

} // namespace kestrel::macos_shell
