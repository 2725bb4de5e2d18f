#pragma once
// Which icon stands for an item. The decision is here, the drawing is the shell's.

#include "model/launcher_item.h"
#include "platform/terminal.h"

#include <string>
#include <string_view>
#include <variant>

namespace kestrel {

/// The system's icon for the file at `path`, taken exactly as given. A path that names nothing has
/// the system's generic icon.
struct FileIcon {
    std::string path;
    friend bool operator==(const FileIcon&, const FileIcon&) = default;
};

/// The system symbol `name`, without an accessibility description; an empty image where the
/// system has no such symbol.
struct SymbolIcon {
    std::string_view name;
    friend bool operator==(const SymbolIcon&, const SymbolIcon&) = default;
};

using ItemIcon = std::variant<FileIcon, SymbolIcon>;

/// The icon for `item`; decided at every call.
ItemIcon iconFor(const LauncherItem& item, Terminal& terminal);

} // namespace kestrel
