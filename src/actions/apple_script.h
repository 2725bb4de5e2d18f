#pragma once
// What a terminal that is driven by AppleScript needs to type a command into a new window: the
// script's text and the task that runs it. Pure functions; starting the task is the shell's.

#include <string>
#include <string_view>
#include <vector>

namespace kestrel {

/// `command` ready to stand inside an AppleScript string literal: every backslash doubled, then a
/// backslash before every double quote. Line feeds and all other characters stay as they are.
std::string escapedForAppleScript(std::string_view command);

/// The script that activates Terminal and types `command` into a new window of it.
std::string terminalScript(std::string_view command);

/// An executable and its arguments.
struct Task {
    std::string executable;
    std::vector<std::string> arguments;

    friend bool operator==(const Task&, const Task&) = default;
};

/// The task that runs the script of `terminalScript`.
Task terminalTask(std::string_view command);

} // namespace kestrel
