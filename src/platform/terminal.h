#pragma once
// The user's terminal.

#include <optional>
#include <string>
#include <string_view>

namespace kestrel {

/// Main thread only.
class Terminal {
  public:
    virtual ~Terminal() = default;

    /// Types `command` into a new terminal window of the user's shell and runs it there. Returns
    /// at once; nothing is waited for and no failure reported. The text arrives byte for byte;
    /// one with a NUL in it, which no shell can be given, runs nothing.
    virtual void runInNewWindow(std::string_view command) = 0;

    /// The path of the terminal application, for its icon; nothing when none is installed, or as
    /// long as it is being sought. Returns at once.
    virtual std::optional<std::string> applicationPath() = 0;
};

} // namespace kestrel
