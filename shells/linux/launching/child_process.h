#pragma once
// How every child of the program starts: in a session of its own, with default signals, standard
// streams on /dev/null and none of our descriptors. So it outlives us and our terminal, and since
// GLib starts it through a short-lived intermediate process that it collects, it leaves no zombie.

#include "shells/linux/launching/activation.h"
#include "shells/linux/posix/descriptor.h"

#include <string>
#include <vector>

namespace kestrel::linux_shell {

/// /dev/null, for reading and writing.
Descriptor openNullDevice();

/// A GSpawnChildSetupFunc. `folder` is the working folder as a C string, in whose place "/" comes
/// where it cannot be entered, or null to keep the one that GLib has set. Runs between fork and
/// exec: async-signal-safe calls only.
void prepareChild(void* folder);

/// Starts `arguments[0]`, an absolute path, with all of `arguments` as its argument vector, in the
/// home folder, with `activation` in its environment. False when it cannot be started.
bool spawnDetached(const std::vector<std::string>& arguments, const Activation& activation);

} // namespace kestrel::linux_shell
