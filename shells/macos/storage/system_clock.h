#pragma once
// The machine's own wall clock.

#include "platform/clock.h"

namespace kestrel::macos_shell {

class SystemClock final : public Clock {
  public:
    Date now() override { return std::chrono::system_clock::now(); }
};

} // namespace kestrel::macos_shell
