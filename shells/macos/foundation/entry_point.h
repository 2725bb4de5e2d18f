#pragma once
// Where AppKit calls the program: actions, delegate methods, notifications, blocks.

#include <exception>

namespace kestrel::macos_shell {

/// Runs `work` and ends its C++ exceptions here: none may unwind through a frame of AppKit, which
/// would be left half-way. What `work` was about to do then does not happen, and the program
/// carries on. Objective-C exceptions pass: AppKit's event loop takes them.
template <typename Work>
void atEntryPoint(const Work& work) {
    try {
        work();
    } catch (const std::exception&) {
        return;
    }
}

} // namespace kestrel::macos_shell
