#pragma once
// The open panel: the list of the installed applications where one of these is picked, with the
// file dialog behind its "Other…"; the file dialog for all else.

#include "platform/open_panel.h"
#include "shells/linux/desktop/file_dialog_open_panel.h"
#include "shells/linux/launching/installed_applications.h"
#include "shells/linux/views/file_icon_source.h"

#include <optional>

namespace kestrel::linux_shell {

class LinuxOpenPanel final : public OpenPanel {
  public:
    /// Both outlive it.
    LinuxOpenPanel(MainQueue& mainQueue, const FileIconSource& fileIcons);

    std::optional<ChosenFile> runModal(const OpenPanelOptions& options) override;

  private:
    std::optional<ChosenFile> chooseApplication(const OpenPanelOptions& options);

    const FileIconSource& fileIcons_;
    FileDialogOpenPanel fileDialog_;
    InstalledApplications applications_;
};

} // namespace kestrel::linux_shell
