#pragma once
// The Workspace port over GIO and the desktop's own conventions.

#include "platform/workspace.h"
#include "shells/linux/launching/launch_worker.h"

namespace kestrel::linux_shell {

/// The worker must outlive it. Nothing happens for a path that is not absolute: no "~" is expanded,
/// and a relative path has no folder that it could start from.
class GioWorkspace final : public Workspace {
  public:
    explicit GioWorkspace(LaunchWorker& worker) : worker_(worker) {}

    /// A desktop entry (*.desktop) is launched as the application it describes; an executable file,
    /// an AppImage included, is started without arguments. Anything else is no application.
    void openApplication(std::string_view path) override;

    /// By the kind of the file: see command_file.h.
    void openFile(std::string_view path) override;

  private:
    LaunchWorker& worker_;
};

} // namespace kestrel::linux_shell
