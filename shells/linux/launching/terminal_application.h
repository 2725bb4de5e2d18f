#pragma once
// The application that the user's terminal is, for its icon. To find it takes the folders of PATH
// and every installed desktop entry, any of which may lie on a file system that does not answer: so
// it is searched for on a thread of its own, and again whenever the installed applications change.

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace kestrel::linux_shell {

class TerminalApplication {
  public:
    /// The path of an application; nothing when there is none.
    using Search = std::function<std::optional<std::string>()>;

    /// `changed` is called on another thread each time that another path is known. `search` may
    /// take its time; it must own what it uses, since one that hangs outlives this object.
    explicit TerminalApplication(std::function<void()> changed = {},
                                 Search search = findTerminalApplication);

    /// Does not wait for a search that hangs.
    ~TerminalApplication();

    TerminalApplication(const TerminalApplication&) = delete;
    TerminalApplication& operator=(const TerminalApplication&) = delete;

    /// What is known so far. The first call starts the search.
    std::optional<std::string> path();

    /// The terminal's desktop entry; its program when no entry starts it; nothing without a
    /// terminal.
    static std::optional<std::string> findTerminalApplication();

  private:
    struct State;

    std::shared_ptr<State> state_;
    bool isStarted_ = false;
};

} // namespace kestrel::linux_shell
