#pragma once
// MainQueue on the main dispatch queue, which AppKit's event loop serves, also while a menu or a
// modal panel is open.

#include "platform/main_queue.h"

namespace kestrel::macos_shell {

class DispatchMainQueue final : public MainQueue {
  public:
    void async(std::function<void()> task) override;
};

} // namespace kestrel::macos_shell
