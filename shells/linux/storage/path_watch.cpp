#include "shells/linux/storage/path_watch.h"

#include "shells/linux/posix/file_operations.h"
#include "shells/linux/posix/uninterrupted.h"
#include "shells/linux/storage/temporary_name.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstring>
#include <deque>
#include <utility>

#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kestrel::linux_shell {

namespace {

constexpr std::uint32_t nameEvents = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO;
constexpr std::uint32_t selfEvents = IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT;
/// The removal of a link, or a rename onto it, is a change of its count of names.
constexpr std::uint32_t linkEvents = selfEvents | IN_ATTRIB;
constexpr std::uint32_t valueEvents =
    nameEvents | selfEvents | IN_MODIFY | IN_CLOSE_WRITE | IN_ATTRIB;
/// Walks down the path before it is taken for one that never rests.
constexpr int walkLimit = 8;
/// Reads per batch, so that a writer that never rests cannot hold up the main thread.
constexpr int readLimit = 64;

/// Puts the parts of `path` in front of `parts`.
void prepend(std::deque<std::string>& parts, std::string_view path) {
    while (!path.empty()) {
        const std::size_t slash = path.rfind('/');
        const std::string_view last =
            slash == std::string_view::npos ? path : path.substr(slash + 1);
        if (!last.empty() && last != ".")
            parts.emplace_front(last);
        path.remove_suffix(slash == std::string_view::npos ? path.size() : path.size() - slash);
    }
}

std::string join(const std::string& directory, const std::string& name) {
    return directory.ends_with('/') ? directory + name : directory + "/" + name;
}

std::string directoryAbove(const std::string& directory) {
    const std::size_t slash = directory.rfind('/');
    return slash == 0 ? "/" : directory.substr(0, slash);
}

template <class Values, class Value>
bool contains(const Values& values, const Value& value) {
    return std::ranges::find(values, value) != values.end();
}

} // namespace

/// How far following the path has come.
struct PathWatch::Walk {
    /// Free of links.
    std::string directory = "/";
    std::deque<std::string> rest;
    int links = 0;
    bool atValue = false;
    std::map<int, Watch> watches;
    std::vector<int> valueWatches;

    bool findsTheSameAs(const Walk& other) const {
        return watches == other.watches && valueWatches == other.valueWatches;
    }
};

PathWatch::PathWatch(std::string directory, std::string name)
    : directory_(std::move(directory)),
      name_(std::move(name)),
      descriptor_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {}

bool PathWatch::followPath() {
    if (!descriptor_.isOpen())
        return false;
    Walk walk = walkDown();
    // A part may have been replaced between the look at it and its watch. A walk that finds what
    // the one before it found had all watches in place before its first look.
    for (int walks = 1; walks < walkLimit; ++walks) {
        Walk again = walkDown();
        std::swap(walk, again);
        if (walk.findsTheSameAs(again))
            break;
    }
    watches_ = std::move(walk.watches);
    dropTheRest();
    pathTouched_ = false;
    return std::exchange(valueWatches_, std::move(walk.valueWatches)) != valueWatches_;
}

/// Takes back what earlier walks asked for and the last one did not.
void PathWatch::dropTheRest() {
    for (auto next = asked_.begin(); next != asked_.end();) {
        auto& [number, events] = *next;
        const auto wanted = watches_.find(number);
        if (wanted == watches_.end()) {
            ::inotify_rm_watch(descriptor(), number);
            next = asked_.erase(next);
            continue;
        }
        const Watch& watch = wanted->second;
        if (std::exchange(events, watch.events) != watch.events)
            ::inotify_add_watch(descriptor(), watch.path.c_str(), watch.events | IN_DONT_FOLLOW);
        ++next;
    }
}

PathWatch::Walk PathWatch::walkDown() {
    Walk walk;
    prepend(walk.rest, directory_);
    walk.rest.push_back(name_);
    while (step(walk)) {
    }
    watchEnd(walk);
    return walk;
}

/// Goes one part further; false at the end.
bool PathWatch::step(Walk& walk) {
    if (walk.rest.empty())
        return false;
    const std::string name = std::move(walk.rest.front());
    walk.rest.pop_front();
    if (name == "..") {
        walk.directory = directoryAbove(walk.directory);
        return true;
    }

    const bool last = walk.rest.empty();
    walk.atValue = walk.atValue || last;
    const std::string path = join(walk.directory, name);
    struct stat status {};
    const bool exists = ::lstat(path.c_str(), &status) == 0;
    const bool isLink = exists && S_ISLNK(status.st_mode);
    const bool leadsOn = isLink || (exists && !last && S_ISDIR(status.st_mode));
    int number = -1;
    if (last)
        number = watchName(walk, name, valueEvents);
    else if (leadsOn)
        number = watch(walk, path, isLink ? linkEvents : selfEvents);
    if (number < 0 && !last)
        number = watchName(walk, name, nameEvents | IN_ATTRIB);
    if (walk.atValue)
        walk.valueWatches.push_back(number);

    if (leadsOn && !isLink)
        walk.directory = path;
    return leadsOn && (!isLink || followLink(walk, path));
}

bool PathWatch::followLink(Walk& walk, const std::string& path) {
    std::array<char, PATH_MAX> target{};
    const ssize_t length = ::readlink(path.c_str(), target.data(), target.size());
    if (length <= 0 || ++walk.links > linkLimit)
        return false;
    if (target.front() == '/')
        walk.directory.assign(1, '/');
    prepend(walk.rest, std::string_view(target.data(), static_cast<std::size_t>(length)));
    return true;
}

/// A directory that someone holds open, as a terminal does that stands in it, tells of its removal
/// only when they let go. Its parent tells at once. Those above cannot be removed before it.
void PathWatch::watchEnd(Walk& walk) {
    const std::string& end = walk.directory;
    const int number = end == "/" ? -1 : watch(walk, directoryAbove(end), IN_DELETE);
    if (number >= 0)
        walk.watches[number].ofPath.push_back(end.substr(end.rfind('/') + 1));
}

/// Watches the directory that the walk has come to, for what happens to `name` in it.
int PathWatch::watchName(Walk& walk, const std::string& name, std::uint32_t events) {
    const int number = watch(walk, walk.directory, events);
    if (number >= 0) {
        Watch& watch = walk.watches[number];
        (walk.atValue ? watch.ofValue : watch.ofPath).push_back(name);
    }
    return number;
}

/// The number of the watch; negative when the system refuses it.
int PathWatch::watch(Walk& walk, const std::string& path, std::uint32_t events) {
    // Nothing is taken from a watch before all of a walk's are known: the path may pass it twice.
    const int number =
        ::inotify_add_watch(descriptor(), path.c_str(), events | IN_MASK_ADD | IN_DONT_FOLLOW);
    if (number < 0)
        return number;
    asked_[number] |= events;
    Watch& watch = walk.watches[number];
    watch.path = path;
    watch.events |= events;
    return number;
}

PathChange PathWatch::readChanges() {
    PathChange change;
    alignas(inotify_event) std::array<char, 32768> buffer{};
    for (int reads = 0; descriptor_.isOpen() && reads < readLimit; ++reads) {
        const ssize_t length =
            uninterrupted([&] { return ::read(descriptor(), buffer.data(), buffer.size()); });
        if (length <= 0)
            break;
        for (const char* next = buffer.data(); next < buffer.data() + length;) {
            inotify_event event{};
            std::memcpy(&event, next, sizeof event);
            const char* const name = next + sizeof event;
            judge(event, std::string_view(name, ::strnlen(name, event.len)), change);
            next = name + event.len;
        }
    }
    if (pathTouched_ && followPath())
        change.changed = change.ofDirectory = true;
    return change;
}

void PathWatch::judge(const inotify_event& event, std::string_view name, PathChange& change) {
    if ((event.mask & IN_Q_OVERFLOW) != 0) {
        // What was lost may have been anything.
        change.changed = true;
        pathTouched_ = true;
        return;
    }
    const auto found = watches_.find(event.wd);
    if (found == watches_.end())
        return;
    if ((event.mask & (selfEvents | IN_IGNORED)) != 0) {
        if ((event.mask & IN_IGNORED) != 0) {
            watches_.erase(found);
            asked_.erase(event.wd);
        }
        pathTouched_ = true;
        return;
    }
    if (name.empty()) {
        // Of the directory or link itself: its rights are others, or a rename has put something
        // else in its place.
        pathTouched_ = true;
        change.changed = change.changed || contains(valueWatches_, event.wd);
        return;
    }
    if ((event.mask & IN_MOVED_FROM) != 0 && isTemporaryOfThisProcess(name)) {
        ownRename_ = event.cookie;
        return;
    }
    if ((event.mask & IN_MOVED_TO) != 0 && ownRename_ == event.cookie) {
        ownRename_.reset();
        return;
    }
    if (contains(found->second.ofPath, name))
        pathTouched_ = true;
    if (contains(found->second.ofValue, name))
        judgeValue(event.mask, change);
}

void PathWatch::judgeValue(std::uint32_t mask, PathChange& change) {
    if ((mask & nameEvents) != 0)
        pathTouched_ = true; // it may be a link now, or no longer one
    if ((mask & (IN_DELETE | IN_MOVED_FROM)) != 0) {
        change.vanished = true;
        change.beingWritten = false;
        return;
    }
    change.vanished = false;
    change.beingWritten = (mask & (IN_CREATE | IN_MODIFY)) != 0;
    change.changed = change.changed || !change.beingWritten;
}

} // namespace kestrel::linux_shell
