#pragma once
// Launching what a desktop entry describes.

#include "shells/linux/launching/activation.h"

#include <optional>
#include <string>
#include <vector>

namespace kestrel::linux_shell {

/// Whether the file at `path` is one to be read as a desktop entry: a regular file, since a pipe
/// would wait for its writer, and not of a size that fills the memory.
bool mayBeDesktopEntry(const std::string& path);

/// Launches the entry in the file at the absolute path `path`, handing it `uri` when there is one
/// and `activation` in its environment or in the call over the bus.
/// An entry that needs a terminal gets the user's own; one that is activated over the session bus
/// is, and falls back to its command line when the bus knows no such service or cannot start it.
/// An entry that names no working folder starts in the home folder. Nothing happens for anything
/// that is no launchable entry; whether it is hidden from menus does not matter, since the user
/// chose this file.
///
/// For the launch worker: it blocks on the disk and the bus, and the fallback arrives in the
/// thread-default main context.
void launchDesktopEntry(const std::string& path, const std::optional<std::string>& uri,
                        const Activation& activation);

/// `exec` with every "%k" in it replaced by the quoted `path`, as GLib does for an entry that it
/// has read from a file itself. "%%" stays.
std::string expandEntryLocation(const std::string& exec, const std::string& path);

/// The command line of an entry that runs `exec` after the words of `prefix`: each quoted for
/// GLib's reader, with "%" doubled so that it begins no field code.
std::string execBehind(const std::vector<std::string>& prefix, const std::string& exec);

} // namespace kestrel::linux_shell
