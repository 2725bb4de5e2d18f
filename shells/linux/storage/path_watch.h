#pragma once
// Notices, through inotify, that another program may have changed a value file: the file itself,
// the directory that holds it, or anything on the way there. The program's own writes, which rename
// a temporary file of this process onto the file, are not changes.
//
// Every directory and link on the path is watched, links followed step by step, down to the deepest
// that exists; so a missing part is noticed when it appears and a link when it is pointed
// elsewhere. Those above the deepest are watched for their own removal and renaming alone: what
// else happens in them, in a home folder for one, sends no event.

#include "shells/linux/posix/descriptor.h"

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
    /// That is because the value's directory is another one, or has come or gone.
    bool ofDirectory = false;
    /// The value has been removed from its directory and nothing has come in its place yet.
    bool vanished = false;
    /// Since the last change someone writes into the file and has not closed it.
    bool beingWritten = false;
};

class PathWatch {
  public:
    /// For the file `name` in `directory` (absolute), which is watched from the first `followPath`
    /// on. What the system refuses to watch is watched from the directory above, and passed over
    /// where that is refused too; where it refuses inotify altogether, nothing is ever noticed.
    PathWatch(std::string directory, std::string name);

    /// Readable when there is something for `readChanges`; -1 without inotify.
    int descriptor() const { return descriptor_.number(); }

    /// Takes in everything that has happened so far, without waiting for more.
    PathChange readChanges();

    /// Follows the path again, as after a change that sends no event. True when the value's
    /// directory is another one than before, or has come or gone.
    bool followPath();

  private:
    /// What one directory or link is watched for, and the names in it that matter.
    struct Watch {
        std::string path;
        std::uint32_t events = 0;
        std::vector<std::string> ofPath;
        std::vector<std::string> ofValue;

        bool operator==(const Watch&) const = default;
    };
    struct Walk;

    void judge(const inotify_event& event, std::string_view name, PathChange& change);
    void judgeValue(std::uint32_t mask, PathChange& change);
    Walk walkDown();
    bool step(Walk& walk);
    static bool followLink(Walk& walk, const std::string& path);
    void watchEnd(Walk& walk);
    int watchName(Walk& walk, const std::string& name, std::uint32_t events);
    int watch(Walk& walk, const std::string& path, std::uint32_t events);
    void dropTheRest();

    std::string directory_;
    std::string name_;
    Descriptor descriptor_;
    std::map<int, Watch> watches_;
    /// The events that the system has been asked for, at least those in `watches_`.
    std::map<int, std::uint32_t> asked_;
    /// The watches from the value's directory on, -1 for one that was refused; empty without such
    /// a directory. A directory that is made again gets a new watch, so this tells it from the old
    /// one.
    std::vector<int> valueWatches_;
    /// Of an own temporary's rename whose second half is still to come.
    std::optional<std::uint32_t> ownRename_;
    bool pathTouched_ = false;
};

} // namespace kestrel::linux_shell
