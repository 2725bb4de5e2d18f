#pragma once
// Where the program keeps what it stores: `kestrel` in the user's data folder, by the rules of the
// XDG base directories.

#include "shells/linux/posix/file_operations.h"

#include <optional>
#include <string>

namespace kestrel::linux_shell {

/// What the folder is found by. A path that is empty or relative counts as absent.
struct DataDirectoryInputs {
    std::string xdgDataHome;
    std::string home;
};

/// `$XDG_DATA_HOME/kestrel`, else `.local/share/kestrel` in the home folder, without a slash at
/// the end; nothing when no home is known either. It is always absolute: the current folder never
/// plays a part.
std::optional<std::string> dataDirectoryPath(const DataDirectoryInputs& inputs);

/// The same, for the environment and the user of this process. Nothing is made or looked at.
std::optional<std::string> dataDirectoryPath();

/// Makes the directory `path` and those above it that are missing, each with mode 0700 whatever
/// the umask. One that exists is left as it is. False when `path` cannot be made.
bool makeDirectories(FileOperations& operations, const std::string& path);

/// Makes sure that the directory `path` outlives a power failure, with those above it that are the
/// user's too: one that was ended while it made them may have left them on the way to the disk.
void syncDirectoryNames(FileOperations& operations, std::string path);

} // namespace kestrel::linux_shell
