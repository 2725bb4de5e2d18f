#pragma once
// Turns an item into an action on the user's machine.

#include "model/launcher_item.h"
#include "platform/terminal.h"
#include "platform/workspace.h"

namespace kestrel {

/// Launches `item` and returns at once; nothing is waited for and nothing reported. The text that
/// the item's kind uses goes out exactly as stored; where it is absent or empty nothing happens.
void execute(const LauncherItem& item, Workspace& workspace, Terminal& terminal);

} // namespace kestrel
