#include "shells/linux/storage/file_store.h"

#include "model/item_list_json.h"
#include "shells/linux/posix/uninterrupted.h"
#include "shells/linux/storage/data_directory.h"
#include "shells/linux/storage/temporary_name.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>

namespace kestrel::linux_shell {

namespace {

constexpr mode_t ownerReadsAndWrites = 0600;
constexpr int attemptLimit = 20;
// Or a list would be saved that is not stored.
static_assert(FileStore::maximumSize >= maximumListSize);

constexpr std::size_t chunkSize = std::size_t{64} * 1024;

bool namesAFile(std::string_view key) {
    return !key.empty() && key.front() != '.' && key.find('/') == std::string_view::npos &&
           key.find('\0') == std::string_view::npos;
}

} // namespace

FileStore::FileStore(FileOperations& operations, std::string directory, MissingDirectory missing)
    : operations_(operations), directory_(std::move(directory)), missing_(missing) {}

Descriptor FileStore::open(int directory, const char* name, int flags) const {
    const auto open = [&] {
        return operations_.openAt(directory, name, flags | O_CLOEXEC, ownerReadsAndWrites);
    };
    return Descriptor(uninterrupted(open), operations_);
}

bool FileStore::exists() const {
    struct stat status {};
    const auto look = [&] { return operations_.statusOfPath(directory_.c_str(), status); };
    return !directory_.empty() && uninterrupted(look) == 0 && S_ISDIR(status.st_mode);
}

std::optional<std::string> FileStore::read(std::string_view key) const {
    if (directory_.empty() || !namesAFile(key))
        return std::nullopt;
    const std::string path = directory_ + "/" + std::string(key);
    // Without O_NONBLOCK the open of a FIFO would wait for its writer.
    const Descriptor file = open(AT_FDCWD, path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY);
    struct stat status {};
    const auto look = [&] { return operations_.status(file.number(), status); };
    if (!file.isOpen() || uninterrupted(look) != 0 || !S_ISREG(status.st_mode) ||
        std::cmp_greater(status.st_size, maximumSize))
        return std::nullopt;

    std::string data;
    for (std::size_t length = 0;;) {
        // One byte more than expected, so that the end is usually found without growing.
        if (length == data.size())
            data.resize(length + std::max(chunkSize, static_cast<std::size_t>(status.st_size) + 1));
        const ssize_t count = uninterrupted([&] {
            return operations_.read(file.number(), data.data() + length, data.size() - length);
        });
        if (count < 0)
            return std::nullopt;
        length += static_cast<std::size_t>(count);
        if (length > maximumSize)
            return std::nullopt;
        if (count == 0) {
            data.resize(length);
            return data;
        }
    }
}

bool FileStore::holds(std::string_view key) const {
    if (directory_.empty() || !namesAFile(key))
        return false;
    const std::string path = directory_ + "/" + std::string(key);
    return open(AT_FDCWD, path.c_str(), O_PATH).isOpen() || errno != ENOENT;
}

bool FileStore::write(std::string_view key, std::string_view data) {
    if (directory_.empty() || !namesAFile(key) || data.size() > maximumSize)
        return false;
    Outcome outcome = Outcome::overtaken;
    for (int attempts = 0; outcome == Outcome::overtaken && attempts < attemptLimit; ++attempts)
        outcome = replace(key, data);
    return outcome == Outcome::stored;
}

FileStore::Outcome FileStore::replace(std::string_view key, std::string_view data) {
    if (missing_ == MissingDirectory::create && !makeDirectory())
        return Outcome::failed;
    const std::optional<Place> place = find(key);
    if (!place || !isReplaceable(*place))
        return Outcome::failed;
    removeStaleTemporaries(*place);
    const std::optional<std::string> temporary = writeTemporary(*place, data);
    if (!temporary)
        return Outcome::failed;
    const int directory = place->directory.number();
    const auto rename = [&] {
        return operations_.renameAt(directory, temporary->c_str(), place->name.c_str());
    };
    if (uninterrupted(rename) != 0) {
        const bool isGone = errno == ENOENT;
        remove(*place, *temporary);
        return isGone ? Outcome::overtaken : Outcome::failed;
    }
    // The new value is what everyone reads from here on. Should this fail, a power failure may
    // still bring the old one back, as whole as the new.
    uninterrupted([&] { return operations_.sync(directory); });
    return Outcome::stored;
}

bool FileStore::makeDirectory() {
    if (!makeDirectories(operations_, directory_))
        return false;
    // One that is there may be of a run that was ended while it made it.
    if (!std::exchange(isDirectorySynced_, true))
        syncDirectoryNames(operations_, directory_);
    return true;
}

std::optional<FileStore::Place> FileStore::find(std::string_view key) const {
    Place place{open(AT_FDCWD, directory_.c_str(), O_RDONLY | O_DIRECTORY), std::string(key)};
    for (int links = 0; links <= linkLimit && place.directory.isOpen(); ++links) {
        std::array<char, PATH_MAX> link{};
        const ssize_t length = uninterrupted([&] {
            return operations_.readLinkAt(place.directory.number(), place.name.c_str(), link.data(),
                                          link.size());
        });
        if (length < 0 && (errno == EINVAL || errno == ENOENT))
            return place; // not a link
        if (length <= 0 || static_cast<std::size_t>(length) == link.size())
            return std::nullopt;
        std::string target(link.data(), static_cast<std::size_t>(length));
        const std::size_t slash = target.rfind('/');
        if (slash != std::string::npos) {
            const std::string parent = target.substr(0, slash + 1);
            place.directory =
                open(place.directory.number(), parent.c_str(), O_RDONLY | O_DIRECTORY);
            target.erase(0, slash + 1);
        }
        if (target.empty() || target == "." || target == "..")
            return std::nullopt;
        place.name = std::move(target);
    }
    return std::nullopt;
}

bool FileStore::isReplaceable(const Place& place) const {
    struct stat status {};
    const auto look = [&] {
        return operations_.statusAt(place.directory.number(), place.name.c_str(), status);
    };
    if (uninterrupted(look) != 0)
        return errno == ENOENT;
    return S_ISREG(status.st_mode);
}

/// Another session of the user, or another user of the folder, may be writing at this moment.
bool FileStore::isInUse(const Place& place, const std::string& name) const {
    const Descriptor file =
        open(place.directory.number(), name.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_NOFOLLOW);
    const auto lock = [&] { return operations_.lock(file.number()); };
    return file.isOpen() && uninterrupted(lock) != 0 && errno == EWOULDBLOCK;
}

void FileStore::removeStaleTemporaries(const Place& place) const {
    // A temporary of this machine that nobody has open belongs to a process that has ended. One
    // that was opened just now, or closed to be renamed, may go too; its process writes again.
    for (const std::string& name : operations_.list(place.directory.number()))
        if (isTemporaryOfThisMachine(name, place.name) && !isInUse(place, name))
            remove(place, name);
}

void FileStore::remove(const Place& place, const std::string& name) const {
    uninterrupted([&] { return operations_.unlinkAt(place.directory.number(), name.c_str()); });
}

std::optional<std::string> FileStore::writeTemporary(const Place& place,
                                                     std::string_view data) const {
    const int directory = place.directory.number();
    const std::string name = nextTemporaryName(place.name);
    Descriptor file = open(directory, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW);
    if (!file.isOpen())
        return std::nullopt;
    uninterrupted([&] { return operations_.lock(file.number()); });
    // The umask can only have taken rights away; where the file system knows no modes there is
    // nothing to give back.
    uninterrupted(
        [&] { return operations_.changeModeAt(directory, name.c_str(), ownerReadsAndWrites); });
    if (fill(file, data))
        return name;
    remove(place, name);
    return std::nullopt;
}

bool FileStore::fill(Descriptor& file, std::string_view data) const {
    const auto sync = [&] { return operations_.sync(file.number()); };
    return file.writeAll(data) && uninterrupted(sync) == 0 && file.close();
}

} // namespace kestrel::linux_shell
