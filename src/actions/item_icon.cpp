#include "actions/item_icon.h"

namespace kestrel {

namespace {

ItemIcon iconOfPath(const std::optional<std::string>& path, std::string_view symbolWithoutPath) {
    if (path && !path->empty())
        return FileIcon{*path};
    return SymbolIcon{symbolWithoutPath};
}

} // namespace

ItemIcon iconFor(const LauncherItem& item, Terminal& terminal) {
    switch (item.type) {
    case ItemType::app:
        return iconOfPath(item.path, "app.dashed");
    case ItemType::commandFile:
        return iconOfPath(item.path, "doc.text");
    case ItemType::inlineCommand:
        break;
    }
    // All inline commands share the terminal's icon, whatever their texts.
    if (auto application = terminal.applicationPath())
        return FileIcon{*std::move(application)};
    return SymbolIcon{"terminal"};
}

} // namespace kestrel
