#pragma once
// The applications that the desktop shows in its menus, from all folders of data: the system's, the
// user's own and what Flatpak and Snap export.

#include "platform/main_queue.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kestrel::linux_shell {

struct InstalledApplication {
    std::string path; ///< of its desktop entry, absolute
    std::string name; ///< in the user's language; never empty

    /// What else tells of it, in the user's language: its kind, keywords, the program that it
    /// starts; one a line.
    std::string otherNames;
};

/// Sorted by name as the user's language does. Blocks for as long as the disk does; may be called
/// on any thread.
std::vector<InstalledApplication> readInstalledApplications();

/// The name of the application that the entry in the file at `path` describes, in the user's
/// language; nothing for a file that is no desktop entry and for one without a name. Blocks.
std::optional<std::string> nameOfEntry(const std::string& path);

/// Reads the list off the main thread, on which all else of this happens.
class InstalledApplications {
  public:
    using Applications = std::vector<InstalledApplication>;
    using Read = std::function<Applications()>;
    using Done = std::function<void(Applications)>;

    explicit InstalledApplications(MainQueue& mainQueue, Read read = readInstalledApplications);

    /// Waits a moment for a reading under way, and leaves one that does not end to itself.
    ~InstalledApplications();
    InstalledApplications(const InstalledApplications&) = delete;
    InstalledApplications& operator=(const InstalledApplications&) = delete;

    /// Hands the list to `done` in a later turn of the event loop, unless this object is gone by
    /// then. A call before that makes its own `done` the only one.
    void list(Done done);

  private:
    struct State;

    Read read_;
    std::shared_ptr<State> state_;
};

} // namespace kestrel::linux_shell
