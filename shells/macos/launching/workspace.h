#pragma once
// Workspace on the user's NSWorkspace.

#include "platform/workspace.h"

namespace kestrel::macos_shell {

class AppKitWorkspace final : public Workspace {
  public:
    void openApplication(std::string_view path) override;
    void openFile(std::string_view path) override;
};

} // namespace kestrel::macos_shell
