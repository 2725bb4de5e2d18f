#pragma once
// OpenPanel on the system's own.

#include "platform/open_panel.h"

namespace kestrel::macos_shell {

class AppKitOpenPanel final : public OpenPanel {
  public:
    std::optional<ChosenFile> runModal(const OpenPanelOptions& options) override;
};

} // namespace kestrel::macos_shell
