// The disk in memory does what a real one does, and loses what a power cut may lose.
#include "tests/linux/storage/files.h"
#include "tests/linux/storage/memory_disk.h"
#include "tests/linux/storage/temporary_folder.h"

#include <algorithm>
#include <cerrno>
#include <set>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>

namespace kestrel::tests {
namespace {

using linux_shell::FileOperations;

/// Calls of each kind, good and bad, below `root`; what each answered.
std::vector<std::string> answers(FileOperations& disk, const std::string& root) {
    std::vector<std::string> log;
    const auto note = [&log](const std::string& call, long result) {
        log.push_back(call + ": " + (result < 0 ? "errno " + std::to_string(errno) : "fine"));
        return static_cast<int>(result);
    };
    const auto path = [&root](const std::string& name) { return root + "/" + name; };
    struct stat status {};
    std::string buffer(100, '\0');

    note("make", disk.makeDirectory(path("a").c_str(), 0700));
    note("make again", disk.makeDirectory(path("a").c_str(), 0700));
    note("make too deep", disk.makeDirectory(path("x/y").c_str(), 0700));
    const int a = note("open", disk.openAt(AT_FDCWD, path("a").c_str(), O_DIRECTORY, 0));
    note("open nothing", disk.openAt(a, "none", O_RDONLY, 0));
    const int file = note("create", disk.openAt(a, "new", O_WRONLY | O_CREAT | O_EXCL, 0600));
    note("create again", disk.openAt(a, "new", O_WRONLY | O_CREAT | O_EXCL, 0600));
    note("as a directory", disk.openAt(a, "new", O_RDONLY | O_DIRECTORY, 0));
    note("below a file", disk.openAt(a, "new/x", O_RDONLY, 0));
    note("mode", disk.changeModeAt(a, "new", 0600));
    note("mode of nothing", disk.changeModeAt(a, "none", 0600));
    note("write", disk.write(file, "bytes", 5));
    note("sync", disk.sync(file));
    note("close", disk.close(file));
    note("close again", disk.close(file));
    note("rename", disk.renameAt(a, "new", "list"));
    note("rename nothing", disk.renameAt(a, "new", "list"));
    note("status", disk.statusAt(a, "list", status));
    log.push_back(std::to_string(status.st_size) + (S_ISREG(status.st_mode) ? " a file" : ""));
    note("status of a path", disk.statusOfPath(path("a/../a/./list").c_str(), status));
    note("status of nothing", disk.statusOfPath(path("none").c_str(), status));
    note("no link", disk.readLinkAt(a, "list", buffer.data(), buffer.size()));
    note("no file", disk.readLinkAt(a, "none", buffer.data(), buffer.size()));
    const int reading = note("open to read", disk.openAt(a, "list", O_RDONLY, 0));
    log.push_back(buffer.substr(
        0, static_cast<std::size_t>(disk.read(reading, buffer.data(), buffer.size()))));
    note("at the end", disk.read(reading, buffer.data(), buffer.size()));
    note("close", disk.close(reading));
    std::vector<std::string> names = disk.list(a);
    std::erase_if(names, [](const std::string& name) { return name == "." || name == ".."; });
    log.insert(log.end(), names.begin(), names.end());
    note("read a directory", disk.read(a, buffer.data(), buffer.size()));
    note("unlink", disk.unlinkAt(a, "list"));
    note("unlink nothing", disk.unlinkAt(a, "list"));
    note("sync the directory", disk.sync(a));
    note("close the directory", disk.close(a));
    return log;
}

TEST(MemoryDiskTest, AnswersAsTheSystemDoes) {
    const TemporaryFolder folder;
    MemoryDisk disk;
    disk.addDirectory("/folder");
    EXPECT_EQ(answers(disk, "/folder"),
              answers(linux_shell::systemFileOperations(), folder.path()));
}

TEST(MemoryDiskTest, FollowsLinks) {
    MemoryDisk disk;
    disk.addFile("/real/list", "bytes");
    disk.addLink("/home/folder", "../real");
    disk.addLink("/home/list", "folder/list");
    disk.addLink("/home/loop", "loop");
    EXPECT_EQ(disk.contents("/home/list"), "bytes");
    struct stat status {};
    EXPECT_EQ(disk.statusOfPath("/home/loop", status), -1);
    EXPECT_EQ(errno, ELOOP);
    EXPECT_EQ(disk.statusAt(AT_FDCWD, "/home/loop", status), 0);
    EXPECT_TRUE(S_ISLNK(status.st_mode));
}

/// "list" replaced the usual way, with the syncs that are asked for.
std::set<std::string> leftOfAWrite(bool syncsFile, bool syncsDirectory) {
    MemoryDisk disk;
    disk.addFile("/a/list", "old");
    const int directory = disk.openAt(AT_FDCWD, "/a", O_DIRECTORY, 0);
    const int file = disk.openAt(directory, "new", O_WRONLY | O_CREAT | O_EXCL, 0600);
    disk.write(file, "new!", 4);
    if (syncsFile)
        disk.sync(file);
    disk.renameAt(directory, "new", "list");
    if (syncsDirectory)
        disk.sync(directory);
    std::set<std::string> contents;
    for (const MemoryDisk& left : disk.afterPowerCut())
        contents.insert(left.contents("/a/list").value_or("nothing"));
    return contents;
}

TEST(MemoryDiskTest, AFileThatIsNotSyncedMayBeTorn) {
    using namespace std::string_literals;
    EXPECT_EQ(leftOfAWrite(false, true),
              (std::set{""s, "ne"s, "ne\0\0"s, "\0\0w!"s, "\0\0\0\0"s, "new!"s}));
}

TEST(MemoryDiskTest, ANameThatIsNotSyncedMayBeTheOldOne) {
    EXPECT_EQ(leftOfAWrite(true, false), (std::set<std::string>{"old", "new!"}));
    EXPECT_EQ(leftOfAWrite(true, true), std::set<std::string>{"new!"});
}

TEST(MemoryDiskTest, NamesMayReachTheDiskInAnyOrder) {
    MemoryDisk disk;
    disk.addFile("/a/list", "0");
    const int directory = disk.openAt(AT_FDCWD, "/a", O_DIRECTORY, 0);
    for (const char* const value : {"1", "2"}) {
        const int file = disk.openAt(directory, value, O_WRONLY | O_CREAT, 0600);
        disk.write(file, value, 1);
        disk.sync(file);
        disk.renameAt(directory, value, "list");
    }
    std::set<std::string> states;
    for (const MemoryDisk& left : disk.afterPowerCut()) {
        std::string state = left.contents("/a/list").value_or("nothing");
        for (const std::string& name : left.names("/a"))
            state += " " + name;
        states.insert(state);
    }
    EXPECT_EQ(states.count("0 list"), 1U);
    EXPECT_EQ(states.count("1 list"), 1U) << "the second rename came first or not at all";
    EXPECT_EQ(states.count("2 list"), 1U);
    EXPECT_EQ(states.count("0 1 2 list"), 1U) << "the files came and the renames did not";
    EXPECT_EQ(states.count("2 1 list"), 1U) << "so did the second rename, alone";
    EXPECT_EQ(states.lower_bound("nothing"), states.end());
}

} // namespace
} // namespace kestrel::tests
