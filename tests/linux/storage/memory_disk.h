#pragma once
// A file system in memory that knows what of it is on the disk: the bytes that a file had, and the
// names that a directory had, when each was last synced. So it can say what may be left after a
// power cut. Every function behaves as the system call it stands for, as far as storage uses it;
// all paths are absolute and everything belongs to one user.

#include "shells/linux/posix/file_operations.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kestrel::tests {

class MemoryDisk final : public linux_shell::FileOperations {
  public:
    [[nodiscard]] std::size_t openFiles() const { return open_.size(); }

    /// As with some network file systems, to sync a directory is an error.
    bool refusesToSyncDirectories = false;

    /// What stands on the disk from the start. Directories above it are made.
    void addDirectory(const std::string& path);
    void addFile(const std::string& path, const std::string& bytes);
    void addLink(const std::string& path, const std::string& target);

    /// Someone else takes it away, with everything in it.
    void remove(const std::string& path);

    [[nodiscard]] std::optional<std::string> contents(const std::string& path) const;
    [[nodiscard]] std::vector<std::string> names(const std::string& directory) const;

    /// All that may be left if the power is cut now. Any of the names changed and not synced may
    /// be as before, in whichever order they would have reached the disk; a rename gets there as a
    /// whole. A file not synced may be as before, empty, cut short, or hold zeros in part.
    [[nodiscard]] std::vector<MemoryDisk> afterPowerCut() const;

    /// Equal for disks that hold the same.
    [[nodiscard]] std::string fingerprint() const;

    int openAt(int directory, const char* name, int flags, mode_t mode) override;
    int close(int descriptor) override;
    ssize_t read(int descriptor, char* buffer, std::size_t size) override;
    ssize_t write(int descriptor, const char* bytes, std::size_t size) override;
    int sync(int descriptor) override;
    int lock(int descriptor) override;
    int status(int descriptor, struct stat& status) override;
    int statusAt(int directory, const char* name, struct stat& status) override;
    int statusOfPath(const char* path, struct stat& status) override;
    int changeModeAt(int directory, const char* name, mode_t mode) override;
    ssize_t readLinkAt(int directory, const char* name, char* buffer, std::size_t size) override;
    int renameAt(int directory, const char* from, const char* to) override;
    int unlinkAt(int directory, const char* name) override;
    int makeDirectory(const char* path, mode_t mode) override;
    std::vector<std::string> list(int directory) override;

  private:
    enum class Kind { directory, file, link };
    struct Node {
        Kind kind = Kind::directory;
        std::string bytes; ///< Of a file; of a link, its target.
        std::map<std::string, std::size_t> names;
    };
    /// In one directory a name comes, goes, or both.
    struct NameChange {
        std::size_t directory = 0;
        std::optional<std::string> gone;
        std::optional<std::pair<std::string, std::size_t>> come;
    };
    struct OpenFile {
        std::size_t node = 0;
        std::size_t position = 0;
    };
    /// Where a path leads: the last directory, the name in it, and what that is, if anything.
    struct Place {
        std::size_t directory = 0;
        std::string name;
        std::optional<std::size_t> node;
    };
    enum class LastLink { follow, keep };
    using Nodes = std::vector<Node>;

    [[nodiscard]] std::size_t directoryAbove(std::size_t directory) const;
    [[nodiscard]] std::optional<Place> find(std::size_t start, std::string_view path,
                                            LastLink lastLink, int links = 0) const;
    [[nodiscard]] std::optional<Place> findAt(int directory, const char* name,
                                              LastLink lastLink) const;
    [[nodiscard]] OpenFile* openFile(int descriptor);
    int describe(std::size_t node, struct stat& status) const;
    std::size_t addNode(Node node);
    void change(NameChange change);
    void add(const std::string& path, Node node);
    static void apply(Nodes& nodes, const NameChange& change);
    [[nodiscard]] std::vector<Nodes> namesAfterPowerCut() const;
    [[nodiscard]] static std::vector<std::string> remains(const std::string& synced,
                                                          const std::string& written);

    Nodes now_{Node{}};
    Nodes synced_{Node{}};
    std::vector<NameChange> unsynced_;
    std::map<int, OpenFile> open_;
};

} // namespace kestrel::tests
