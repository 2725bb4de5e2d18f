#pragma once
// What opening a file means on a Linux desktop.

#include <string>
#include <string_view>

namespace kestrel::linux_shell {

/// True when `path` can name a file as it stands: absolute, and without a NUL, at which the system
/// would cut it short and reach another file. A relative path has no folder to start from here.
bool isUsablePath(std::string_view path);

enum class FileKind {
    nothing,      ///< missing, a dangling link, or a device, socket or pipe, which may block
    folder,       ///< opened by its default application
    desktopEntry, ///< launched as the application it describes
    runnable,     ///< run in a new terminal window
    document,     ///< opened by its default application
};

/// The kind of the file at `path`, links followed. Never blocks on a special file.
///
/// Runnable is a file with the executable bit that also looks like a program: it starts with "#!",
/// is an ELF image, or is named .command or .sh. The bit alone says nothing on FAT, NTFS and CIFS,
/// where every file has it; a script without the bit is a text to be edited.
FileKind classifyFile(const std::string& path);

} // namespace kestrel::linux_shell
