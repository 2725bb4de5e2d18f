#include "tests/linux/storage/memory_disk.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

namespace kestrel::tests {

namespace {

constexpr int linkLimit = 40;

int failure(int error) {
    errno = error;
    return -1;
}

std::string parentOf(const std::string& path) { return path.substr(0, path.rfind('/')); }

std::string baseOf(const std::string& path) { return path.substr(path.rfind('/') + 1); }

} // namespace

std::size_t MemoryDisk::addNode(Node node) {
    // Both views number their nodes alike; on the disk a new one is empty until it is synced.
    synced_.push_back(Node{.kind = node.kind, .bytes = {}, .names = {}});
    now_.push_back(std::move(node));
    return now_.size() - 1;
}

void MemoryDisk::apply(Nodes& nodes, const NameChange& change) {
    auto& names = nodes[change.directory].names;
    if (change.gone)
        names.erase(*change.gone);
    if (change.come)
        names.insert_or_assign(change.come->first, change.come->second);
}

void MemoryDisk::change(NameChange change) {
    apply(now_, change);
    unsynced_.push_back(std::move(change));
}

void MemoryDisk::add(const std::string& path, Node node) {
    addDirectory(parentOf(path));
    const std::size_t directory = *find(0, parentOf(path) + "/.", LastLink::follow)->node;
    const NameChange change{directory, std::nullopt, std::pair(baseOf(path), addNode(node))};
    synced_.back() = std::move(node);
    apply(now_, change);
    apply(synced_, change);
}

void MemoryDisk::addDirectory(const std::string& path) {
    if (!path.empty() && !find(0, path, LastLink::follow).value_or(Place{}).node)
        add(path, {.kind = Kind::directory, .bytes = {}, .names = {}});
}

void MemoryDisk::addFile(const std::string& path, const std::string& bytes) {
    add(path, {.kind = Kind::file, .bytes = bytes, .names = {}});
}

void MemoryDisk::addLink(const std::string& path, const std::string& target) {
    add(path, {.kind = Kind::link, .bytes = target, .names = {}});
}

void MemoryDisk::remove(const std::string& path) {
    const std::size_t directory = *find(0, parentOf(path) + "/.", LastLink::follow)->node;
    const NameChange change{directory, baseOf(path), std::nullopt};
    apply(now_, change);
    apply(synced_, change);
}

std::optional<std::string> MemoryDisk::contents(const std::string& path) const {
    const auto place = find(0, path, LastLink::follow);
    if (!place || !place->node || now_[*place->node].kind != Kind::file)
        return std::nullopt;
    return now_[*place->node].bytes;
}

std::vector<std::string> MemoryDisk::names(const std::string& directory) const {
    std::vector<std::string> result;
    const auto place = find(0, directory, LastLink::follow);
    if (place && place->node)
        for (const auto& [name, node] : now_[*place->node].names)
            result.push_back(name);
    return result;
}

std::size_t MemoryDisk::directoryAbove(std::size_t directory) const {
    const auto above = std::ranges::find_if(now_, [=](const Node& node) {
        return std::ranges::any_of(node.names,
                                   [=](const auto& entry) { return entry.second == directory; });
    });
    return above == now_.end() ? 0 : static_cast<std::size_t>(above - now_.begin());
}

std::optional<MemoryDisk::Place> MemoryDisk::find(std::size_t start, std::string_view path,
                                                  LastLink lastLink, int links) const {
    std::size_t directory = start;
    if (path.starts_with('/'))
        directory = 0;
    Place place{directory, ".", directory};
    while (!path.empty()) {
        const std::size_t slash = std::min(path.find('/'), path.size());
        const std::string name(path.substr(0, slash));
        path.remove_prefix(std::min(slash + 1, path.size()));
        if (name.empty() || name == ".")
            continue;
        if (!place.node || now_[*place.node].kind != Kind::directory) {
            errno = place.node ? ENOTDIR : ENOENT;
            return std::nullopt;
        }
        if (name == "..") {
            place = {directoryAbove(*place.node), ".", directoryAbove(*place.node)};
            continue;
        }
        place = {*place.node, name, std::nullopt};
        const auto& names = now_[place.directory].names;
        const auto found = names.find(name);
        if (found == names.end())
            continue;
        place.node = found->second;
        const Node& node = now_[*place.node];
        const bool isLast = path.find_first_not_of('/') == std::string_view::npos;
        if (node.kind != Kind::link || (isLast && lastLink == LastLink::keep))
            continue;
        if (links >= linkLimit) {
            errno = ELOOP;
            return std::nullopt;
        }
        const auto target = find(place.directory, node.bytes, LastLink::follow, links + 1);
        if (!target)
            return std::nullopt;
        place = *target;
    }
    return place;
}

std::optional<MemoryDisk::Place> MemoryDisk::findAt(int directory, const char* name,
                                                    LastLink lastLink) const {
    if (directory == AT_FDCWD)
        return find(0, name, lastLink);
    const auto start = open_.find(directory);
    if (start == open_.end()) {
        errno = EBADF;
        return std::nullopt;
    }
    return find(start->second.node, name, lastLink);
}

MemoryDisk::OpenFile* MemoryDisk::openFile(int descriptor) {
    const auto found = open_.find(descriptor);
    if (found == open_.end()) {
        errno = EBADF;
        return nullptr;
    }
    return &found->second;
}

int MemoryDisk::openAt(int directory, const char* name, int flags, mode_t /*mode*/) {
    auto place = findAt(directory, name, (flags & O_EXCL) != 0 ? LastLink::keep : LastLink::follow);
    if (!place)
        return -1;
    if (place->node && (flags & O_EXCL) != 0)
        return failure(EEXIST);
    if (!place->node && (flags & O_CREAT) == 0)
        return failure(ENOENT);
    if (!place->node) {
        place->node = addNode({.kind = Kind::file, .bytes = {}, .names = {}});
        change({place->directory, std::nullopt, std::pair(place->name, *place->node)});
    }
    if ((flags & O_DIRECTORY) != 0 && now_[*place->node].kind != Kind::directory)
        return failure(ENOTDIR);
    const int descriptor = open_.empty() ? 3 : open_.rbegin()->first + 1;
    open_[descriptor] = {*place->node, 0};
    return descriptor;
}

int MemoryDisk::close(int descriptor) { return open_.erase(descriptor) == 1 ? 0 : failure(EBADF); }

ssize_t MemoryDisk::read(int descriptor, char* buffer, std::size_t size) {
    OpenFile* const file = openFile(descriptor);
    if (file == nullptr)
        return -1;
    const Node& node = now_[file->node];
    if (node.kind == Kind::directory)
        return failure(EISDIR);
    const std::size_t count = std::min(size, node.bytes.size() - file->position);
    node.bytes.copy(buffer, count, file->position);
    file->position += count;
    return static_cast<ssize_t>(count);
}

ssize_t MemoryDisk::write(int descriptor, const char* bytes, std::size_t size) {
    OpenFile* const file = openFile(descriptor);
    if (file == nullptr)
        return -1;
    now_[file->node].bytes.replace(file->position, size, bytes, size);
    file->position += size;
    return static_cast<ssize_t>(size);
}

int MemoryDisk::sync(int descriptor) {
    const OpenFile* const file = openFile(descriptor);
    if (file == nullptr)
        return -1;
    const std::size_t node = file->node;
    if (refusesToSyncDirectories && now_[node].kind == Kind::directory)
        return failure(EINVAL);
    synced_[node].bytes = now_[node].bytes;
    for (const NameChange& change : unsynced_)
        if (change.directory == node)
            apply(synced_, change);
    std::erase_if(unsynced_, [=](const NameChange& change) { return change.directory == node; });
    return 0;
}

/// There is one process at a time.
int MemoryDisk::lock(int descriptor) { return openFile(descriptor) == nullptr ? -1 : 0; }

int MemoryDisk::describe(std::size_t node, struct stat& status) const {
    status = {};
    const Kind kind = now_[node].kind;
    status.st_mode = kind == Kind::directory ? S_IFDIR : kind == Kind::file ? S_IFREG : S_IFLNK;
    status.st_uid = ::geteuid();
    status.st_size = static_cast<off_t>(now_[node].bytes.size());
    return 0;
}

int MemoryDisk::status(int descriptor, struct stat& status) {
    const OpenFile* const file = openFile(descriptor);
    return file == nullptr ? -1 : describe(file->node, status);
}

int MemoryDisk::statusAt(int directory, const char* name, struct stat& status) {
    const auto place = findAt(directory, name, LastLink::keep);
    if (!place)
        return -1;
    return place->node ? describe(*place->node, status) : failure(ENOENT);
}

int MemoryDisk::statusOfPath(const char* path, struct stat& status) {
    const auto place = find(0, path, LastLink::follow);
    if (!place)
        return -1;
    return place->node ? describe(*place->node, status) : failure(ENOENT);
}

int MemoryDisk::changeModeAt(int directory, const char* name, mode_t /*mode*/) {
    const auto place = findAt(directory, name, LastLink::follow);
    if (!place)
        return -1;
    return place->node ? 0 : failure(ENOENT);
}

ssize_t MemoryDisk::readLinkAt(int directory, const char* name, char* buffer, std::size_t size) {
    const auto place = findAt(directory, name, LastLink::keep);
    if (!place)
        return -1;
    if (!place->node)
        return failure(ENOENT);
    const Node& node = now_[*place->node];
    if (node.kind != Kind::link)
        return failure(EINVAL);
    return static_cast<ssize_t>(node.bytes.copy(buffer, size));
}

int MemoryDisk::renameAt(int directory, const char* from, const char* to) {
    const auto source = findAt(directory, from, LastLink::keep);
    const auto target = findAt(directory, to, LastLink::keep);
    if (!source || !target)
        return -1;
    if (!source->node)
        return failure(ENOENT);
    if (target->node && now_[*target->node].kind == Kind::directory)
        return failure(EISDIR);
    change({source->directory, source->name, std::pair(target->name, *source->node)});
    return 0;
}

int MemoryDisk::unlinkAt(int directory, const char* name) {
    const auto place = findAt(directory, name, LastLink::keep);
    if (!place)
        return -1;
    if (!place->node)
        return failure(ENOENT);
    if (now_[*place->node].kind == Kind::directory)
        return failure(EISDIR);
    change({place->directory, place->name, std::nullopt});
    return 0;
}

int MemoryDisk::makeDirectory(const char* path, mode_t /*mode*/) {
    const auto place = find(0, path, LastLink::keep);
    if (!place)
        return -1;
    if (place->node)
        return failure(EEXIST);
    change({place->directory, std::nullopt, std::pair(place->name, addNode({}))});
    return 0;
}

std::vector<std::string> MemoryDisk::list(int directory) {
    std::vector<std::string> names;
    const OpenFile* const file = openFile(directory);
    if (file != nullptr)
        for (const auto& [name, node] : now_[file->node].names)
            names.push_back(name);
    return names;
}

} // namespace kestrel::tests
