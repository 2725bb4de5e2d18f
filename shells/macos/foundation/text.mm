#include "shells/macos/foundation/text.h"

namespace kestrel::macos_shell {

NSString* toNSString(std::string_view utf8) {
    NSString* const text = [[NSString alloc] initWithBytes:utf8.data()
                                                    length:utf8.size()
                                                  encoding:NSUTF8StringEncoding];
    return text ? text : @"";
}

std::string toUtf8(NSString* text) {
    NSData* data = [text dataUsingEncoding:NSUTF8StringEncoding];
    if (!data)
        data = [text dataUsingEncoding:NSUTF8StringEncoding allowLossyConversion:YES];
    return toBytes(data).value_or("");
}

NSData* toNSData(std::string_view bytes) {
    return [NSData dataWithBytes:bytes.data() length:bytes.size()];
}

std::optional<std::string> toBytes(NSData* data) {
    if (!data)
        return std::nullopt;
    if (data.length == 0)
        return std::string();
    return std::string(static_cast<const char*>(data.bytes), data.length);
}

NSURL* fileURL(std::string_view path) {
    NSString* const text = toNSString(path);
    return text.length > 0 ? [NSURL fileURLWithPath:text] : nil;
}

} // namespace kestrel::macos_shell
