#pragma once
// How every child of the program starts: in a session of its own, with default signals, standard
// streams on /dev/null and none of our descriptors. So it outlives us and our terminal, and since
// GLib starts it through a short-lived intermediate process that it collects, it leaves no zombie.

#include "shells/linux/launching/activation.h"

#include <string>
#include <string_view>
#include <vector>

namespace kestrel::linux_shell {

/// /dev/null, open while this object lives; -1 when it cannot be opened.
class NullDevice {
  public:
    NullDevice();
    ~NullDevice();
    NullDevice(const NullDevice&) = delete;
    NullDevice& operator=(const NullDevice&) = delete;

    int descriptor() const { return descriptor_; }

  private:
    int descriptor_;
};

/// The user's home folder; "/" when there is none.
std::string homeFolder();

/// The user's shell: $SHELL, or the login shell where nothing has set that.
std::string userShell();

/// True when `path` can name a file as it stands: absolute, and without a NUL, at which the system
/// would cut it short and reach another file. A relative path has no folder to start from here.
bool isUsablePath(std::string_view path);

/// A GSpawnChildSetupFunc. `folder` is the working folder as a C string, or null to keep the one
/// that GLib has set. Runs between fork and exec: async-signal-safe calls only.
void prepareChild(void* folder);

/// Starts `arguments[0]`, an absolute path, with all of `arguments` as its argument vector, in the
/// home folder, with `activation` in its environment. False when it cannot be started.
bool spawnDetached(const std::vector<std::string>& arguments, const Activation& activation);

} // namespace kestrel::linux_shell
