#pragma once
// One run of the program as far as its list goes: the real item store over the real stores in
// files, on whatever file operations a test has. Its end is that of a killed process: nothing is
// written any more.

#include "platform/cloud.h"
#include "shells/linux/posix/file_operations.h"
#include "shells/linux/storage/file_user_defaults.h"
#include "shells/linux/storage/folder_cloud.h"
#include "store/items_manager.h"
#include "tests/fakes/call_log.h"
#include "tests/fakes/fake_main_queue.h"
#include "tests/fakes/fake_system.h"
#include "tests/fakes/store_fixture.h"
#include "tests/linux/storage/long_timeouts.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace kestrel::tests {

/// The cloud folder without its watcher, which looks at the real file system.
class UnwatchedCloud final : public Cloud {
  public:
    UnwatchedCloud(linux_shell::FileOperations& operations, const std::string& directory)
        : cloud_(directory, "launcherItems", operations, longTimeouts) {}

    bool hasIdentityToken() override { return cloud_.hasIdentityToken(); }
    CloudKeyValueStore* defaultStore() override { return cloud_.defaultStore(); }
    void addExternalChangeObserver(std::function<void()> /*handler*/) override {}

  private:
    linux_shell::FolderCloud cloud_;
};

class DiskSession {
  public:
    /// Loads what is stored in `directory`.
    DiskSession(linux_shell::FileOperations& operations, const std::string& directory)
        : defaults_(directory, operations), cloud_(operations, directory) {
        mainQueue_.runAll();
    }

    [[nodiscard]] std::vector<std::string> shown() const { return titles(manager_.items); }

    /// As the settings window does it.
    void add(const std::string& title) {
        manager_.items.append(appItem(title));
        manager_.save();
    }

    /// As after an outside change.
    void reload() {
        manager_.load();
        mainQueue_.runAll();
    }

  private:
    CallLog log_;
    FakeMainQueue mainQueue_;
    linux_shell::FileUserDefaults defaults_;
    UnwatchedCloud cloud_;
    FakeClock clock_;
    FakeWorkspace workspace_{log_};
    FakeTerminal terminal_{log_};
    ItemsManager manager_{{mainQueue_, defaults_, cloud_, clock_, workspace_, terminal_}};
};

} // namespace kestrel::tests
