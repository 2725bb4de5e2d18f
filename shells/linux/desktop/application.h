#pragma once
// The running application towards Qt: its identity, its platform and its end.

#include "platform/application.h"

#include <QApplication>

#include <string>
#include <vector>

namespace kestrel::linux_shell {

/// The arguments that the toolkit is started with. The program has no command line, so none of the
/// user's is passed on.
///
/// A Wayland client cannot place its window under an icon, one of XWayland can: where both are
/// offered and the user chose no platform, X11 comes first. It is said here and not in the
/// environment, which the launched programs inherit.
class ToolkitArguments {
  public:
    explicit ToolkitArguments(const char* programPath);

    int& count() { return count_; }
    char** values() { return pointers_.data(); }

  private:
    std::vector<std::string> texts_;
    std::vector<char*> pointers_;
    int count_ = 0;
};

/// Main thread only.
class QtApplication final : public Application {
  public:
    /// Names the application towards the desktop, which outlives this.
    explicit QtApplication(QApplication& application);

    /// Task bars list windows, not applications: the settings window brings its own entry, the
    /// popover has none, and nothing is left to do for either policy.
    void setActivationPolicy(ActivationPolicy) override {}

    void activate() override;
    void terminate() override;
};

} // namespace kestrel::linux_shell
