#pragma once
// Opening applications and files the way the user's desktop does.

#include <string_view>

namespace kestrel {

/// Main thread only. Every call returns at once; nothing is waited for and no failure reported.
/// Paths are taken exactly as given: no "~" is expanded, nothing is trimmed.
class Workspace {
  public:
    virtual ~Workspace() = default;

    /// Opens the application at `path` with the platform's default settings.
    virtual void openApplication(std::string_view path) = 0;

    /// Opens the file at `path` with the application that the system assigns to it; a shell
    /// command file runs in a terminal.
    virtual void openFile(std::string_view path) = 0;
};

} // namespace kestrel
