#include "shells/linux/launching/shell_terminal.h"

#include "shells/linux/launching/gio_workspace.h"
#include "tests/linux/launching/launching_fixture.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <fstream>
#include <glib.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kestrel::linux_shell {
namespace {

namespace fs = std::filesystem;

class ShellTerminalTest : public LaunchingTest {
  protected:
    static void run(std::string_view command) {
        LaunchWorker worker;
        ShellTerminal(worker, [] {
            return Activation{.token = "token", .startupId = "id"};
        }).runInNewWindow(command);
    }

    testing::AssertionResult homeFileBecomes(const std::string& name, const std::string& expected) {
        if (waitUntil([&] { return readFile(home() / name) == expected; }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure()
               << name << " holds \"" << readFile(home() / name).substr(0, 300)
               << "\"; the terminal showed:\n"
               << readFile(home() / "transcript");
    }

    /// A shell may keep files of its own in the runtime folder.
    bool hasScratch() const {
        for (const auto& entry : fs::directory_iterator(runtime()))
            if (entry.path().filename().string().starts_with("kestrel"))
                return true;
        return false;
    }

    testing::AssertionResult scratchIsGone() const {
        if (waitUntil([this] { return !hasScratch(); }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "a scratch folder is left in the runtime folder";
    }
};

std::string utf8(char32_t character) {
    std::array<char, 6> bytes{};
    return {bytes.data(), static_cast<std::size_t>(g_unichar_to_utf8(character, bytes.data()))};
}

/// A shell and how some things are said in it.
struct ShellCase {
    const char* name;
    const char* setVariable; ///< sets x to 5
    const char* closeQuote;  ///< what ends the line that an open quote has begun; may be empty
};

void PrintTo(const ShellCase& shell, std::ostream* out) { *out << shell.name; }

class TypedCommandTest : public ShellTerminalTest, public testing::WithParamInterface<ShellCase> {
  protected:
    void SetUp() override {
        const std::string program = installedProgram(GetParam().name);
        if (program.empty())
            GTEST_SKIP() << "THE SHELL " << GetParam().name
                         << " IS NOT INSTALLED: typing into it is not tested";
        ::setenv("SHELL", program.c_str(), 1);
        ::setenv("ENV", (home() / ".shrc").c_str(), 1);
        installTerminal("xterm");
        const std::string common = "alias greet='echo hello'\n";
        writeFile(home() / ".bashrc", common + "PS1='ready> '\n");
        writeFile(home() / ".zshrc", common + "PS1='ready> '\n");
        writeFile(home() / ".shrc", common);
        fs::create_directories(fishConfiguration().parent_path());
        writeFile(fishConfiguration(), common + "set -g fish_greeting\n");
    }

    static fs::path fishConfiguration() {
        return fs::path(std::getenv("XDG_CONFIG_HOME")) / "fish" / "config.fish";
    }
};

TEST_P(TypedCommandTest, TheTextArrivesByteForByte) {
    const std::string text =
        "\"double\" $HOME ${x} $(id) `id` !bang !! \\n a\\b # % %s ~ * ? [a] {a,b} <>|&; \t tab\n"
        "second line\n\n-dash \xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80 end ";
    run("printf %s '" + text + "' > ~/out");
    EXPECT_TRUE(homeFileBecomes("out", text));
    EXPECT_TRUE(scratchIsGone());
}

TEST_P(TypedCommandTest, SixtyFourKibibytesArriveWhole) {
    std::string text;
    while (text.size() < 65536)
        text += "line " + std::to_string(text.size()) + (text.size() % 3 == 0 ? "\n" : " ");
    run("printf %s '" + text + "' > ~/out");
    EXPECT_TRUE(homeFileBecomes("out", text));
}

TEST_P(TypedCommandTest, ATextLongerThanAWordOfACommandLineArrivesWhole) {
    // The system takes no single argument and no variable of 128 KiB.
    for (const std::size_t size : {131071U, 131072U, 1048576U}) {
        std::string text;
        while (text.size() < size)
            text += "line " + std::to_string(text.size()) + (text.size() % 3 == 0 ? "\n" : " ");
        std::string command = "greet > ~/greeting; printf %s '";
        const std::string_view after = "' > ~/out";
        text.resize(size - command.size() - after.size(), '.');
        run(command.append(text).append(after));
        EXPECT_TRUE(homeFileBecomes("out", text)) << size;
        EXPECT_EQ(readFile(home() / "greeting"), "hello\n");
        EXPECT_TRUE(scratchIsGone());
    }
}

TEST_P(TypedCommandTest, EveryCharacterArrives) {
    std::string text;
    for (char32_t character = 1; character < 0x100; ++character)
        if (character != U'\'')
            text += utf8(character);
    // Some shells use those that mean nothing, or are private, for their own purposes.
    for (const char32_t first : {U'\u2028', U'\ufeff', U'\ue000', U'\ue0b0', U'\ue0f0', U'\uf600',
                                 U'\uf880', U'\ufdd0', U'\ufff0', U'\U0010fff0'})
        for (char32_t character = first; character < first + 16; ++character)
            text += utf8(character);
    run("printf %s '" + text + "' > ~/out");
    EXPECT_TRUE(homeFileBecomes("out", text));
}

TEST_P(TypedCommandTest, AControlCharacterAtTheBeginningIsPartOfTheText) {
    for (const char character : {'\x01', '\x02', '\x1b', '\x7f'}) {
        const std::string name = std::string(1, character) + "run";
        writeFile(programs() / name, "#!/bin/sh\nprintf %s \"$1\" > ~/out\n", 0755);
        run(name + " 'a" + character + "b'");
        EXPECT_TRUE(homeFileBecomes("out", std::string("a") + character + "b"));
    }
}

TEST_P(TypedCommandTest, ATextWithANulRunsNothing) {
    using namespace std::string_literals;
    for (const std::string& text : {"echo one >> ~/out\0"s, "\0echo two >> ~/out"s,
                                    "echo three >> ~/out\n\0echo four >> ~/out"s}) {
        run(text);
        EXPECT_FALSE(hasScratch());
    }
    run("echo last >> ~/out");
    EXPECT_TRUE(homeFileBecomes("out", "last\n"));
    EXPECT_EQ(std::ranges::count(readFile(home() / "terminal.pid"), '\n'), 1);
}

TEST_P(TypedCommandTest, TheUsersVariablesAreLeftAlone) {
    const char* const names[] = {"folder", "shell", "text", "size", "file", "length"};
    for (const char* name : names)
        ::setenv(name, "the user's", 1);
    run("env | grep \"=the user's\" | sort > ~/list; mv ~/list ~/out");
    EXPECT_TRUE(homeFileBecomes("out", "file=the user's\nfolder=the user's\nlength=the user's\n"
                                       "shell=the user's\nsize=the user's\ntext=the user's\n"));
    for (const char* name : names)
        ::unsetenv(name);
}

TEST_P(TypedCommandTest, SeveralLinesRunInTurn) {
    run("echo one >> ~/out\necho two >> ~/out\n\necho three >> ~/out\n");
    EXPECT_TRUE(homeFileBecomes("out", "one\ntwo\nthree\n"));
}

TEST_P(TypedCommandTest, ItRunsInTheHomeFolder) {
    run("pwd > ~/out");
    EXPECT_TRUE(homeFileBecomes("out", home().string() + "\n"));
}

TEST_P(TypedCommandTest, TheUsersAliasesAreLoaded) {
    run("greet > ~/out");
    EXPECT_TRUE(homeFileBecomes("out", "hello\n"));
}

TEST_P(TypedCommandTest, WhatTheUserHasPutInPlaceOfProgramsChangesNoText) {
    for (const char* name : {".bashrc", ".zshrc", ".shrc"})
        std::ofstream(home() / name, std::ios::app)
            << "cat() { echo replaced; }\nrm() { :; }\nhistory() { :; }\nexec 3</dev/null\n";
    std::ofstream(fishConfiguration(), std::ios::app)
        << "function cat; echo replaced; end\nfunction rm; end\n";
    for (const std::size_t length : {10U, 200000U}) {
        const std::string text(length, 'x');
        run("printf %s " + text + " > ~/out");
        EXPECT_TRUE(homeFileBecomes("out", text));
        EXPECT_TRUE(scratchIsGone());
    }
}

TEST_P(TypedCommandTest, ThePromptStaysInTheSameShell) {
    if (std::string_view(GetParam().name) == "dash") {
        // It has no way to take a text over: only the folder and a new prompt are there.
        run("echo first > ~/out");
        ASSERT_TRUE(homeFileBecomes("out", "first\n"));
        type("greet > ~/out\n");
        EXPECT_TRUE(homeFileBecomes("out", "hello\n"));
        return;
    }
    run(std::string("cd /usr; ") + GetParam().setVariable + "; echo first > ~/out");
    ASSERT_TRUE(homeFileBecomes("out", "first\n"));
    type("echo $x $PWD > ~/out\n");
    EXPECT_TRUE(homeFileBecomes("out", "5 /usr\n"));
}

TEST_P(TypedCommandTest, ControlCStopsTheCommandAndNotTheShell) {
    run("touch ~/started; sleep 100");
    ASSERT_TRUE(waitUntil([this] { return fs::exists(home() / "started"); }))
        << readFile(home() / "transcript");
    // The signal has to meet the sleep, not the moment between the two commands.
    for (int attempt = 0; attempt < 20 && !fs::exists(home() / "out"); ++attempt) {
        type("\x03");
        type("echo alive > ~/out\n");
        waitUntil([this] { return fs::exists(home() / "out"); }, std::chrono::seconds(1));
    }
    EXPECT_TRUE(homeFileBecomes("out", "alive\n"));
}

TEST_P(TypedCommandTest, AnUnfinishedQuoteDoesNotSwallowTheShell) {
    run("echo 'unfinished");
    ASSERT_TRUE(scratchIsGone());
    type(GetParam().closeQuote);
    type("echo alive > ~/out\n");
    EXPECT_TRUE(homeFileBecomes("out", "alive\n"));
}

TEST_P(TypedCommandTest, ALeadingDashIsPartOfTheText) {
    run("-c; echo next > ~/out");
    EXPECT_TRUE(homeFileBecomes("out", "next\n"));
}

TEST_P(TypedCommandTest, NothingOfOursStaysInTheEnvironment) {
    run("env > ~/env; echo done > ~/out");
    ASSERT_TRUE(homeFileBecomes("out", "done\n"));
    EXPECT_EQ(readFile(home() / "env").find("KESTREL"), std::string::npos);
    EXPECT_EQ(readFile(home() / "env").find("ZDOTDIR"), std::string::npos);
    // The activation was the terminal's.
    EXPECT_EQ(readFile(home() / "terminal.activation"), "token id");
    EXPECT_EQ(readFile(home() / "env").find("XDG_ACTIVATION_TOKEN"), std::string::npos);
    EXPECT_EQ(readFile(home() / "env").find("DESKTOP_STARTUP_ID"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(Shells, TypedCommandTest,
                         testing::Values(ShellCase{"bash", "x=5", ""},
                                         ShellCase{"zsh", "x=5", "'\n"},
                                         ShellCase{"fish", "set x 5", ""},
                                         ShellCase{"dash", "x=5", ""}),
                         [](const auto& row) { return std::string(row.param.name); });

class BashTest : public ShellTerminalTest {
  protected:
    void SetUp() override {
        if (installedProgram("bash").empty())
            GTEST_SKIP() << "BASH IS NOT INSTALLED: typing into it is not tested";
        ::setenv("SHELL", installedProgram("bash").c_str(), 1);
        installTerminal("xterm");
    }
};

TEST_F(BashTest, ThePromptCommandOfTheUserIsKept) {
    writeFile(home() / ".bashrc", "PROMPT_COMMAND='echo x >> ~/prompts'\n");
    run("echo first > ~/out");
    ASSERT_TRUE(homeFileBecomes("out", "first\n"));
    type("declare -p PROMPT_COMMAND > ~/out\n");
    EXPECT_TRUE(homeFileBecomes("out", "declare -- PROMPT_COMMAND=\"echo x >> ~/prompts\"\n"));
    EXPECT_TRUE(homeFileBecomes("prompts", "x\nx\nx\n"));
}

TEST_F(BashTest, AListOfPromptCommandsIsKept) {
    writeFile(home() / ".bashrc", "PROMPT_COMMAND=('echo a >> ~/prompts' 'true')\n");
    run("echo first > ~/out");
    ASSERT_TRUE(homeFileBecomes("out", "first\n"));
    type("declare -p PROMPT_COMMAND > ~/out\n");
    EXPECT_TRUE(homeFileBecomes(
        "out", "declare -a PROMPT_COMMAND=([0]=\"echo a >> ~/prompts\" [1]=\"true\")\n"));
}

TEST_F(BashTest, ALongTextLeavesRoomForProgramsWhereEveryVariableIsExported) {
    writeFile(home() / ".bashrc", "set -a\nPROMPT_COMMAND='touch ~/prompt'\n");
    run("env > ~/env; echo done > ~/out; #" + std::string(200000, '.'));
    ASSERT_TRUE(homeFileBecomes("out", "done\n"));
    EXPECT_EQ(readFile(home() / "env").find("kestrel_"), std::string::npos);
    EXPECT_EQ(readFile(home() / "transcript").find("rgument list"), std::string::npos);
    EXPECT_TRUE(fs::exists(home() / "prompt"));
    EXPECT_TRUE(scratchIsGone());
}

TEST_F(BashTest, AStartFileThatEndsTheShellAtAnErrorDoesNotEndItBeforeTheText) {
    writeFile(home() / ".bashrc", "set -e\n");
    run("echo first > ~/out");
    EXPECT_TRUE(homeFileBecomes("out", "first\n"));
}

TEST_F(BashTest, NoVariableOfOursStays) {
    writeFile(home() / ".bashrc", "");
    run("echo first > ~/out");
    ASSERT_TRUE(homeFileBecomes("out", "first\n"));
    type("set | grep -ic kestrel_ > ~/out; echo ${PROMPT_COMMAND-none} >> ~/out\n");
    EXPECT_TRUE(homeFileBecomes("out", "0\nnone\n"));
}

TEST_F(BashTest, TheCommandIsInTheHistory) {
    writeFile(home() / ".bashrc", "");
    run("echo 'it'\"'\"'s' > ~/out");
    ASSERT_TRUE(homeFileBecomes("out", "it's\n"));
    type("fc -ln -2 -2 | sed 's/^[[:space:]]*//' > ~/out\n");
    EXPECT_TRUE(homeFileBecomes("out", "echo 'it'\"'\"'s' > ~/out\n"));
}

class ZshTest : public ShellTerminalTest {
  protected:
    void SetUp() override {
        if (installedProgram("zsh").empty())
            GTEST_SKIP() << "ZSH IS NOT INSTALLED: typing into it is not tested";
        ::setenv("SHELL", installedProgram("zsh").c_str(), 1);
        installTerminal("xterm");
        writeFile(home() / ".zshrc", "PS1='ready> '\n");
    }
};

TEST_F(ZshTest, TheUsersOwnFolderOfStartFilesIsUsedAndKept) {
    fs::create_directory(home() / "zsh");
    writeFile(home() / "zsh" / ".zshenv", "export early=1\n");
    writeFile(home() / "zsh" / ".zshrc", "alias greet='echo hello'\nPS1='ready> '\n");
    ::setenv("ZDOTDIR", (home() / "zsh").c_str(), 1);
    run("greet $early $ZDOTDIR > ~/out");
    EXPECT_TRUE(homeFileBecomes("out", "hello 1 " + (home() / "zsh").string() + "\n"));
}

TEST_F(ZshTest, HistoryExpansionIsBackAfterTheText) {
    run("echo a!b > ~/out");
    ASSERT_TRUE(homeFileBecomes("out", "a!b\n"));
    type("echo again > ~/out\n");
    ASSERT_TRUE(homeFileBecomes("out", "again\n"));
    type("echo x!! > ~/history; cat ~/history > ~/out\n");
    EXPECT_TRUE(homeFileBecomes("history", "xecho again\n"));
    type("typeset -m '*kestrel*' > ~/out; typeset +fm '*kestrel*' >> ~/out; echo end >> ~/out\n");
    EXPECT_TRUE(homeFileBecomes("out", "end\n"));
}

TEST_F(ZshTest, HistoryExpansionIsBackAfterATextThatDoesNotParse) {
    run("echo )");
    ASSERT_TRUE(scratchIsGone());
    type("print -r -- $histchars > ~/out\n");
    EXPECT_TRUE(homeFileBecomes("out", "!^#\n"));
}

TEST_F(ZshTest, CommentsAreStillCommentsWhereTheUserAllowsThem) {
    writeFile(home() / ".zshrc", "PS1='ready> '\nsetopt interactive_comments\n");
    run("echo a!b > ~/out # a comment!");
    EXPECT_TRUE(homeFileBecomes("out", "a!b\n"));
}

TEST_F(ZshTest, WhateverTheUsersStartFileSetsTheTextRuns) {
    const std::string text = "a!b\u00e9\ue0b0\x01\x02";
    for (const char* line :
         {"precmd_functions=(true)", "precmd() { true }", "setopt no_multibyte",
          "setopt ksh_arrays", "setopt posix_identifiers", "unsetopt zle", "setopt all_export",
          "histchars=", "zle-line-init() { true }; zle -N zle-line-init"}) {
        writeFile(home() / ".zshrc", std::string(line) + "\nPS1='ready> '\n");
        run("printf %s '" + text + "' > ~/out");
        EXPECT_TRUE(homeFileBecomes("out", text)) << line;
        fs::remove(home() / "out");
    }
}

TEST_F(ZshTest, CharactersThatTheLineEditorHasAUseForAreInTheHistoryAsTheyAre) {
    run("echo \ue000\ue0b0\ue0ff > ~/out");
    ASSERT_TRUE(homeFileBecomes("out", "\ue000\ue0b0\ue0ff\n"));
    type("fc -ln -1 > ~/out\n");
    EXPECT_TRUE(homeFileBecomes("out", "echo \ue000\ue0b0\ue0ff > ~/out\n"));
}

TEST_F(ZshTest, TheCommandIsInTheHistory) {
    run("echo first > ~/out");
    ASSERT_TRUE(homeFileBecomes("out", "first\n"));
    type("fc -ln -1 > ~/out\n");
    EXPECT_TRUE(homeFileBecomes("out", "echo first > ~/out\n"));
}

TEST_F(ShellTerminalTest, TheTerminalGetsOneWordWhateverTheText) {
    ::setenv("SHELL", "/bin/sh", 1);
    installTerminal("gnome-terminal");
    run("echo \"a b\" > ~/out");
    ASSERT_TRUE(homeFileBecomes("out", "a b\n"));
    const std::string arguments = readFile(home() / "terminal.arguments");
    const std::string before = std::string("--\0", 3) + runtime().string() + "/kestrel-launch-";
    EXPECT_TRUE(arguments.starts_with(before)) << arguments;
    EXPECT_EQ(arguments.size(), before.size() + std::string_view("XXXXXX/run").size() + 1);
}

TEST_F(ShellTerminalTest, AShellThatDoesNotExistIsReplaced) {
    ::setenv("SHELL", "/nowhere/shell", 1);
    installTerminal("xterm");
    run("echo ran > ~/out");
    EXPECT_TRUE(homeFileBecomes("out", "ran\n"));
}

TEST_F(ShellTerminalTest, TheShellIsOursWhateverTheTerminalHasInItsEnvironment) {
    for (const std::string name : {"ours", "theirs"})
        writeFile(files() / name, "#!/bin/sh\necho " + name + " $SHELL > ~/out\n", 0755);
    ::setenv("SHELL", (files() / "ours").c_str(), 1);
    installTerminal("behind");
    writeFile(programs() / "xterm",
              "#!/bin/sh\nSHELL='" + (files() / "theirs").string() + "' exec behind \"$@\"\n",
              0755);
    ::setenv("TERMINAL", "xterm", 1);
    const std::string expected = "ours " + (files() / "ours").string() + "\n";
    run("true");
    EXPECT_TRUE(homeFileBecomes("out", expected));
    EXPECT_TRUE(scratchIsGone());
    fs::remove(home() / "out");
    writeFile(files() / "file.sh", "true\n", 0755);
    {
        LaunchWorker worker;
        GioWorkspace(worker).openFile((files() / "file.sh").string());
    }
    EXPECT_TRUE(homeFileBecomes("out", expected));
    EXPECT_TRUE(scratchIsGone());
}

TEST_F(ShellTerminalTest, WithoutAVariableTheLoginShellIsTaken) {
    ::unsetenv("SHELL");
    installTerminal("xterm");
    run("echo $SHELL > ~/out");
    EXPECT_TRUE(homeFileBecomes("out", std::string(::getpwuid(::getuid())->pw_shell) + "\n"));
}

TEST_F(ShellTerminalTest, WithoutATerminalNothingIsLeftBehind) {
    ::setenv("PATH", programs().c_str(), 1);
    run("echo ran > ~/out");
    EXPECT_FALSE(hasScratch());
}

TEST_F(ShellTerminalTest, ATerminalThatCannotStartLeavesNothingBehind) {
    writeFile(programs() / "xterm", "#!/nowhere/interpreter\n", 0755);
    ::setenv("TERMINAL", "xterm", 1);
    run("echo ran > ~/out");
    EXPECT_FALSE(hasScratch());
}

TEST_F(ShellTerminalTest, LeftoversAreSweptAtTheStart) {
    const fs::path old = runtime() / "kestrel-launch-old123";
    fs::create_directory(old);
    fs::permissions(old, fs::perms(0700));
    writeFile(old / "cmd", "secret");
    const struct timespec then { std::time(nullptr) - 7200, 0 };
    const struct timespec times[] = {then, then};
    ASSERT_EQ(::utimensat(AT_FDCWD, old.c_str(), times, 0), 0);
    {
        LaunchWorker worker;
        const ShellTerminal terminal(worker);
    }
    EXPECT_FALSE(fs::exists(old));
}

TEST_F(ShellTerminalTest, TheApplicationIsTheEntryThatStartsTheTerminal) {
    installTerminal("true");
    LaunchWorker worker;
    std::atomic<int> changes = 0;
    ShellTerminal terminal(worker, noActivation, [&changes] { ++changes; });
    EXPECT_TRUE(waitUntil([&] { return terminal.applicationPath() == terminalEntry().string(); }));
    EXPECT_EQ(changes, 1);
}

} // namespace
} // namespace kestrel::linux_shell
