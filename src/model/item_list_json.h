#pragma once
// The stored form of the list: one compact JSON array (RFC 8259, UTF-8) of item objects. The same
// bytes stand in the local and in the cloud store.

#include "model/launcher_item.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel {

/// The longest stored form of a list, in bytes. A longer one is neither written nor read, so a
/// store that takes this much gives back every list that it was given.
inline constexpr std::size_t maximumListSize = std::size_t{64} * 1024 * 1024;

/// Writes the list without any white space, keys in the order id, title, type, path, command;
/// absent texts have no key; every '/' is written as "\/". Nothing when a text is not valid UTF-8
/// or the whole would be longer than `maximumListSize`. What is written is read again as the same
/// list.
std::optional<std::string> encodeItems(std::span<const LauncherItem> items);

/// One item as a JSON object, by the same rules.
std::optional<std::string> encodeItem(const LauncherItem& item);

/// Reads a whole list or nothing: one wrong element, malformed JSON, invalid UTF-8, the escape of a
/// lone surrogate, nesting beyond some 1,000 levels, another top level than an array or more bytes
/// than `maximumListSize` fails the decode. Unknown keys are ignored, whatever their value; of a
/// key that stands twice the last one counts; one UTF-8 byte-order mark at the front is skipped.
std::optional<std::vector<LauncherItem>> decodeItems(std::string_view json);

/// One item from the text of a JSON object, by the same rules.
std::optional<LauncherItem> decodeItem(std::string_view json);

} // namespace kestrel
