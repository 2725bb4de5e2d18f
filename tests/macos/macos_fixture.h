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

/// Starts each test with empty stores, an account signed in, no windows, and nothing recorded.
class MacosFixture : public testing::Test {
  public:
    MacosFixture();
    ~MacosFixture() override;
    MacosFixture(const MacosFixture&) = delete;
    MacosFixture& operator=(const MacosFixture&) = delete;
};

} // namespace kestrel::tests
