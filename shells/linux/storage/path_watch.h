#pragma once
// Notices, through inotify, that a value file may have changed by another's hand: the file itself,
// the directory that holds it, or anything on the way there. The program's own writes, which rename
// a temporary file of this process onto the file, are not changes.
//
// Every directory on the path is watched, links followed step by step, down to the deepest that
// exists; so a missing part is noticed when it appears and a link when it is pointed elsewhere.
// Directories above the value's own are only watched for names coming and going.

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct inotify_event;

namespace kestrel::linux_shell {

/// What a batch of events amounts to.
struct PathChange {
    /// The value, or the directory's existence, is no longer what it was.
    bool changed = false;
    /// Since the last change someone writes into the file and has not closed it.
    bool beingWritten = false;
};

class PathWatch {
  public:
    /// Watches the file `name` in `directory` (absolute). Where the system refuses a watch, that
    /// directory is passed over; where it refuses inotify altogether, nothing is ever noticed.
    PathWatch(std::string directory, std::string name);
    ~PathWatch();
    PathWatch(const PathWatch&) = delete;
    PathWatch& operator=(const PathWatch&) = delete;

    /// Readable when there is something for `readChanges`; -1 without inotify.
    [[nodiscard]] int descriptor() const { return descriptor_; }

    /// Takes in everything that has happened so far, without waiting.
    PathChange readChanges();

    /// Follows the path anew, as after a change that sends no event. True when the value's
    /// directory is another one than before, or has come or gone.
    bool followPath();

  private:
    /// The names in one watched directory that matter.
    struct Names {
        std::vector<std::string> ofPath;
        std::vector<std::string> ofValue;
    };
    struct Walk;

    void judge(const inotify_event& event, std::string_view name, PathChange& change);
    void judgeValue(std::uint32_t mask, PathChange& change);
    [[nodiscard]] int watch(const std::string& directory, std::uint32_t events) const;
    bool step(Walk& walk) const;

    std::string directory_;
    std::string name_;
    int descriptor_;
    std::map<int, Names> watches_;
    /// The watches from the value's directory on, -1 for one that was refused; empty without such
    /// a directory. A directory made anew gets a new watch, so this tells it from the old one.
    std::vector<int> valueWatches_;
    /// Of an own temporary's rename whose second half is still to come.
    std::optional<std::uint32_t> ownRename_;
    bool pathTouched_ = false;
};

} // namespace kestrel::linux_shell
