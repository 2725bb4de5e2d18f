#pragma once
// A home folder of its own for every test, and stand-ins for the programs that a session has. The
// tests of this folder change the environment; nothing of the real user's is read or written.

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel::linux_shell {

/// A new folder, removed with everything in it.
class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

/// How launch_recorder was started.
struct LaunchRecord {
    std::vector<std::string> arguments;
    std::map<std::string, std::string> fields;      ///< folder, leader, parent, SigBlk, …
    std::map<std::string, std::string> descriptors; ///< what each number leads to
};

/// Polls until `condition` holds; false after `limit`.
bool waitUntil(const std::function<bool()>& condition,
               std::chrono::seconds limit = std::chrono::seconds(20));

std::string readFile(const std::filesystem::path& path);
void writeFile(const std::filesystem::path& path, std::string_view bytes, unsigned mode = 0644);

/// The program of that name in the real PATH; empty when it is not installed.
std::string installedProgram(const std::string& name);

/// Texts, folders and HTML pages have the recorder as their default application, with the argument
/// "open", "browse" and, in a terminal, "edit".
class LaunchingTest : public testing::Test {
  public:
    LaunchingTest();
    ~LaunchingTest() override;

  protected:
    /// $HOME, the working folder of what is launched.
    std::filesystem::path home() const { return folder_.path() / "home"; }
    /// $XDG_RUNTIME_DIR, which holds the scratch folders.
    std::filesystem::path runtime() const { return folder_.path() / "runtime"; }
    /// Somewhere that is neither.
    std::filesystem::path files() const { return folder_.path() / "files"; }
    /// The first folder of PATH.
    std::filesystem::path programs() const { return folder_.path() / "bin"; }

    /// A link to the recorder.
    void makeRecorder(const std::filesystem::path& path) const;
    static std::string recorder();
    /// The desktop entry of a terminal whose program is named "true".
    static std::filesystem::path terminalEntry();
    /// Puts the fake terminal on the PATH under `name`, and $TERMINAL to it.
    void installTerminal(const std::string& name);

    /// A desktop entry in files() with `lines` after its group and type.
    std::string makeEntry(const std::string& name, std::string_view lines) const;

    /// Types into the fake terminal; "\n" is the Return key.
    void type(std::string_view text) const;

    /// The complete records, in no order.
    std::vector<LaunchRecord> records() const;
    /// The only record once there is one.
    LaunchRecord waitForRecord() const;
    void forgetRecords() const;

  private:
    TemporaryFolder folder_;
};

} // namespace kestrel::linux_shell
