#include "tests/macos_standins/macos_fixture.h"

#include "model/item_list_json.h"
#include "shells/macos/foundation/text.h"

#include <algorithm>

namespace kestrel::tests {

namespace {

void emptyStores() {
    NSUserDefaults* const defaults = NSUserDefaults.standardUserDefaults;
    for (NSString* key in @[ @"launcherItems", @"lastLocalSync" ])
        [defaults removeObjectForKey:key];
    recording::reset();
}

} // namespace

Lines linesOf(const Lines& beginnings) {
    Lines lines = recording::lines();
    std::erase_if(lines, [&](const std::string& line) {
        return std::ranges::none_of(
            beginnings, [&](const std::string& beginning) { return line.starts_with(beginning); });
    });
    return lines;
}

void runMainQueue() {
    __block bool isReached = false;
    dispatch_async(dispatch_get_main_queue(), ^{
        isReached = true;
    });
    ASSERT_TRUE(recording::runUntil(^bool {
        return isReached;
    }));
}

std::string listOf(std::string_view title) {
    return *encodeItems(std::vector<LauncherItem>{
        {.title = std::string(title), .type = ItemType::app, .path = "/Applications/One.app"}});
}

std::optional<std::string> storedLocally() {
    return macos_shell::toBytes([NSUserDefaults.standardUserDefaults dataForKey:@"launcherItems"]);
}

std::optional<std::string> storedInCloud() {
    return macos_shell::toBytes(
        [NSUbiquitousKeyValueStore.defaultStore dataForKey:@"launcherItems"]);
}

MacosSystem::MacosSystem() { emptyStores(); }

MacosSystem::~MacosSystem() {
    runMainQueue();
    emptyStores();
}

} // namespace kestrel::tests
