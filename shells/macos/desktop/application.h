#pragma once
// Application on the shared NSApplication.

#include "platform/application.h"

namespace kestrel::macos_shell {

class AppKitApplication final : public Application {
  public:
    void setActivationPolicy(ActivationPolicy policy) override;
    void activate() override;

    /// The process ends inside the call, unless the termination is refused.
    void terminate() override;
};

} // namespace kestrel::macos_shell
