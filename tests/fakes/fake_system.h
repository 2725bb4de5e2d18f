#pragma once
// Clock, Workspace, Terminal, OpenPanel and Application in memory. Calls are logged with their
// arguments.

#include "platform/application.h"
#include "platform/clock.h"
#include "platform/open_panel.h"
#include "platform/terminal.h"
#include "platform/workspace.h"
#include "tests/fakes/call_log.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel::tests {

class FakeClock final : public Clock {
  public:
    Date time = Date(std::chrono::seconds(1'700'000'000));

    Date now() override { return time; }
};

class FakeWorkspace final : public Workspace {
  public:
    explicit FakeWorkspace(CallLog& log) : log_(log) {}

    void openApplication(std::string_view path) override {
        log_.add("workspace.openApplication " + std::string(path));
    }
    void openFile(std::string_view path) override {
        log_.add("workspace.openFile " + std::string(path));
    }

  private:
    CallLog& log_;
};

class FakeTerminal final : public Terminal {
  public:
    explicit FakeTerminal(CallLog& log) : log_(log) {}

    std::optional<std::string> application = "/terminal";

    void runInNewWindow(std::string_view command) override {
        log_.add("terminal.runInNewWindow " + std::string(command));
    }
    std::optional<std::string> applicationPath() override { return application; }

  private:
    CallLog& log_;
};

class FakeOpenPanel final : public OpenPanel {
  public:
    std::optional<std::string> result; ///< the path of the answer
    std::optional<std::string> name;   ///< the name that comes with it
    std::function<void()> whileShown;  ///< what happens while the panel is open
    std::vector<OpenPanelOptions> shown;

    std::optional<ChosenFile> runModal(const OpenPanelOptions& options) override {
        shown.push_back(options);
        if (whileShown)
            whileShown();
        if (!result)
            return std::nullopt;
        return ChosenFile{*result, name};
    }
};

class FakeApplication final : public Application {
  public:
    explicit FakeApplication(CallLog& log) : log_(log) {}

    void setActivationPolicy(ActivationPolicy policy) override {
        log_.add("application.setActivationPolicy " + std::to_string(static_cast<int>(policy)));
    }
    void activate() override { log_.add("application.activate"); }
    void terminate() override { log_.add("application.terminate"); }

  private:
    CallLog& log_;
};

} // namespace kestrel::tests
