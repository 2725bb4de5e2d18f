#pragma once
// The Workspace port over GIO and the desktop's own conventions.

#include "platform/workspace.h"
#include "shells/linux/launching/activation.h"
#include "shells/linux/launching/launch_worker.h"

#include <utility>

namespace kestrel::linux_shell {

/// The worker must outlive it. Nothing happens for a path that is not absolute: no "~" is expanded,
/// and a relative path has no folder that it could start from.
class GioWorkspace final : public Workspace {
  public:
    explicit GioWorkspace(LaunchWorker& worker, ActivationSource activation = noActivation)
        : worker_(worker), activation_(std::move(activation)) {}

    /// A desktop entry (*.desktop) is launched as the application it describes; an executable file,
    /// an AppImage included, is started without arguments. Anything else is no application.
    void openApplication(std::string_view path) override;

    /// By the kind of the file: see command_file.h.
    void openFile(std::string_view path) override;

  private:
    LaunchWorker& worker_;
    ActivationSource activation_;
};

} // namespace kestrel::linux_shell
