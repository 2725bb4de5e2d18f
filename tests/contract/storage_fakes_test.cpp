// The storage ports' contracts on the fakes, and the fakes' own logs.
#include "tests/contract/cloud_contract.h"
#include "tests/contract/user_defaults_contract.h"
#include "tests/fakes/fake_cloud.h"
#include "tests/fakes/fake_user_defaults.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kestrel::tests {
namespace {

using Calls = std::vector<std::string>;

class FakeUserDefaultsRig {
  public:
    UserDefaults& defaults() { return defaults_; }
    void makeNextWriteFail() { defaults_.failNextWrite = true; }
    void startAnew() {}

  private:
    CallLog log_;
    FakeUserDefaults defaults_{log_};
};

class FakeCloudRig {
  public:
    Cloud& cloud() { return cloud_; }
    void signIn() { setAccount(true); }
    void signOut() { setAccount(false); }
    void makeNextWriteFail() { cloud_.store.failNextWrite = true; }
    void changeFromOutside(const std::string& key, const std::string& bytes) {
        cloud_.store.data[key] = bytes;
        cloud_.postExternalChange();
    }
    void deliver() {}

  private:
    void setAccount(bool signedIn) {
        cloud_.signedIn = signedIn;
        cloud_.postExternalChange();
    }

    CallLog log_;
    FakeCloud cloud_{log_};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Fake, UserDefaultsContract, FakeUserDefaultsRig);
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, CloudContract, FakeCloudRig);

TEST(StorageFakesTest, EveryCallIsLoggedInOrderAcrossPorts) {
    CallLog log;
    FakeUserDefaults defaults(log);
    FakeCloud cloud(log);
    cloud.addExternalChangeObserver([] {});
    cloud.hasIdentityToken();
    cloud.defaultStore()->dataForKey("launcherItems");
    cloud.store.setData("[]", "launcherItems");
    cloud.store.synchronize();
    defaults.dataForKey("launcherItems");
    defaults.setData("[]", "launcherItems");
    defaults.setDate(Date{}, "lastLocalSync");
    EXPECT_EQ(
        log.calls,
        (Calls{"cloud.addExternalChangeObserver", "cloud.hasIdentityToken", "cloud.defaultStore",
               "cloudStore.dataForKey launcherItems", "cloudStore.setData launcherItems",
               "cloudStore.synchronize", "defaults.dataForKey launcherItems",
               "defaults.setData launcherItems", "defaults.setDate lastLocalSync"}));
}

TEST(StorageFakesTest, AWriteThatFailsIsLoggedAllTheSame) {
    CallLog log;
    FakeUserDefaults defaults(log);
    defaults.failNextWrite = true;
    defaults.setDate(Date{}, "lastLocalSync");
    EXPECT_TRUE(defaults.dates.empty());
    EXPECT_FALSE(defaults.failNextWrite);
    EXPECT_EQ(log.calls, Calls{"defaults.setDate lastLocalSync"});
}

TEST(StorageFakesTest, APlatformMayHaveNoCloudStore) {
    CallLog log;
    FakeCloud cloud(log);
    cloud.hasStore = false;
    EXPECT_EQ(cloud.defaultStore(), nullptr);
    EXPECT_EQ(log.calls, Calls{"cloud.defaultStore"});
}

} // namespace
} // namespace kestrel::tests
