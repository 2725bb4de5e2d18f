#pragma once
// One directory with one file per key; the file holds the value's bytes and nothing else. The local
// defaults and the cloud store are both made of it.
//
// A key, or the directory, may be a symbolic link: a user who keeps the file in a synchronised or
// version-controlled folder and links to it goes on sharing it after a write. So a write follows
// the links and replaces the file at their end, never a link.

#include "shells/linux/posix/descriptor.h"
#include "shells/linux/posix/file_operations.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace kestrel::linux_shell {

enum class MissingDirectory { create, fail };

/// A key that cannot name a file (empty, starting with a dot, holding a slash or a zero byte) is
/// always missing and is never written.
class FileStore {
  public:
    /// Larger values are neither read nor written, in bytes.
    static constexpr std::size_t maximumSize = std::size_t{64} * 1024 * 1024;

    /// `directory` is absolute, or empty for a store that is always empty and takes nothing.
    /// `missing` is what a write does when the directory is not there; reads never make it.
    FileStore(FileOperations& operations, std::string directory, MissingDirectory missing);

    /// True while the directory, or a link to one, exists.
    bool exists() const;

    /// The bytes under `key`, possibly none at all; nothing when there is no such file or it is
    /// not a regular file that can be read to its end. Never waits for a writer.
    std::optional<std::string> read(std::string_view key) const;

    /// True when something stands under `key`, whether or not it can be read.
    bool holds(std::string_view key) const;

    /// Puts `data` under `key`, atomically and durably, with mode 0600. True when it is stored;
    /// otherwise the old value is there, whole, and nothing is left behind. What is not a regular
    /// file, a directory or a device, is never replaced. A write that the end of the process cut
    /// short leaves a temporary file, which the next write of the key removes.
    [[nodiscard]] bool write(std::string_view key, std::string_view data);

  private:
    /// Where a key's file really is: its directory, open, and its name there.
    struct Place {
        Descriptor directory;
        std::string name;
    };

    enum class Outcome { stored, failed, overtaken };

    /// One attempt; overtaken when the temporary file, or its directory, is gone before the end.
    Outcome replace(std::string_view key, std::string_view data);
    [[nodiscard]] bool makeDirectory();
    Descriptor open(int directory, const char* name, int flags) const;
    std::optional<Place> find(std::string_view key) const;
    bool isReplaceable(const Place& place) const;
    bool isInUse(const Place& place, const std::string& name) const;
    void removeStaleTemporaries(const Place& place) const;
    void remove(const Place& place, const std::string& name) const;
    [[nodiscard]] std::optional<std::string> writeTemporary(const Place& place,
                                                            std::string_view data) const;
    [[nodiscard]] bool fill(Descriptor& file, std::string_view data) const;

    FileOperations& operations_;
    std::string directory_;
    MissingDirectory missing_;
    bool isDirectorySynced_ = false;
};

} // namespace kestrel::linux_shell
