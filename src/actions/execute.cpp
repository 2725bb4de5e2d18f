#include "actions/execute.h"

namespace kestrel {

void execute(const LauncherItem& item, Workspace& workspace, Terminal& terminal) {
    const auto& text = usesCommand(item.type) ? item.command : item.path;
    if (!text || text->empty())
        return;
    switch (item.type) {
    case ItemType::app:
        workspace.openApplication(*text);
        break;
    case ItemType::commandFile:
        workspace.openFile(*text);
        break;
    case ItemType::inlineCommand:
        terminal.runInNewWindow(*text);
        break;
    }
}

} // namespace kestrel
