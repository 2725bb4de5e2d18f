#pragma once
// What the tests of the macOS shell share. They see the system through the recording stand-ins of
// tools/macos-check, so they build there only.

#import <AppKit/AppKit.h>

#include <macos-check/recording.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace kestrel::tests {

using Lines = std::vector<std::string>;

/// The recorded calls that begin with one of the texts, in order.
Lines linesOf(const Lines& beginnings);

/// Lets everything happen that is on the main queue now.
void runMainQueue();

/// Encoded lists of one item each.
std::string listOf(std::string_view title);

/// What the system's own stores hold under "launcherItems".
std::optional<std::string> storedLocally();
std::optional<std::string> storedInCloud();

/// A system with empty stores, an account signed in, and nothing recorded; again so at the end.
class MacosSystem {
  public:
    MacosSystem();
    ~MacosSystem();
    MacosSystem(const MacosSystem&) = delete;
    MacosSystem& operator=(const MacosSystem&) = delete;
};

class MacosFixture : public testing::Test {
  protected:
    MacosSystem system;
};

} // namespace kestrel::tests
