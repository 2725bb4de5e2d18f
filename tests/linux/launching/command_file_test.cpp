#include "shells/linux/launching/command_file.h"

#include "tests/linux/launching/launching_fixture.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace kestrel::linux_shell {
namespace {

namespace fs = std::filesystem;

class CommandFileTest : public testing::Test {
  protected:
    std::string make(const std::string& name, std::string_view bytes, unsigned mode) {
        writeFile(folder.path() / name, bytes, mode);
        return folder.path() / name;
    }

    TemporaryFolder folder;
};

TEST_F(CommandFileTest, FollowsTheTableOfContentsNamesAndBits) {
    struct Row {
        const char* name;
        std::string_view bytes;
        unsigned mode;
        FileKind kind;
    };
    const std::vector<Row> table = {
        {"tool", "#!/bin/sh\n", 0755, FileKind::runnable},
        {"tool-without-bit", "#!/bin/sh\n", 0644, FileKind::document},
        {"image", std::string_view("\177ELF\2\1", 6), 0755, FileKind::runnable},
        {"image-without-bit", std::string_view("\177ELF\2\1", 6), 0644, FileKind::document},
        {"almost-image", "\177EL", 0755, FileKind::document},
        {"plain.sh", "echo hi\n", 0755, FileKind::runnable},
        {"plain.command", "echo hi\n", 0755, FileKind::runnable},
        {"edit.sh", "echo hi\n", 0644, FileKind::document},
        {"edit.command", "echo hi\n", 0644, FileKind::document},
        {"photo-on-a-stick.jpg", "\xff\xd8\xff", 0755, FileKind::document},
        {"empty", "", 0755, FileKind::document},
        {"hash", "#", 0755, FileKind::document},
        {"entry.desktop", "[Desktop Entry]\n", 0644, FileKind::desktopEntry},
        {"entry-with-bit.desktop", "#!/usr/bin/env xdg-open\n", 0755, FileKind::desktopEntry},
        {"notes.txt", "text", 0644, FileKind::document},
    };
    for (const Row& row : table)
        EXPECT_EQ(classifyFile(make(row.name, row.bytes, row.mode)), row.kind) << row.name;
}

TEST_F(CommandFileTest, AFolderIsAFolderWhateverItsName) {
    EXPECT_EQ(classifyFile(folder.path()), FileKind::folder);
    fs::create_directory(folder.path() / "x.desktop");
    EXPECT_EQ(classifyFile(folder.path() / "x.desktop"), FileKind::folder);
}

TEST_F(CommandFileTest, MissingAndDanglingAreNothing) {
    EXPECT_EQ(classifyFile(folder.path() / "missing"), FileKind::nothing);
    EXPECT_EQ(classifyFile(""), FileKind::nothing);
    fs::create_symlink("nowhere", folder.path() / "dangling.sh");
    EXPECT_EQ(classifyFile(folder.path() / "dangling.sh"), FileKind::nothing);
    fs::create_symlink("loop", folder.path() / "loop");
    EXPECT_EQ(classifyFile(folder.path() / "loop"), FileKind::nothing);
}

TEST_F(CommandFileTest, ALinkIsWhatItLeadsTo) {
    make("tool", "#!/bin/sh\n", 0755);
    fs::create_symlink("tool", folder.path() / "link");
    EXPECT_EQ(classifyFile(folder.path() / "link"), FileKind::runnable);
}

TEST_F(CommandFileTest, SpecialFilesAreNothingAndDoNotBlock) {
    const fs::path pipe = folder.path() / "pipe.sh";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0755), 0);
    EXPECT_EQ(classifyFile(pipe), FileKind::nothing);
    EXPECT_EQ(classifyFile("/dev/null"), FileKind::nothing);

    const int endpoint = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    struct sockaddr_un address {};
    address.sun_family = AF_UNIX;
    const std::string name = folder.path() / "socket";
    ASSERT_LT(name.size(), sizeof address.sun_path);
    name.copy(address.sun_path, name.size());
    ASSERT_EQ(::bind(endpoint, reinterpret_cast<struct sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(classifyFile(name), FileKind::nothing);
    ::close(endpoint);
}

TEST_F(CommandFileTest, APathTooLongForTheSystemIsNothing) {
    EXPECT_EQ(classifyFile('/' + std::string(5000, 'a')), FileKind::nothing);
}

} // namespace
} // namespace kestrel::linux_shell
