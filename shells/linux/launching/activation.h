#pragma once
// What lets the application that a click launches come to the front, though windows may not put
// themselves there. Taken at the click, on the main thread, and handed to one launch.

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace kestrel::linux_shell {

/// Each part may be empty: the desktop then decides alone whether the application gets the focus.
struct Activation {
    std::string token;     ///< for a Wayland compositor
    std::string startupId; ///< for an X11 window manager, and for what knows no token

    /// What a program that is started with this finds in its environment: names and values.
    std::vector<std::pair<const char*, std::string>> environment() const;

    /// What an application that is called over D-Bus finds in the call's platform data.
    std::vector<std::pair<const char*, std::string>> platformData() const;

    friend bool operator==(const Activation&, const Activation&) = default;
};

/// Gives what belongs to the click that is being handled. Main thread only.
using ActivationSource = std::function<Activation()>;

/// For a program that lets its applications come to the front by themselves.
inline Activation noActivation() { return {}; }

/// A command that runs the words behind it without the two variables: for what a terminal runs,
/// since the window that they are for is the terminal's.
std::vector<std::string> withoutActivation();

} // namespace kestrel::linux_shell
