#include "store/items_manager.h"

#include "model/item_list_json.h"
#include "tests/fakes/store_fixture.h"

#include <gmock/gmock.h>

#include <thread>
#include <utility>

namespace kestrel::tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* idText = "E621E1F8-C36C-495A-93FC-0C247A3E6E5F";

std::string listOf(const std::string& title) {
    // The blanks show that bytes are copied, not written anew.
    return "[ {\"id\":\"" + std::string(idText) + "\",\"title\":\"" + title +
           "\",\"type\":\"App\"} ]";
}

const std::string cloudList = listOf("Cloud");
const std::string localList = listOf("Local");
const std::string undecodableList = "{not a list";

class ItemsManagerTest : public StoreFixture {
  protected:
    std::unique_ptr<ItemsManager> manager;
    int signals = 0;
    Subscription subscription;

    void storeLocally(const std::string& bytes) { defaults.data["launcherItems"] = bytes; }
    void storeInCloud(const std::string& bytes) { cloud.store.data["launcherItems"] = bytes; }
    std::string local() { return defaults.data["launcherItems"]; }
    std::string inCloud() { return cloud.store.data["launcherItems"]; }
    bool dateIsSet() { return defaults.dates.contains("lastLocalSync"); }

    /// Makes the store, with its signals counted, and lets the main queue run.
    void start() {
        construct();
        mainQueue.runAll();
    }
    void construct() {
        manager = std::make_unique<ItemsManager>(ports);
        subscription = manager->objectWillChange.subscribe([this] { ++signals; });
    }
};

TEST_F(ItemsManagerTest, ConstructionRegistersThenSynchronisesThenLoadsWithoutAnAccount) {
    construct();
    EXPECT_THAT(log.calls, ElementsAre("cloud.addExternalChangeObserver", "cloud.defaultStore",
                                       "cloudStore.synchronize", "cloud.hasIdentityToken",
                                       "defaults.dataForKey launcherItems"));
}

TEST_F(ItemsManagerTest, ConstructionWithAnAccountReadsTheCloudFirst) {
    cloud.signedIn = true;
    storeInCloud(cloudList);
    construct();
    EXPECT_THAT(log.calls,
                ElementsAre("cloud.addExternalChangeObserver", "cloud.defaultStore",
                            "cloudStore.synchronize", "cloud.hasIdentityToken",
                            "cloud.defaultStore", "cloudStore.dataForKey launcherItems",
                            "defaults.setData launcherItems", "defaults.setDate lastLocalSync"));
}

/// The main queue, whose posts stand in the log between the calls of the stores.
class LoggingQueue final : public MainQueue {
  public:
    explicit LoggingQueue(CallLog& log) : log_(log) {}
    void async(std::function<void()> /*task*/) override { log_.add("mainQueue.async"); }

  private:
    CallLog& log_;
};

TEST_F(ItemsManagerTest, ALoadedListIsPostedBeforeAnythingIsWritten) {
    LoggingQueue queue{log};
    ItemsManager loading{{queue, defaults, cloud, clock, workspace, terminal}};
    cloud.signedIn = true;
    storeLocally(localList);
    takeCalls();
    loading.load();
    EXPECT_THAT(
        log.calls,
        ElementsAre("cloud.hasIdentityToken", "cloud.defaultStore",
                    "cloudStore.dataForKey launcherItems", "defaults.dataForKey launcherItems",
                    "mainQueue.async", "cloud.hasIdentityToken", "cloud.defaultStore",
                    "defaults.dataForKey launcherItems", "cloudStore.dataForKey launcherItems",
                    "cloudStore.setData launcherItems", "cloudStore.synchronize"));
    takeCalls();
    loading.load();
    EXPECT_THAT(log.calls,
                ElementsAre("cloud.hasIdentityToken", "cloud.defaultStore",
                            "cloudStore.dataForKey launcherItems", "mainQueue.async",
                            "defaults.setData launcherItems", "defaults.setDate lastLocalSync"));
}

TEST_F(ItemsManagerTest, AFirstRunWithNothingStoredStaysEmptyAndWritesNothing) {
    cloud.signedIn = true;
    start();
    EXPECT_TRUE(manager->items.empty());
    EXPECT_EQ(signals, 0);
    EXPECT_THAT(defaults.data, IsEmpty());
    EXPECT_THAT(defaults.dates, IsEmpty());
    EXPECT_THAT(cloud.store.data, IsEmpty());
}

TEST_F(ItemsManagerTest, RightAfterConstructionItemsIsEmptyAndFillsOnTheNextTurn) {
    storeLocally(localList);
    construct();
    EXPECT_TRUE(manager->items.empty());
    EXPECT_EQ(signals, 0);
    mainQueue.runTurn();
    EXPECT_THAT(titles(manager->items), ElementsAre("Local"));
    EXPECT_EQ(signals, 1);
}

TEST_F(ItemsManagerTest, TheCloudListWinsAndTheLocalOneBecomesItsBytes) {
    cloud.signedIn = true;
    storeInCloud(cloudList);
    storeLocally(localList);
    start();
    EXPECT_THAT(titles(manager->items), ElementsAre("Cloud"));
    EXPECT_EQ(local(), cloudList);
    EXPECT_EQ(defaults.dates["lastLocalSync"], clock.time);
}

TEST_F(ItemsManagerTest, AnUndecodableCloudValueIsPassedOverAndNotTouched) {
    cloud.signedIn = true;
    storeInCloud(undecodableList);
    storeLocally(localList);
    start();
    EXPECT_THAT(titles(manager->items), ElementsAre("Local"));
    EXPECT_EQ(inCloud(), undecodableList);
    EXPECT_EQ(local(), localList);
    EXPECT_FALSE(dateIsSet());
}

TEST_F(ItemsManagerTest, WithoutAnAccountSaveWritesOnlyTheLocalListAndDate) {
    start();
    takeCalls();
    manager->items.append(appItem("One"));
    manager->save();
    EXPECT_THAT(log.calls, ElementsAre("cloud.hasIdentityToken", "defaults.setData launcherItems",
                                       "defaults.setDate lastLocalSync"));
    EXPECT_EQ(local(), encodeItems(manager->items.values()));
    EXPECT_THAT(cloud.store.data, IsEmpty());
}

TEST_F(ItemsManagerTest, WithAnAccountSaveWritesTheCloudThenSynchronisesThenWritesLocally) {
    cloud.signedIn = true;
    start();
    takeCalls();
    manager->items.append(appItem("One"));
    manager->save();
    EXPECT_THAT(log.calls,
                ElementsAre("cloud.hasIdentityToken", "cloud.defaultStore",
                            "cloudStore.setData launcherItems", "cloudStore.synchronize",
                            "defaults.setData launcherItems", "defaults.setDate lastLocalSync"));
    EXPECT_EQ(local(), inCloud());
    EXPECT_EQ(defaults.dates["lastLocalSync"], clock.time);
}

TEST_F(ItemsManagerTest, AnIdentityTokenWithoutAStoreCountsAsNoCloud) {
    cloud.signedIn = true;
    cloud.hasStore = false;
    storeLocally(localList);
    start();
    EXPECT_THAT(titles(manager->items), ElementsAre("Local"));
    takeCalls();
    manager->save();
    EXPECT_THAT(log.calls,
                ElementsAre("cloud.hasIdentityToken", "cloud.defaultStore",
                            "defaults.setData launcherItems", "defaults.setDate lastLocalSync"));
}

TEST_F(ItemsManagerTest, AListThatCannotBeEncodedIsNotWrittenNorIsTheDate) {
    storeLocally(localList);
    start();
    takeCalls();
    manager->items.append(appItem("\xFF"));
    manager->save();
    EXPECT_THAT(log.calls, IsEmpty());
    EXPECT_EQ(local(), localList);
}

TEST_F(ItemsManagerTest, AListThatIsTooLongToBeStoredIsNotWrittenAnywhereNorIsTheDate) {
    cloud.signedIn = true;
    storeInCloud(cloudList);
    start();
    takeCalls();
    manager->items.append(appItem(std::string(maximumListSize, 'x')));
    manager->save();
    EXPECT_THAT(log.calls, IsEmpty());
    manager->items.remove({1});
    manager->save();
    EXPECT_EQ(inCloud(), encodeItems(manager->items.values()));
    EXPECT_EQ(local(), inCloud());
}

TEST_F(ItemsManagerTest, AFailedWriteLeavesTheListOnTheScreenAsItIs) {
    storeLocally(localList);
    start();
    manager->items.append(appItem("New"));
    defaults.failNextWrite = true;
    manager->save();
    EXPECT_THAT(titles(manager->items), ElementsAre("Local", "New"));
    EXPECT_EQ(local(), localList);
}

TEST_F(ItemsManagerTest, DeletingTheLastItemStoresTheEmptyListAndALaterLoadShowsIt) {
    storeLocally(localList);
    start();
    manager->items.remove({0});
    manager->save();
    EXPECT_EQ(local(), "[]");
    manager->load();
    mainQueue.runAll();
    EXPECT_TRUE(manager->items.empty());
}

TEST_F(ItemsManagerTest, UpdateReplacesTheFirstItemWithTheIdAndSavesOnce) {
    start();
    LauncherItem item = appItem("Old");
    LauncherItem twin = item;
    twin.title = "Twin";
    manager->items.assign({appItem("Before"), item, twin});
    signals = 0;
    takeCalls();
    item.title = "New";
    manager->update(item);
    EXPECT_THAT(titles(manager->items), ElementsAre("Before", "New", "Twin"));
    EXPECT_EQ(signals, 1);
    EXPECT_EQ(local(), encodeItems(manager->items.values()));
    EXPECT_TRUE(dateIsSet());
}

TEST_F(ItemsManagerTest, UpdateFindsItsItemWhereverAHandlerMovedIt) {
    start();
    LauncherItem item = appItem("Old");
    manager->items.assign({appItem("First"), appItem("Second"), item});
    item.title = "New";
    bool isDone = false;
    const Subscription mover = manager->objectWillChange.subscribe([&] {
        if (!std::exchange(isDone, true))
            manager->items.remove({0});
    });
    manager->update(item);
    EXPECT_THAT(titles(manager->items), ElementsAre("Second", "New"));
    EXPECT_EQ(local(), encodeItems(manager->items.values()));
}

TEST_F(ItemsManagerTest, AnUpdateOfAnItemThatAHandlerRemovesIsDroppedAndNotSaved) {
    start();
    LauncherItem item = appItem("Old");
    manager->items.assign({appItem("First"), item});
    bool isDone = false;
    const Subscription remover = manager->objectWillChange.subscribe([&] {
        if (!std::exchange(isDone, true))
            manager->items.remove({1});
    });
    takeCalls();
    manager->update(item);
    EXPECT_THAT(titles(manager->items), ElementsAre("First"));
    EXPECT_THAT(log.calls, IsEmpty());
}

TEST_F(ItemsManagerTest, AHandlerMayHaveTheManagerDestroyedByTheMainQueue) {
    start();
    const Subscription owner = manager->objectWillChange.subscribe(
        [this] { mainQueue.async([this] { manager.reset(); }); });
    LauncherItem item = appItem("Item");
    manager->items.append(item);
    manager->update(item);
    EXPECT_EQ(local(), encodeItems(manager->items.values()));
    mainQueue.runAll();
    EXPECT_EQ(manager, nullptr);
}

using ItemsManagerDeathTest = ItemsManagerTest;

TEST_F(ItemsManagerDeathTest, AHandlerThatDestroysTheManagerItselfEndsTheProgram) {
    start();
    const Subscription destroyer = manager->objectWillChange.subscribe([this] { manager.reset(); });
    EXPECT_DEATH(manager->items.append(appItem("Item")), "handler destroyed the list");
}

TEST_F(ItemsManagerTest, UpdateWithAnEqualItemStillSignalsAndSaves) {
    start();
    const LauncherItem item = appItem("Same");
    manager->items.assign({item});
    signals = 0;
    manager->update(item);
    EXPECT_EQ(signals, 1);
    EXPECT_TRUE(dateIsSet());
}

TEST_F(ItemsManagerTest, UpdateOfAnUnknownIdChangesNothingSavesNothingAndFiresNoSignal) {
    storeLocally(localList);
    start();
    signals = 0;
    takeCalls();
    manager->update(appItem("Unknown"));
    EXPECT_THAT(titles(manager->items), ElementsAre("Local"));
    EXPECT_EQ(signals, 0);
    EXPECT_THAT(log.calls, IsEmpty());
}

TEST_F(ItemsManagerTest, AnEditOfAnItemThatAnOutsideChangeRemovedIsDropped) {
    cloud.signedIn = true;
    storeInCloud(cloudList);
    start();
    LauncherItem edited = manager->items[0];
    edited.title = "Edited";
    storeInCloud("[]");
    cloud.postExternalChange();
    mainQueue.runAll();
    takeCalls();
    manager->update(edited);
    EXPECT_TRUE(manager->items.empty());
    EXPECT_THAT(log.calls, IsEmpty());
    EXPECT_EQ(inCloud(), "[]");
}

TEST_F(ItemsManagerTest, LocalEditsMadeWithoutAnAccountAreReplacedByTheCloudAtTheNextLoad) {
    storeInCloud(cloudList);
    storeLocally(localList);
    start();
    manager->items.append(appItem("Offline"));
    manager->save();
    cloud.signedIn = true;
    manager->load();
    mainQueue.runAll();
    EXPECT_THAT(titles(manager->items), ElementsAre("Cloud"));
    EXPECT_EQ(local(), cloudList);
}

TEST_F(ItemsManagerTest, ALoadThatFindsNoListLeavesItemsAlone) {
    start();
    manager->items.append(appItem("Kept"));
    for (const auto& value : {undecodableList, std::string()}) {
        storeLocally(value);
        signals = 0;
        manager->load();
        mainQueue.runAll();
        EXPECT_THAT(titles(manager->items), ElementsAre("Kept"));
        EXPECT_EQ(signals, 0);
        EXPECT_EQ(local(), value);
    }
}

TEST_F(ItemsManagerTest, AnExternalChangeWithTheSameListReplacesItAndRewritesTheLocalCopyAndDate) {
    cloud.signedIn = true;
    storeInCloud(cloudList);
    start();
    signals = 0;
    clock.time += std::chrono::hours(1);
    takeCalls();
    cloud.postExternalChange();
    EXPECT_THAT(log.calls, IsEmpty());
    mainQueue.runAll();
    EXPECT_EQ(signals, 1);
    EXPECT_THAT(log.calls,
                ElementsAre("cloud.hasIdentityToken", "cloud.defaultStore",
                            "cloudStore.dataForKey launcherItems", "defaults.setData launcherItems",
                            "defaults.setDate lastLocalSync"));
    EXPECT_EQ(defaults.dates["lastLocalSync"], clock.time);
}

TEST_F(ItemsManagerTest, AnAccountChangeAfterSigningOutHandsOverTheLocalListAndMigratesNothing) {
    cloud.signedIn = true;
    storeInCloud(cloudList);
    start();
    storeLocally(localList);
    cloud.signedIn = false;
    takeCalls();
    cloud.postExternalChange();
    mainQueue.runAll();
    EXPECT_THAT(titles(manager->items), ElementsAre("Local"));
    EXPECT_THAT(log.calls,
                ElementsAre("cloud.hasIdentityToken", "defaults.dataForKey launcherItems",
                            "cloud.hasIdentityToken"));
    EXPECT_EQ(inCloud(), cloudList);
}

TEST_F(ItemsManagerTest, AFirstStartOnASecondMachineShowsTheCloudListAndStoresItsBytesLocally) {
    cloud.signedIn = true;
    storeInCloud(cloudList);
    start();
    EXPECT_THAT(titles(manager->items), ElementsAre("Cloud"));
    EXPECT_EQ(local(), cloudList);
}

TEST_F(ItemsManagerTest, AFirstStartWithOnlyALocalListCopiesItIntoTheCloudOnce) {
    cloud.signedIn = true;
    storeLocally(localList);
    construct();
    // Copied at once, before the list itself has arrived.
    EXPECT_EQ(inCloud(), localList);
    EXPECT_TRUE(manager->items.empty());
    EXPECT_FALSE(dateIsSet());
    EXPECT_THAT(log.calls,
                ElementsAre("cloud.addExternalChangeObserver", "cloud.defaultStore",
                            "cloudStore.synchronize", "cloud.hasIdentityToken",
                            "cloud.defaultStore", "cloudStore.dataForKey launcherItems",
                            "defaults.dataForKey launcherItems", "cloud.hasIdentityToken",
                            "cloud.defaultStore", "defaults.dataForKey launcherItems",
                            "cloudStore.dataForKey launcherItems",
                            "cloudStore.setData launcherItems", "cloudStore.synchronize"));
    mainQueue.runAll();
    takeCalls();
    start();
    EXPECT_THAT(log.calls, testing::Not(testing::Contains("cloudStore.setData launcherItems")));
}

TEST_F(ItemsManagerTest, AnEmptyListInTheCloudWinsOverLocalItemsAndIsNeverMigratedOver) {
    cloud.signedIn = true;
    storeInCloud("[]");
    storeLocally(localList);
    start();
    EXPECT_TRUE(manager->items.empty());
    EXPECT_EQ(local(), "[]");
    EXPECT_EQ(inCloud(), "[]");
}

TEST_F(ItemsManagerTest, AnUndecodableCloudValueIsRepairedByTheNextSaveOnly) {
    cloud.signedIn = true;
    storeInCloud(undecodableList);
    storeLocally(localList);
    start();
    EXPECT_EQ(inCloud(), undecodableList);
    manager->save();
    EXPECT_EQ(inCloud(), encodeItems(manager->items.values()));
}

TEST_F(ItemsManagerTest, ANotificationOnAnotherThreadOnlyPostsATask) {
    cloud.signedIn = true;
    start();
    takeCalls();
    std::thread([&] { cloud.postExternalChange(); }).join();
    EXPECT_THAT(log.calls, IsEmpty());
    EXPECT_EQ(mainQueue.tasks.size(), 1U);
}

TEST_F(ItemsManagerTest, TwoNotificationsGiveTwoLoadsAndTheLaterHandOverStays) {
    cloud.signedIn = true;
    storeInCloud(cloudList);
    start();
    signals = 0;
    cloud.postExternalChange();
    cloud.postExternalChange();
    ASSERT_EQ(mainQueue.tasks.size(), 2U);
    auto secondLoad = mainQueue.tasks[1];
    mainQueue.tasks[1] = [&, secondLoad] {
        storeInCloud(listOf("Later"));
        secondLoad();
    };
    mainQueue.runAll();
    EXPECT_EQ(signals, 2);
    EXPECT_THAT(titles(manager->items), ElementsAre("Later"));
}

TEST_F(ItemsManagerTest, TasksThatRunWhenTheStoreIsGoneDoNothing) {
    cloud.signedIn = true;
    storeInCloud(cloudList);
    construct();
    cloud.postExternalChange();
    manager.reset();
    takeCalls();
    mainQueue.runAll();
    cloud.postExternalChange();
    mainQueue.runAll();
    EXPECT_THAT(log.calls, IsEmpty());
    EXPECT_EQ(signals, 0);
}

TEST_F(ItemsManagerTest, ExecuteAndIconUseTheItemAlone) {
    start();
    takeCalls();
    manager->execute(appItem("One", "/apps/one"));
    EXPECT_THAT(log.calls, ElementsAre("workspace.openApplication /apps/one"));
    EXPECT_EQ(manager->icon(commandItem("Two")), ItemIcon(FileIcon{"/terminal"}));
}

// What one load ends in, for every state of the account and of the two values.
enum class Value { missing, undecodable, valid };

struct Outcome {
    const char* name;
    bool account;
    Value cloudValue;
    Value localValue;
    const char* shown;      ///< the title handed over; null for none
    bool localBecomesCloud; ///< with the date
    bool cloudBecomesLocal; ///< with a synchronize of its own
};

class LoadOutcomeTest : public ItemsManagerTest, public testing::WithParamInterface<Outcome> {
  protected:
    static std::optional<std::string> bytes(Value value, const std::string& valid) {
        switch (value) {
        case Value::missing:
            return std::nullopt;
        case Value::undecodable:
            return undecodableList;
        case Value::valid:
            break;
        }
        return valid;
    }
    static std::optional<std::string>
    stored(const std::map<std::string, std::string, std::less<>>& data) {
        const auto found = data.find("launcherItems");
        return found == data.end() ? std::nullopt : std::optional(found->second);
    }
};

TEST_P(LoadOutcomeTest, IsAsInTheTable) {
    const Outcome& row = GetParam();
    cloud.signedIn = row.account;
    const auto cloudBefore = bytes(row.cloudValue, cloudList);
    const auto localBefore = bytes(row.localValue, localList);
    if (cloudBefore)
        storeInCloud(*cloudBefore);
    if (localBefore)
        storeLocally(*localBefore);
    start();
    EXPECT_EQ(titles(manager->items),
              row.shown ? std::vector<std::string>{row.shown} : std::vector<std::string>{});
    EXPECT_EQ(signals, row.shown ? 1 : 0);
    EXPECT_EQ(stored(defaults.data), row.localBecomesCloud ? cloudBefore : localBefore);
    EXPECT_EQ(stored(cloud.store.data), row.cloudBecomesLocal ? localBefore : cloudBefore);
    EXPECT_EQ(dateIsSet(), row.localBecomesCloud);
    EXPECT_EQ(std::ranges::count(log.calls, "cloudStore.synchronize"),
              row.cloudBecomesLocal ? 2 : 1);
    const auto cloudReads = std::ranges::count(log.calls, "cloudStore.dataForKey launcherItems");
    EXPECT_TRUE(row.account || cloudReads == 0) << cloudReads;
}

INSTANTIATE_TEST_SUITE_P(
    AllStates, LoadOutcomeTest,
    testing::Values(
        Outcome{"NoAccountLocalValid", false, Value::valid, Value::valid, "Local", false, false},
        Outcome{"NoAccountLocalMissing", false, Value::valid, Value::missing, nullptr, false,
                false},
        Outcome{"NoAccountLocalUndecodable", false, Value::valid, Value::undecodable, nullptr,
                false, false},
        Outcome{"CloudValidLocalValid", true, Value::valid, Value::valid, "Cloud", true, false},
        Outcome{"CloudValidLocalMissing", true, Value::valid, Value::missing, "Cloud", true, false},
        Outcome{"CloudValidLocalUndecodable", true, Value::valid, Value::undecodable, "Cloud", true,
                false},
        Outcome{"CloudMissingLocalValid", true, Value::missing, Value::valid, "Local", false, true},
        Outcome{"CloudUndecodableLocalValid", true, Value::undecodable, Value::valid, "Local",
                false, false},
        Outcome{"CloudMissingLocalMissing", true, Value::missing, Value::missing, nullptr, false,
                false},
        Outcome{"CloudMissingLocalUndecodable", true, Value::missing, Value::undecodable, nullptr,
                false, false},
        Outcome{"CloudUndecodableLocalMissing", true, Value::undecodable, Value::missing, nullptr,
                false, false},
        Outcome{"CloudUndecodableLocalUndecodable", true, Value::undecodable, Value::undecodable,
                nullptr, false, false}),
    [](const auto& test) { return test.param.name; });

} // namespace
} // namespace kestrel::tests
