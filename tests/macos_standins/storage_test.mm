// The stores' contracts on the system's own, and what is special about those.
#include "shells/macos/foundation/text.h"
#include "shells/macos/storage/cloud.h"
#include "shells/macos/storage/user_defaults.h"
#include "tests/contract/cloud_contract.h"
#include "tests/contract/user_defaults_contract.h"
#include "tests/macos_standins/macos_fixture.h"

#include <atomic>
#include <memory>
#include <thread>

namespace kestrel::tests {
namespace {

using macos_shell::ICloud;
using macos_shell::StandardUserDefaults;
using macos_shell::toNSData;
using macos_shell::toNSString;

class StandardUserDefaultsSetup : MacosSystem {
  public:
    StandardUserDefaultsSetup() { clear(); }
    StandardUserDefaultsSetup(const StandardUserDefaultsSetup&) = delete;
    StandardUserDefaultsSetup& operator=(const StandardUserDefaultsSetup&) = delete;
    ~StandardUserDefaultsSetup() { clear(); }

    UserDefaults& defaults() { return *defaults_; }
    void makeNextWriteFail() { recording::failNextDefaultsWrite(); }
    void startAnew() {
        [NSUserDefaults.standardUserDefaults synchronize];
        [NSUserDefaults resetStandardUserDefaults];
        defaults_ = std::make_unique<StandardUserDefaults>();
    }

  private:
    /// The keys that the contract uses besides the program's.
    static void clear() {
        for (NSString* key in @[ @"first", @"second", @"third", @"fourth", @"key" ])
            [NSUserDefaults.standardUserDefaults removeObjectForKey:key];
    }

    std::unique_ptr<UserDefaults> defaults_ = std::make_unique<StandardUserDefaults>();
};

class ICloudSetup : MacosSystem {
  public:
    ICloudSetup() { recording::setIdentityToken(nil); }

    Cloud& cloud() { return cloud_; }
    void signIn() { setToken(@"token"); }
    void signOut() { setToken(nil); }
    void makeNextWriteFail() { recording::failNextCloudWrite(); }
    void changeFromOutside(const std::string& key, const std::string& bytes) {
        recording::changeCloud(toNSString(key), toNSData(bytes),
                               NSUbiquitousKeyValueStoreServerChange);
    }
    void deliver() {}

  private:
    /// The system tells of an account that comes or goes as of a change of the store.
    static void setToken(id<NSObject, NSCopying, NSCoding> token) {
        recording::setIdentityToken(token);
        recording::changeCloud(@"account", nil, NSUbiquitousKeyValueStoreAccountChange);
    }

    ICloud cloud_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Macos, UserDefaultsContract, StandardUserDefaultsSetup);
INSTANTIATE_TYPED_TEST_SUITE_P(Macos, CloudContract, ICloudSetup);

class StorageTest : public MacosFixture {};

TEST_F(StorageTest, ADateIsStoredAsADateOfTheSystem) {
    StandardUserDefaults defaults;
    defaults.setDate(Date(std::chrono::milliseconds(1'700'000'000'250)), "lastLocalSync");
    const id stored = [NSUserDefaults.standardUserDefaults objectForKey:@"lastLocalSync"];
    ASSERT_TRUE([stored isKindOfClass:NSDate.class]);
    EXPECT_DOUBLE_EQ([stored timeIntervalSince1970], 1'700'000'000.25);
    EXPECT_EQ(defaults.dataForKey("lastLocalSync"), std::nullopt);
}

TEST_F(StorageTest, AValueOfAnotherKindIsNoData) {
    [NSUserDefaults.standardUserDefaults setObject:@"text" forKey:@"launcherItems"];
    [NSUbiquitousKeyValueStore.defaultStore setString:@"text" forKey:@"launcherItems"];
    ICloud cloud;
    EXPECT_EQ(StandardUserDefaults().dataForKey("launcherItems"), std::nullopt);
    EXPECT_EQ(cloud.defaultStore()->dataForKey("launcherItems"), std::nullopt);
}

TEST_F(StorageTest, EveryReasonOfAnOutsideChangeIsHeardOnTheThreadThatPostsIt) {
    ICloud cloud;
    std::atomic<int> calls = 0;
    std::atomic<bool> wasOnMain = true;
    cloud.addExternalChangeObserver([&] {
        ++calls;
        wasOnMain = NSThread.isMainThread;
    });
    for (const NSInteger reason :
         {NSUbiquitousKeyValueStoreServerChange, NSUbiquitousKeyValueStoreInitialSyncChange,
          NSUbiquitousKeyValueStoreQuotaViolationChange, NSUbiquitousKeyValueStoreAccountChange})
        recording::changeCloud(@"any", nil, reason);
    EXPECT_EQ(calls, 4);
    EXPECT_TRUE(wasOnMain);
    dispatch_async(dispatch_get_global_queue(0, 0), ^{
        recording::changeCloud(@"any", nil, NSUbiquitousKeyValueStoreServerChange);
    });
    ASSERT_TRUE(recording::runUntil([&] { return calls == 5; }));
    EXPECT_FALSE(wasOnMain);
}

TEST_F(StorageTest, TheSameNotificationOfAnotherSenderIsNotHeard) {
    ICloud cloud;
    int calls = 0;
    cloud.addExternalChangeObserver([&] { ++calls; });
    NSNotificationCenter* const center = NSNotificationCenter.defaultCenter;
    NSString* const name = NSUbiquitousKeyValueStoreDidChangeExternallyNotification;
    [center postNotificationName:name object:[[NSObject alloc] init]];
    EXPECT_EQ(calls, 0);
    [center postNotificationName:name object:NSUbiquitousKeyValueStore.defaultStore];
    EXPECT_EQ(calls, 1);
}

TEST_F(StorageTest, NoObserverIsCalledOnceTheCloudIsGone) {
    int calls = 0;
    {
        ICloud cloud;
        cloud.addExternalChangeObserver([&] { ++calls; });
    }
    recording::changeCloud(@"any", nil, NSUbiquitousKeyValueStoreServerChange);
    EXPECT_EQ(calls, 0);
}

} // namespace
} // namespace kestrel::tests
