#include "shells/macos/views/kit/announcer.h"

#include "shells/macos/foundation/text.h"
#include "shells/macos/views/kit/style_bridge.h"

#include <string>

namespace kestrel::macos_shell {

namespace {

NSString* textFor(const Announcement::Argument& argument) {
    if (const auto* const number = std::get_if<std::size_t>(&argument))
        return [NSNumberFormatter localizedStringFromNumber:@(*number)
                                                numberStyle:NSNumberFormatterDecimalStyle];
    return toNSString(std::get<std::string>(argument));
}

} // namespace

// In one pass: a title may hold a "%1" of its own.
NSString* textFor(const Announcement& announcement) {
    NSArray<NSString*>* const parts = [textFor(announcement.text) componentsSeparatedByString:@"%"];
    NSMutableString* const text = [parts.firstObject mutableCopy];
    for (NSUInteger i = 1; i < parts.count; ++i) {
        NSString* const part = parts[i];
        const unichar place = part.length > 0 ? [part characterAtIndex:0] : u'\0';
        const auto index = static_cast<std::size_t>(place) - u'1';
        if (index < announcement.arguments.size()) {
            [text appendString:textFor(announcement.arguments[index])];
            [text appendString:[part substringFromIndex:1]];
        } else {
            [text appendFormat:@"%%%@", part];
        }
    }
    return text;
}

void announce(const Announcement& announcement, NSWindow* window) {
    if (!window)
        return;
    NSDictionary* const userInfo = @{
        NSAccessibilityAnnouncementKey : textFor(announcement),
        NSAccessibilityPriorityKey : @(NSAccessibilityPriorityMedium)
    };
    NSAccessibilityPostNotificationWithUserInfo(
        window, NSAccessibilityAnnouncementRequestedNotification, userInfo);
}

} // namespace kestrel::macos_shell
