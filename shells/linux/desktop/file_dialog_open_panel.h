#pragma once
// The open panel on the desktop's own file dialog: the portal's or the platform theme's where the
// desktop has one, else the toolkit's. LinuxOpenPanel shows it, for applications behind its list of
// those that are installed.

#include "platform/open_panel.h"

namespace kestrel::linux_shell {

class FileDialogOpenPanel : public OpenPanel {
  public:
    /// Where an application is picked, a file that is neither a desktop entry nor executable
    /// counts as none: no dialog can be told to offer every executable and nothing else. A desktop
    /// entry comes with the name that it has inside.
    std::optional<ChosenFile> runModal(const OpenPanelOptions& options) override;
};

/// The folder in which the panel starts; an absolute path without a slash at the end.
std::string startFolderPath(OpenPanelOptions::StartFolder folder);

/// A desktop entry by its name, or a file that the user may execute.
bool isApplicationFile(const std::string& path);

} // namespace kestrel::linux_shell
