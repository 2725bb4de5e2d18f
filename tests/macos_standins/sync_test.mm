// Saving with and without an account, and changes that other machines make.
#include "shells/macos/foundation/text.h"
#include "tests/macos_standins/app_fixture.h"

namespace kestrel::tests {
namespace {

using macos_shell::toNSData;

class SyncTest : public AppFixture {
  protected:
    static void setStoredLocally(const std::string& bytes) {
        [NSUserDefaults.standardUserDefaults setObject:toNSData(bytes) forKey:@"launcherItems"];
    }

    static void setStoredInCloud(const std::string& bytes) {
        [NSUbiquitousKeyValueStore.defaultStore setData:toNSData(bytes) forKey:@"launcherItems"];
    }

    static bool hasSyncDate() {
        return [[NSUserDefaults.standardUserDefaults objectForKey:@"lastLocalSync"]
            isKindOfClass:NSDate.class];
    }

    std::string firstTitle() { return manager().items.empty() ? "" : manager().items[0].title; }

    static Lines storeCalls() { return linesOf({"NSUbiquitousKeyValueStore ", "NSUserDefaults "}); }
};

TEST_F(SyncTest, ASaveWithAnAccountWritesBothStoresTheSameBytes) {
    launch();
    manager().items.append({.title = "New"});
    recording::reset();
    manager().save();
    EXPECT_EQ(storeCalls(), (Lines{"NSUbiquitousKeyValueStore setObject:forKey: launcherItems",
                                   "NSUbiquitousKeyValueStore synchronize",
                                   "NSUserDefaults setObject:forKey: NSData launcherItems",
                                   "NSUserDefaults setObject:forKey: NSDate lastLocalSync"}));
    ASSERT_NE(storedLocally(), std::nullopt);
    EXPECT_EQ(storedInCloud(), storedLocally());
    EXPECT_TRUE(hasSyncDate());
}

TEST_F(SyncTest, ASaveWithoutAnAccountDoesNotTouchTheCloud) {
    launch();
    manager().items.append({.title = "New"});
    recording::reset();
    recording::setIdentityToken(nil);
    manager().save();
    EXPECT_EQ(storeCalls(), (Lines{"NSUserDefaults setObject:forKey: NSData launcherItems",
                                   "NSUserDefaults setObject:forKey: NSDate lastLocalSync"}));
    EXPECT_NE(storedLocally(), std::nullopt);
    EXPECT_EQ(storedInCloud(), std::nullopt);
}

TEST_F(SyncTest, AFirstStartWithoutListsWritesNothing) {
    launch();
    EXPECT_EQ(storeCalls(), Lines{"NSUbiquitousKeyValueStore synchronize"});
    EXPECT_FALSE(hasSyncDate());
}

TEST_F(SyncTest, TheCloudsListWinsAtTheStart) {
    setStoredLocally(listOf("Local"));
    setStoredInCloud(listOf("Cloud"));
    launch();
    EXPECT_EQ(firstTitle(), "Cloud");
    EXPECT_EQ(storedLocally(), storedInCloud());
    EXPECT_TRUE(hasSyncDate());
}

TEST_F(SyncTest, AnEmptyCloudIsSeededWithTheLocalBytes) {
    const std::string local = listOf("Local");
    setStoredLocally(local);
    launch();
    EXPECT_EQ(firstTitle(), "Local");
    EXPECT_EQ(storedInCloud(), local);
}

TEST_F(SyncTest, AnOutsideChangeOnAnotherThreadReplacesTheListOnTheMainOne) {
    setStoredLocally(listOf("Old"));
    launch();
    ASSERT_EQ(firstTitle(), "Old");
    bool wasOnMain = false;
    int changes = 0;
    const Subscription subscription = manager().objectWillChange.subscribe([&] {
        ++changes;
        wasOnMain = NSThread.isMainThread;
    });
    const std::string outside = listOf("Outside");
    NSData* const data = toNSData(outside);
    dispatch_async(dispatch_get_global_queue(0, 0), ^{
        recording::changeCloud(@"launcherItems", data, NSUbiquitousKeyValueStoreServerChange);
    });
    ASSERT_TRUE(recording::runUntil([&] { return changes > 0; }));
    EXPECT_EQ(firstTitle(), "Outside");
    EXPECT_TRUE(wasOnMain);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(storedLocally(), outside);
    EXPECT_TRUE(hasSyncDate());
}

TEST_F(SyncTest, AnAccountThatGoesLeavesTheLocalList) {
    setStoredLocally(listOf("Local"));
    launch();
    recording::setIdentityToken(nil);
    int changes = 0;
    const auto subscription = manager().objectWillChange.subscribe([&] { ++changes; });
    recording::changeCloud(@"launcherItems", nil, NSUbiquitousKeyValueStoreAccountChange);
    ASSERT_TRUE(recording::runUntil([&] { return changes > 0; }));
    EXPECT_EQ(firstTitle(), "Local");
    EXPECT_EQ(storedInCloud(), std::nullopt);
}

TEST_F(SyncTest, AnUndecodableCloudValueIsPassedOverAndKept) {
    setStoredLocally(listOf("Local"));
    setStoredInCloud("no list");
    launch();
    EXPECT_EQ(firstTitle(), "Local");
    EXPECT_EQ(storedInCloud(), "no list");
}

} // namespace
} // namespace kestrel::tests
