#pragma once
// The Terminal application, driven by AppleScript.

#include "platform/terminal.h"

namespace kestrel::macos_shell {

class AppleScriptTerminal final : public Terminal {
  public:
    void runInNewWindow(std::string_view command) override;
    std::optional<std::string> applicationPath() override;
};

} // namespace kestrel::macos_shell
