#pragma once
// The desktop's own dialog for choosing a file.

#include "platform/open_panel.h"

namespace kestrel::linux_shell {

class QtOpenPanel final : public OpenPanel {
  public:
    std::optional<std::string> runModal(const OpenPanelOptions& options) override;
};

} // namespace kestrel::linux_shell
