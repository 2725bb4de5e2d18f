#include "shells/linux/launching/gio_workspace.h"

#include "tests/linux/launching/launching_fixture.h"

#include <fcntl.h>
#include <glib.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace kestrel::linux_shell {
namespace {

namespace fs = std::filesystem;

class GioWorkspaceTest : public LaunchingTest {
  protected:
    /// Hands the path over and returns once everything has been started.
    static void openApplication(std::string_view path, const Activation& activation = {}) {
        LaunchWorker worker;
        GioWorkspace(worker, [activation] { return activation; }).openApplication(path);
    }
    static void openFile(std::string_view path, const Activation& activation = {}) {
        LaunchWorker worker;
        GioWorkspace(worker, [activation] { return activation; }).openFile(path);
    }

    /// Starts the recorder under the name "last" and checks that nothing else was started before.
    void expectNothingElse() {
        makeRecorder(files() / "last");
        openApplication((files() / "last").string());
        EXPECT_EQ(waitForRecord().arguments, std::vector<std::string>{files() / "last"});
        EXPECT_FALSE(fs::exists(home() / "terminal.pid")) << "a terminal was opened";
    }
};

/// Of a set of signals, as the system writes it, those that a program can set: the two that the C
/// library keeps for its threads are ignored in whatever make starts, and nothing can change that.
std::string settableSignals(const std::string& set) {
    constexpr unsigned long long ofTheLibrary = 3ULL << 31; // 32 and 33
    std::ostringstream text;
    text << std::hex << (std::stoull(set, nullptr, 16) & ~ofTheLibrary);
    return text.str();
}

/// Everything that every child is promised.
void expectCleanStart(const LaunchRecord& record, const fs::path& folder) {
    EXPECT_EQ(record.fields.at("folder"), folder);
    EXPECT_EQ(record.fields.at("leader"), "yes");
    EXPECT_NE(record.fields.at("parent"), std::to_string(::getpid()));
    EXPECT_EQ(record.fields.at("SigBlk"), "0000000000000000");
    EXPECT_EQ(settableSignals(record.fields.at("SigIgn")), "0");
    EXPECT_EQ(record.descriptors, (std::map<std::string, std::string>{
                                      {"0", "/dev/null"}, {"1", "/dev/null"}, {"2", "/dev/null"}}));
}

/// While it lives this process ignores and blocks signals and has an inheritable descriptor.
class UntidyParent {
  public:
    UntidyParent() : leak_(::open("/dev/zero", O_RDONLY)) {
        std::signal(SIGPIPE, SIG_IGN);
        std::signal(SIGUSR2, SIG_IGN);
        sigset_t some;
        sigemptyset(&some);
        sigaddset(&some, SIGUSR1);
        sigaddset(&some, SIGTERM);
        ::pthread_sigmask(SIG_BLOCK, &some, &before_);
    }
    ~UntidyParent() {
        ::pthread_sigmask(SIG_SETMASK, &before_, nullptr);
        std::signal(SIGPIPE, SIG_DFL);
        std::signal(SIGUSR2, SIG_DFL);
        ::close(leak_);
    }
    UntidyParent(const UntidyParent&) = delete;
    UntidyParent& operator=(const UntidyParent&) = delete;

  private:
    int leak_;
    sigset_t before_{};
};

TEST_F(GioWorkspaceTest, AnExecutableStartsCleanly) {
    const UntidyParent untidy;
    openApplication(recorder());
    const LaunchRecord record = waitForRecord();
    EXPECT_EQ(record.arguments, std::vector<std::string>{recorder()});
    expectCleanStart(record, home());
}

TEST_F(GioWorkspaceTest, ADesktopEntryStartsCleanly) {
    const UntidyParent untidy;
    openApplication(makeEntry("plain.desktop", "Exec=" + recorder() + "\n"));
    const LaunchRecord record = waitForRecord();
    EXPECT_EQ(record.arguments, std::vector<std::string>{recorder()});
    expectCleanStart(record, home());
}

/// "token id", as the recorder has found them in its environment.
std::string activationOf(const LaunchRecord& record) {
    std::string found;
    for (const char* name : {"XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID"}) {
        const auto field = record.fields.find(name);
        found += (found.empty() ? "" : " ") + (field == record.fields.end() ? "-" : field->second);
    }
    return found;
}

TEST_F(GioWorkspaceTest, WhatIsStartedHasTheActivation) {
    writeFile(files() / "a.txt", "text");
    const Activation activation{.token = "token", .startupId = "id"};
    const std::string exec = "Exec=" + recorder() + "\n";
    for (const std::string& application :
         {recorder(), makeEntry("plain.desktop", exec),
          makeEntry("quiet.desktop", exec + "StartupNotify=false\n"),
          makeEntry("noname.desktop", exec + "DBusActivatable=true\n")}) {
        SCOPED_TRACE(application);
        openApplication(application, activation);
        EXPECT_EQ(activationOf(waitForRecord()), "token id");
        forgetRecords();
    }
    openFile((files() / "a.txt").string(), activation);
    EXPECT_EQ(activationOf(waitForRecord()), "token id");
}

TEST_F(GioWorkspaceTest, WithoutAnActivationNoneIsMadeUp) {
    openApplication(recorder());
    EXPECT_EQ(activationOf(waitForRecord()), "- -");
    forgetRecords();
    openApplication(makeEntry("plain.desktop", "Exec=" + recorder() + "\n"),
                    {.token = {}, .startupId = "id"});
    EXPECT_EQ(activationOf(waitForRecord()), "- id");
}

TEST_F(GioWorkspaceTest, TheActivationIsTheTerminalsAndNotThatOfWhatRunsInIt) {
    installTerminal("xterm");
    const Activation activation{.token = "token", .startupId = "id"};
    openApplication(makeEntry("window.desktop", "Terminal=true\nExec=" + recorder() + "\n"),
                    activation);
    EXPECT_EQ(activationOf(waitForRecord()), "- -");
    EXPECT_EQ(readFile(home() / "terminal.activation"), "token id");
    forgetRecords();
    writeFile(files() / "file.sh", recorder() + "\n", 0755);
    openFile((files() / "file.sh").string(), activation);
    EXPECT_EQ(activationOf(waitForRecord()), "- -");
}

TEST_F(GioWorkspaceTest, APathThatCannotNameAFileTakesNoActivation) {
    LaunchWorker worker;
    int taken = 0;
    GioWorkspace workspace(worker, [&taken] {
        ++taken;
        return Activation{};
    });
    workspace.openApplication("relative");
    workspace.openFile("~/file");
    EXPECT_EQ(taken, 0);
    workspace.openApplication("/missing");
    EXPECT_EQ(taken, 1);
}

TEST_F(GioWorkspaceTest, ChildrenAreNotOurs) {
    openApplication(recorder());
    waitForRecord();
    openApplication(makeEntry("plain.desktop", "Exec=" + recorder() + "\n"));
    EXPECT_TRUE(waitUntil([this] { return records().size() == 2; }));
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST_F(GioWorkspaceTest, WithoutAHomeFolderChildrenStartInTheRoot) {
    LaunchWorker worker;
    const std::string real = home();
    ::setenv("HOME", (real + "/missing").c_str(), 1);
    // The recorder looks for its folder in HOME, so a script has to tell.
    writeFile(files() / "where", "#!/bin/sh\npwd > '" + real + "/where'\n", 0755);
    GioWorkspace(worker).openApplication((files() / "where").string());
    EXPECT_TRUE(waitUntil([&] { return readFile(real + "/where") == "/\n"; }));
}

TEST_F(GioWorkspaceTest, ScriptsWithoutAnInterpreterLineRunInTheShell) {
    writeFile(files() / "script", "'" + recorder() + "' \"$0\"\n", 0755);
    openApplication((files() / "script").string());
    EXPECT_EQ(waitForRecord().arguments,
              (std::vector<std::string>{recorder(), files() / "script"}));
}

TEST_F(GioWorkspaceTest, PathsAreTakenByteForByte) {
    const std::vector<std::string> names = {"-rf",
                                            "two words",
                                            " leading and trailing ",
                                            "it's \"quoted\"",
                                            "line\nfeed",
                                            "$HOME `id` \\ ; & | * ? %f %% ~",
                                            "\xff\xfe not UTF-8",
                                            "\xc3\xa9t\xc3\xa9",
                                            std::string(255, 'n')};
    for (const std::string& name : names) {
        SCOPED_TRACE(name);
        const std::string path = files().string() + '/' + name;
        makeRecorder(path);
        openApplication(path);
        EXPECT_EQ(waitForRecord().arguments, std::vector<std::string>{path});
        forgetRecords();
    }
}

TEST_F(GioWorkspaceTest, TheLongestPathOfTheSystemIsLaunched) {
    // 4095 bytes and the NUL are the most that the system takes.
    fs::path path = files();
    while (path.string().size() < 4095 - 202)
        path /= std::string(200, 'd');
    path /= std::string(4095 - path.string().size() - 1, 'x');
    ASSERT_EQ(path.string().size(), 4095U);
    fs::create_directories(path.parent_path());
    makeRecorder(path);
    openApplication(path.string());
    EXPECT_EQ(waitForRecord().arguments, std::vector<std::string>{path});
}

TEST_F(GioWorkspaceTest, WhatIsNoApplicationStartsNothing) {
    writeFile(files() / "text", "#!/bin/sh\n", 0644);
    fs::create_directory(files() / "App.AppDir");
    fs::create_directory(files() / "folder.desktop");
    makeRecorder(files() / "App.AppDir" / "AppRun");
    ASSERT_EQ(::mkfifo((files() / "pipe").c_str(), 0755), 0);
    ASSERT_EQ(::mkfifo((files() / "pipe.desktop").c_str(), 0755), 0);
    makeRecorder(home() / "tool");
    makeRecorder(files() / "cut");
    const std::string withNul = (files() / "cut").string() + std::string("\0x", 2);
    const std::vector<std::string> paths = {"",
                                            " ",
                                            "~/tool",
                                            "tool",
                                            "./tool",
                                            files() / "missing",
                                            files() / "text",
                                            files() / "App.AppDir",
                                            files() / "folder.desktop",
                                            files() / "pipe",
                                            files() / "pipe.desktop",
                                            "/dev/null",
                                            "/",
                                            recorder() + " ",
                                            recorder() + "/",
                                            '/' + std::string(4095, 'a'),
                                            withNul};
    fs::current_path(home());
    for (const std::string& path : paths) {
        openApplication(path);
        openApplication(path);
    }
    expectNothingElse();
}

TEST_F(GioWorkspaceTest, BadDesktopEntriesStartNothing) {
    const std::string exec = "Exec=" + recorder() + "\n";
    makeEntry("noexec.desktop", "Icon=x\n");
    makeEntry("emptyexec.desktop", "Exec=\n");
    makeEntry("missingprogram.desktop", "Exec=/nowhere/program\n");
    makeEntry("quoting.desktop", "Exec=" + recorder() + " \"unfinished\n");
    makeEntry("tryexec.desktop", "TryExec=/nowhere/program\n" + exec);
    makeEntry("workingfolder.desktop", "Path=/nowhere\n" + exec);
    writeFile(files() / "type.desktop", "[Desktop Entry]\nType=Link\nName=x\n" + exec);
    writeFile(files() / "notype.desktop", "[Desktop Entry]\nName=x\n" + exec);
    writeFile(files() / "group.desktop", "[Other]\nType=Application\nName=x\n" + exec);
    writeFile(files() / "empty.desktop", "");
    writeFile(files() / "noise.desktop", std::string(4096, '\xff'));
    fs::create_symlink("nowhere", files() / "dangling.desktop");
    for (const auto& entry : fs::directory_iterator(files())) {
        openApplication(entry.path().string());
        openFile(entry.path().string());
    }
    expectNothingElse();
}

TEST_F(GioWorkspaceTest, AnEntryOfASizeThatFillsTheMemoryStartsNothing) {
    const std::string entry = makeEntry("huge.desktop", "Exec=" + recorder() + "\n");
    fs::resize_file(entry, std::uintmax_t{1} << 40);
    openApplication(entry);
    expectNothingElse();
}

TEST_F(GioWorkspaceTest, HiddenEntriesAreLaunchedSinceTheUserChoseThem) {
    openApplication(
        makeEntry("hidden.desktop", "Hidden=true\nNoDisplay=true\nExec=" + recorder() + "\n"));
    waitForRecord();
}

TEST_F(GioWorkspaceTest, TheCommandLineOfAnEntryIsReadAsItsFormatSays) {
    const std::string path =
        makeEntry("fields.desktop", "Icon=pic\nExec=" + recorder() +
                                        " %f %U \"two words\" 100%% %c \"\\\\$x\" %k %i\n");
    openApplication(path);
    EXPECT_EQ(waitForRecord().arguments,
              (std::vector<std::string>{recorder(), "two words", "100%", "Test", "$x", path,
                                        "--icon", "pic"}));
}

TEST_F(GioWorkspaceTest, TheWorkingFolderOfAnEntryWins) {
    openApplication(
        makeEntry("folder.desktop", "Path=" + files().string() + "\nExec=" + recorder() + "\n"));
    expectCleanStart(waitForRecord(), files());
}

TEST_F(GioWorkspaceTest, AnEntryThatNeedsATerminalRunsInTheUsersOwn) {
    installTerminal("xfce4-terminal");
    const std::string path =
        makeEntry("top.desktop", "Terminal=true\nExec=" + recorder() + " \"two words\" 100%% %k\n");
    openApplication(path);
    const LaunchRecord record = waitForRecord();
    EXPECT_EQ(record.arguments, (std::vector<std::string>{recorder(), "two words", "100%", path}));
    EXPECT_EQ(record.fields.at("folder"), home());
    EXPECT_TRUE(record.descriptors.at("0").starts_with("/dev/pts/"));
    EXPECT_TRUE(readFile(home() / "terminal.arguments").starts_with("-x"));
}

TEST_F(GioWorkspaceTest, ATerminalWithAnOddPathRunsEntriesToo) {
    installTerminal("my $HOME 'term'");
    openApplication(makeEntry("top.desktop", "Terminal=true\nExec=" + recorder() + "\n"));
    EXPECT_EQ(waitForRecord().arguments, std::vector<std::string>{recorder()});
}

TEST_F(GioWorkspaceTest, WithoutATerminalAnEntryThatNeedsOneStartsNothing) {
    ::setenv("PATH", programs().c_str(), 1);
    openApplication(makeEntry("top.desktop", "Terminal=true\nExec=" + recorder() + "\n"));
    expectNothingElse();
}

TEST_F(GioWorkspaceTest, WithoutABusAnActivatableEntryRunsItsCommandLine) {
    const std::string path =
        makeEntry("org.example.Test.desktop", "DBusActivatable=true\nExec=" + recorder() + " a\n");
    openApplication(path);
    expectCleanStart(waitForRecord(), home());
}

TEST_F(GioWorkspaceTest, AnEntryOpenedAsAFileIsLaunched) {
    openFile(makeEntry("plain.desktop", "Exec=" + recorder() + "\n"));
    expectCleanStart(waitForRecord(), home());
}

TEST_F(GioWorkspaceTest, ACommandFileRunsInATerminal) {
    installTerminal("xterm");
    ::setenv("SHELL", "/bin/sh", 1);
    for (const std::string name : {"tool.sh", "it's\n$HOME %f -x \xff.command"}) {
        SCOPED_TRACE(name);
        const std::string path = files().string() + '/' + name;
        writeFile(path, "#!/bin/sh\nexec '" + recorder() + "' \"$0\" \"$#\"\n", 0755);
        openFile(path);
        const LaunchRecord record = waitForRecord();
        EXPECT_EQ(record.arguments, (std::vector<std::string>{recorder(), path, "0"}));
        EXPECT_EQ(record.fields.at("folder"), home());
        EXPECT_TRUE(record.descriptors.at("0").starts_with("/dev/pts/"));
        EXPECT_TRUE(fs::is_empty(runtime()));
        forgetRecords();
    }
}

TEST_F(GioWorkspaceTest, AfterACommandFileTheShellStays) {
    installTerminal("xterm");
    ::setenv("SHELL", "/bin/sh", 1);
    writeFile(files() / "tool.sh", "#!/bin/sh\ntouch ~/started\nexec sleep 100\n", 0755);
    openFile((files() / "tool.sh").string());
    ASSERT_TRUE(waitUntil([this] { return fs::exists(home() / "started"); }));
    type("\x03");
    type("echo typed > ~/typed\n");
    EXPECT_TRUE(waitUntil([this] { return readFile(home() / "typed") == "typed\n"; }))
        << readFile(home() / "transcript");
}

class DefaultApplicationTest : public GioWorkspaceTest {};

TEST_F(DefaultApplicationTest, ADocumentGoesToItsDefaultApplicationByteForByte) {
    for (const std::string name :
         {"-notes.txt", "two words.txt", "it's\n\"$HOME\" %f%%.txt", "\xff\xfe.txt"}) {
        SCOPED_TRACE(name);
        const std::string path = files().string() + '/' + name;
        writeFile(path, "some text\n");
        openFile(path);
        const LaunchRecord record = waitForRecord();
        EXPECT_EQ(record.arguments, (std::vector<std::string>{recorder(), "open", path}));
        expectCleanStart(record, home());
        forgetRecords();
    }
}

TEST_F(DefaultApplicationTest, AScriptWithoutTheBitIsATextToBeEdited) {
    writeFile(files() / "script", "#!/bin/sh\ntouch ~/ran\n", 0644);
    openFile((files() / "script").string());
    EXPECT_EQ(waitForRecord().arguments,
              (std::vector<std::string>{recorder(), "open", files() / "script"}));
    EXPECT_FALSE(fs::exists(home() / "ran"));
}

TEST_F(DefaultApplicationTest, AFolderGoesToItsDefaultApplication) {
    openFile(files().string());
    EXPECT_EQ(waitForRecord().arguments, (std::vector<std::string>{recorder(), "browse", files()}));
}

TEST_F(DefaultApplicationTest, ADefaultApplicationMayNeedATerminal) {
    installTerminal("kitty");
    writeFile(files() / "some notes.html", "<!DOCTYPE html><html></html>\n");
    openFile((files() / "some notes.html").string());
    const LaunchRecord record = waitForRecord();
    EXPECT_EQ(record.arguments,
              (std::vector<std::string>{recorder(), "edit", files() / "some notes.html"}));
    EXPECT_TRUE(record.descriptors.at("0").starts_with("/dev/pts/"));
}

TEST_F(DefaultApplicationTest, WhatCannotBeOpenedStartsNothing) {
    ASSERT_EQ(::mkfifo((files() / "pipe.txt").c_str(), 0644), 0);
    fs::create_symlink("nowhere", files() / "dangling.txt");
    writeFile(home() / "notes.txt", "text\n");
    fs::current_path(home());
    for (const std::string path :
         {files() / "pipe.txt", files() / "dangling.txt", files() / "missing.txt",
          fs::path("notes.txt"), fs::path("~/notes.txt"), fs::path(""), fs::path("/dev/null")})
        openFile(path);
    expectNothingElse();
}

} // namespace
} // namespace kestrel::linux_shell
