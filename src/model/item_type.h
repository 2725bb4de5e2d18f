#pragma once
// The kinds of launcher items. The raw string of a kind is at once what is stored and what the
// user reads, so it is never translated and never changes.

#include <array>
#include <optional>
#include <string_view>

namespace kestrel {

enum class ItemType {
    app,           ///< an application to open
    commandFile,   ///< a file to open with the application that the system assigns
    inlineCommand, ///< a shell command typed into a new terminal window
};

/// Whether items of a kind use their command; the others use their path.
constexpr bool usesCommand(ItemType type) { return type == ItemType::inlineCommand; }

/// All kinds in the order in which they are offered to the user.
inline constexpr std::array<ItemType, 3> allItemTypes{ItemType::app, ItemType::commandFile,
                                                      ItemType::inlineCommand};

/// "App", "Command File" or "Inline Command".
std::string_view rawValue(ItemType type);

/// The kind whose raw value is exactly `text` (case matters, nothing is trimmed); nothing for any
/// other text.
std::optional<ItemType> itemTypeFromRawValue(std::string_view text);

} // namespace kestrel

/// The hash of a kind is the hash of its raw value.
template <>
struct std::hash<kestrel::ItemType> {
    std::size_t operator()(kestrel::ItemType type) const noexcept {
        return std::hash<std::string_view>{}(kestrel::rawValue(type));
    }
};
