#pragma once
// An item store over fakes, as most tests need one.

#include "store/items_manager.h"
#include "tests/fakes/call_log.h"
#include "tests/fakes/fake_cloud.h"
#include "tests/fakes/fake_main_queue.h"
#include "tests/fakes/fake_system.h"
#include "tests/fakes/fake_user_defaults.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace kestrel::tests {

inline LauncherItem appItem(std::string title, std::string path = "/apps/one") {
    return {.title = std::move(title), .type = ItemType::app, .path = std::move(path)};
}

inline LauncherItem commandItem(std::string title, std::string command = "ls") {
    return {
        .title = std::move(title), .type = ItemType::inlineCommand, .command = std::move(command)};
}

/// The titles of a list, in order.
inline std::vector<std::string> titles(const ItemList& items) {
    std::vector<std::string> result;
    for (const LauncherItem& item : items)
        result.push_back(item.title);
    return result;
}

class StoreFixture : public testing::Test {
  protected:
    CallLog log;
    FakeMainQueue mainQueue;
    FakeUserDefaults defaults{log};
    FakeCloud cloud{log};
    FakeClock clock;
    FakeWorkspace workspace{log};
    FakeTerminal terminal{log};
    ItemsManagerPorts ports{mainQueue, defaults, cloud, clock, workspace, terminal};

    /// Takes the log so far and starts a new one.
    std::vector<std::string> takeCalls() { return std::exchange(log.calls, {}); }
};

/// The same with a store that holds `first`, `second` and `third`, loaded and nothing logged yet.
class ThreeItemsFixture : public StoreFixture {
  protected:
    ItemsManager manager{ports};
    LauncherItem first = appItem("First");
    LauncherItem second = commandItem("Second");
    LauncherItem third = appItem("Third", "/apps/three");

    void SetUp() override {
        manager.items.assign({first, second, third});
        mainQueue.runAll();
        log.calls.clear();
    }

    /// The titles of the list as it is stored now.
    std::vector<std::string> storedTitles();
};

} // namespace kestrel::tests
