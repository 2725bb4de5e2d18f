#pragma once
// The wall clock, as a port so that tests decide what time it is.

#include <chrono>

namespace kestrel {

using Date = std::chrono::system_clock::time_point;

class Clock {
  public:
    virtual ~Clock() = default;
    virtual Date now() = 0;
};

} // namespace kestrel
