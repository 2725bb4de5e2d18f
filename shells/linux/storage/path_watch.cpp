#include "shells/linux/storage/path_watch.h"

#include "shells/linux/storage/temporary_name.h"

#include <algorithm>
#include <array>
#include <cerrno>
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
constexpr std::uint32_t contentEvents = IN_MODIFY | IN_CLOSE_WRITE | IN_ATTRIB;
constexpr int linkLimit = 40;
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

std::string parentOf(const std::string& directory) {
    const std::size_t slash = directory.rfind('/');
    return slash == 0 ? "/" : directory.substr(0, slash);
}

bool contains(const std::vector<std::string>& names, std::string_view name) {
    return std::ranges::find(names, name) != names.end();
}

} // namespace

/// How far following the path has come.
struct PathWatch::Walk {
    /// Free of links.
    std::string directory = "/";
    std::deque<std::string> rest;
    int links = 0;
    bool atValue = false;
    std::map<int, Names> watches;
    std::vector<int> valueWatches;
};

PathWatch::PathWatch(std::string directory, std::string name)
    : directory_(std::move(directory)),
      name_(std::move(name)),
      descriptor_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    followPath();
}

PathWatch::~PathWatch() {
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

int PathWatch::watch(const std::string& directory, std::uint32_t events) const {
    // Without IN_MASK_ADD a directory that the path passes twice would lose the first's events.
    return ::inotify_add_watch(descriptor_, directory.c_str(),
                               events | IN_MASK_ADD | IN_ONLYDIR | IN_DONT_FOLLOW);
}

bool PathWatch::followPath() {
    if (descriptor_ < 0)
        return false;
    Walk walk;
    prepend(walk.rest, directory_);
    walk.rest.push_back(name_);
    while (step(walk)) {
    }
    for (const auto& [number, names] : watches_)
        if (!walk.watches.contains(number))
            ::inotify_rm_watch(descriptor_, number);
    watches_ = std::move(walk.watches);
    pathTouched_ = false;
    return std::exchange(valueWatches_, std::move(walk.valueWatches)) != valueWatches_;
}

/// Watches the directory that the walk has come to and goes one part further; false at the end.
/// The watch comes before the look at what is there, so a change in between sends an event.
bool PathWatch::step(Walk& walk) const {
    if (walk.rest.empty())
        return false;
    walk.atValue = walk.atValue || walk.rest.size() == 1;
    const std::string name = std::move(walk.rest.front());
    walk.rest.pop_front();
    if (name == "..") {
        walk.directory = parentOf(walk.directory);
        return true;
    }

    const bool last = walk.rest.empty();
    const int number = watch(walk.directory, last ? nameEvents | selfEvents | contentEvents
                                                  : nameEvents | selfEvents);
    if (number >= 0) {
        Names& names = walk.watches[number];
        (walk.atValue ? names.ofValue : names.ofPath).push_back(name);
    }
    if (walk.atValue)
        walk.valueWatches.push_back(number);

    const std::string path = join(walk.directory, name);
    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0)
        return false;
    if (S_ISDIR(status.st_mode)) {
        walk.directory = path;
        return !last;
    }
    std::array<char, PATH_MAX> target{};
    const ssize_t length = ::readlink(path.c_str(), target.data(), target.size());
    if (length <= 0 || ++walk.links > linkLimit)
        return false;
    if (target.front() == '/')
        walk.directory.assign(1, '/');
    prepend(walk.rest, std::string_view(target.data(), static_cast<std::size_t>(length)));
    return true;
}

PathChange PathWatch::readChanges() {
    PathChange change;
    alignas(inotify_event) std::array<char, 32768> buffer{};
    for (int reads = 0; descriptor_ >= 0 && reads < readLimit; ++reads) {
        const ssize_t length = ::read(descriptor_, buffer.data(), buffer.size());
        if (length < 0 && errno == EINTR)
            continue;
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
        change.changed = true;
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
        if ((event.mask & IN_IGNORED) != 0)
            watches_.erase(found);
        pathTouched_ = true;
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
    if ((mask & (IN_CREATE | IN_MODIFY)) != 0) {
        change.beingWritten = true;
        return;
    }
    change.changed = true;
    change.beingWritten = false;
}

} // namespace kestrel::linux_shell
