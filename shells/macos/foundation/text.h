#pragma once
// Texts and bytes on their way between the core and Foundation. Any thread.

#import <Foundation/Foundation.h>

#include <optional>
#include <string>
#include <string_view>

NS_ASSUME_NONNULL_BEGIN

namespace kestrel::macos_shell {

/// Text that is not UTF-8 becomes the empty text.
NSString* toNSString(std::string_view utf8);

/// A half of a surrogate pair, which UTF-8 cannot hold, becomes a question mark.
std::string toUtf8(NSString* text);

NSData* toNSData(std::string_view bytes);

/// Nothing for nil; data of no bytes is the empty string.
std::optional<std::string> toBytes(NSData* _Nullable data);

/// The URL of the file at `path`, taken as it stands; nil for the empty path, which Foundation
/// would take for the working directory.
NSURL* _Nullable fileURL(std::string_view path);

} // namespace kestrel::macos_shell

NS_ASSUME_NONNULL_END
