#pragma once
// What the file system says about the icon that a desktop shows for a file: its names in a theme.
// Needs no toolkit, may be asked on any thread, and blocks for as long as the file system does.

#include <sys/types.h>

#include <ctime>
#include <optional>
#include <string>
#include <vector>

namespace kestrel::linux_shell {

/// Tells one state of a file from another.
struct FileStamp {
    bool exists = false;
    dev_t device = 0;
    ino_t inode = 0;
    mode_t mode = 0;
    off_t size = 0;
    time_t seconds = 0;
    long nanoseconds = 0;
    friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

struct FileIconInfo {
    FileStamp stamp;
    std::string imagePath;             ///< of an image file, absolute; empty for none
    std::vector<std::string> names;    ///< of themed icons, the best first
    std::string fallback = "document"; ///< the built-in icon, where there is none of these
};

/// Nothing when the file is as it was at `known`. A path that names nothing, or nothing readable,
/// has the icon of a document of unknown type.
std::optional<FileIconInfo> readFileIconInfo(const std::string& path,
                                             const std::optional<FileStamp>& known);

} // namespace kestrel::linux_shell
