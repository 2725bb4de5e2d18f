#pragma once
// The calls that fakes received, in order. Several fakes share one log by reference, so that a test
// can check the order of calls across ports; the log outlives them.

#include <string>
#include <utility>
#include <vector>

namespace kestrel::tests {

struct CallLog {
    std::vector<std::string> calls;

    void add(std::string call) { calls.push_back(std::move(call)); }
};

} // namespace kestrel::tests
