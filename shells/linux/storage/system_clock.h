#pragma once
// The machine's wall clock.

#include "platform/clock.h"

namespace kestrel::linux_shell {

class SystemClock final : public Clock {
  public:
    Date now() override { return std::chrono::system_clock::now(); }
};

} // namespace kestrel::linux_shell
