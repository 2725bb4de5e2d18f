#include "tests/linux/launching/launching_fixture.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <thread>

namespace kestrel::linux_shell {

namespace fs = std::filesystem;

namespace {

constexpr auto pollInterval = std::chrono::milliseconds(5);

LaunchRecord parseRecord(const std::string& bytes) {
    LaunchRecord record;
    for (std::size_t start = 0; start < bytes.size();) {
        const std::size_t end = bytes.find('\0', start);
        const std::string field = bytes.substr(start, end - start);
        start = end + 1;
        const std::size_t equals = field.find('=');
        const std::string name = field.substr(0, equals);
        const std::string value = field.substr(equals + 1);
        if (name == "argument")
            record.arguments.push_back(value);
        else if (name.starts_with("fd "))
            record.descriptors[name.substr(3)] = value;
        else
            record.fields[name] = value;
    }
    return record;
}

bool isRunning(pid_t process) {
    // A process that nobody collects after its end is not running either.
    const std::string status = readFile("/proc/" + std::to_string(process) + "/stat");
    const std::size_t name = status.rfind(')');
    return name != std::string::npos && status.compare(name, 3, ") Z") != 0;
}

/// The user's data and configuration. GLib asks where they are once in the life of a process, and
/// keeps an index of what is in them: the same for all tests of a process, and never changed.
class SharedFolders {
  public:
    SharedFolders() {
        for (const fs::path& each : {applications(), folder_.path() / "config"})
            fs::create_directories(each);
        const std::string start = "[Desktop Entry]\nType=Application\nName=Test\n";
        const std::string recorder = "Exec=" KESTREL_RECORDER;
        writeFile(applications() / "test-texts.desktop",
                  start + recorder + " open %f\nMimeType=text/plain;\n");
        writeFile(applications() / "test-folders.desktop",
                  start + recorder + " browse %f\nMimeType=inode/directory;\n");
        writeFile(applications() / "test-pages.desktop",
                  start + recorder + " edit %f\nMimeType=text/html;\nTerminal=true\n");
        writeFile(applications() / "test-terminal-settings.desktop",
                  start + "Exec=true --settings\nCategories=Settings;\n");
        writeFile(applications() / "test-terminal.desktop",
                  start + "Exec=true\nCategories=System;TerminalEmulator;\n");
        writeFile(folder_.path() / "config" / "mimeapps.list",
                  "[Default Applications]\ntext/plain=test-texts.desktop\n"
                  "application/x-shellscript=test-texts.desktop\n"
                  "inode/directory=test-folders.desktop\ntext/html=test-pages.desktop\n");
    }

    fs::path applications() const { return folder_.path() / "data" / "applications"; }
    const fs::path& path() const { return folder_.path(); }

  private:
    TemporaryFolder folder_;
};

const SharedFolders& sharedFolders() {
    static const SharedFolders shared;
    return shared;
}

void setVariable(const char* name, const std::string& value) { ::setenv(name, value.c_str(), 1); }

} // namespace

TemporaryFolder::TemporaryFolder() {
    std::string name = (fs::temp_directory_path() / "kestrel-test-XXXXXX").string();
    path_ = ::mkdtemp(name.data()) == nullptr ? std::string() : name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

bool waitUntil(const std::function<bool()>& condition, std::chrono::seconds limit) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(pollInterval);
    }
    return true;
}

std::string readFile(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

void writeFile(const fs::path& path, std::string_view bytes, unsigned mode) {
    std::ofstream(path, std::ios::binary) << bytes;
    fs::permissions(path, fs::perms(mode));
}

std::string installedProgram(const std::string& name) {
    for (const char* folder : {"/usr/local/bin/", "/usr/bin/", "/bin/"})
        if (fs::exists(folder + name))
            return folder + name;
    return {};
}

LaunchingTest::LaunchingTest() {
    for (const fs::path& folder : {home(), home() / "records", runtime(), files(), programs()})
        fs::create_directory(folder);
    fs::permissions(runtime(), fs::perms(0700));
    ::mkfifo((home() / "keys").c_str(), 0600);
    setVariable("HOME", home());
    setVariable("XDG_RUNTIME_DIR", runtime());
    setVariable("PATH", programs().string() + ":/usr/local/bin:/usr/bin:/bin");
    setVariable("XDG_DATA_HOME", sharedFolders().path() / "data");
    setVariable("XDG_CONFIG_HOME", sharedFolders().path() / "config");
    setVariable("XDG_CACHE_HOME", sharedFolders().path() / "cache");
    setVariable("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    for (const char* name : {"TERMINAL", "XDG_CURRENT_DESKTOP", "WAYLAND_DISPLAY", "ENV",
                             "BASH_ENV", "ZDOTDIR", "PROMPT_COMMAND", "KESTREL_HOMEPAGE"})
        ::unsetenv(name);
}

LaunchingTest::~LaunchingTest() {
    std::istringstream processes(readFile(home() / "terminal.pid"));
    for (pid_t process = 0; processes >> process;) {
        ::kill(process, SIGTERM);
        waitUntil([process] { return !isRunning(process); });
    }
}

fs::path LaunchingTest::terminalEntry() {
    return sharedFolders().applications() / "test-terminal.desktop";
}

std::string LaunchingTest::recorder() { return KESTREL_RECORDER; }

void LaunchingTest::makeRecorder(const fs::path& path) const {
    fs::create_symlink(recorder(), path);
}

void LaunchingTest::installTerminal(const std::string& name) {
    fs::create_symlink(KESTREL_FAKE_TERMINAL, programs() / name);
    setVariable("TERMINAL", programs() / name);
}

std::string LaunchingTest::makeEntry(const std::string& name, std::string_view lines) const {
    const fs::path path = files() / name;
    writeFile(path, "[Desktop Entry]\nType=Application\nName=Test\n" + std::string(lines));
    return path;
}

void LaunchingTest::type(std::string_view text) const {
    // What the key sends; a newline is Ctrl-J, which is not Return for each line editor.
    std::string keys(text);
    std::ranges::replace(keys, '\n', '\r');
    int pipe = -1;
    const bool opened = waitUntil([&] {
        pipe = ::open((home() / "keys").c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
        return pipe >= 0;
    });
    ASSERT_TRUE(opened) << "there is no terminal to type into";
    EXPECT_EQ(::write(pipe, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
    ::close(pipe);
}

void LaunchingTest::forgetRecords() const {
    fs::remove_all(home() / "records");
    fs::create_directory(home() / "records");
}

std::vector<LaunchRecord> LaunchingTest::records() const {
    std::vector<LaunchRecord> result;
    for (const auto& entry : fs::directory_iterator(home() / "records"))
        if (!entry.path().filename().string().starts_with('.'))
            result.push_back(parseRecord(readFile(entry.path())));
    return result;
}

LaunchRecord LaunchingTest::waitForRecord() const {
    EXPECT_TRUE(waitUntil([this] { return !records().empty(); })) << "nothing was launched";
    const auto all = records();
    EXPECT_EQ(all.size(), 1U);
    return all.empty() ? LaunchRecord{} : all.front();
}

} // namespace kestrel::linux_shell
