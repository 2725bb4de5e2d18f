#pragma once
// What every Cloud promises, run on the fake and on each system's own.
//
// A Rig starts signed out with an empty store and offers `Cloud& cloud()`, `void signIn()`,
// `void signOut()`, `void makeNextWriteFail()`, `void changeFromOutside(key, bytes)` while signed
// in, and `void deliver()`, which lets all that has happened reach the observers.

#include "platform/cloud.h"

#include <optional>
#include <string>

#include <gtest/gtest.h>

namespace kestrel::tests {

template <typename Rig>
class CloudContract : public testing::Test {
  protected:
    Rig rig;
    int changes = 0;

    Cloud& cloud() { return rig.cloud(); }
    CloudKeyValueStore& store() { return *rig.cloud().defaultStore(); }

    /// Signs in and counts the changes from here on.
    void signInAndObserve() {
        rig.signIn();
        cloud().addExternalChangeObserver([this] { ++changes; });
        rig.deliver();
        changes = 0;
    }
};

TYPED_TEST_SUITE_P(CloudContract);

TYPED_TEST_P(CloudContract, TheTokenIsThereWhileSomeoneIsSignedIn) {
    EXPECT_FALSE(this->cloud().hasIdentityToken());
    this->rig.signIn();
    EXPECT_TRUE(this->cloud().hasIdentityToken());
    EXPECT_TRUE(this->cloud().hasIdentityToken());
    this->rig.signOut();
    EXPECT_FALSE(this->cloud().hasIdentityToken());
}

TYPED_TEST_P(CloudContract, TheStoreIsTheSameAtEveryUse) {
    CloudKeyValueStore* const store = this->cloud().defaultStore();
    ASSERT_NE(store, nullptr);
    this->rig.signIn();
    EXPECT_EQ(this->cloud().defaultStore(), store);
}

TYPED_TEST_P(CloudContract, SynchronizingIsHarmlessAtAnyTime) {
    this->store().synchronize();
    EXPECT_FALSE(this->cloud().hasIdentityToken());
    this->rig.signIn();
    this->store().setData("[]", "launcherItems");
    this->store().synchronize();
    EXPECT_EQ(this->store().dataForKey("launcherItems"), "[]");
}

TYPED_TEST_P(CloudContract, AWriteSignsNobodyIn) {
    this->store().setData("[]", "launcherItems");
    EXPECT_FALSE(this->cloud().hasIdentityToken());
}

TYPED_TEST_P(CloudContract, BytesComeBackAsTheyWere) {
    this->rig.signIn();
    EXPECT_EQ(this->store().dataForKey("launcherItems"), std::nullopt);
    for (const std::string& data : {std::string("[]"), std::string("\0\xFF\n\r", 4), std::string(),
                                    std::string(1000000, 'x')}) {
        this->store().setData(data, "launcherItems");
        EXPECT_EQ(this->store().dataForKey("launcherItems"), data);
    }
    EXPECT_EQ(this->store().dataForKey("other"), std::nullopt);
}

TYPED_TEST_P(CloudContract, AFailedWriteLeavesWhatWasStored) {
    this->rig.signIn();
    this->store().setData("old", "launcherItems");
    this->rig.makeNextWriteFail();
    this->store().setData("new", "launcherItems");
    EXPECT_EQ(this->store().dataForKey("launcherItems"), "old");
    this->store().setData("third", "launcherItems");
    EXPECT_EQ(this->store().dataForKey("launcherItems"), "third");
}

TYPED_TEST_P(CloudContract, ChangesFromOutsideAreReportedAndReadable) {
    this->signInAndObserve();
    this->rig.changeFromOutside("launcherItems", "[1]");
    this->rig.deliver();
    EXPECT_EQ(this->changes, 1);
    EXPECT_EQ(this->store().dataForKey("launcherItems"), "[1]");
    this->rig.changeFromOutside("launcherItems", "[1]");
    this->rig.deliver();
    EXPECT_EQ(this->changes, 2);
}

TYPED_TEST_P(CloudContract, OwnWritesAreNotReported) {
    this->signInAndObserve();
    this->store().setData("[]", "launcherItems");
    this->store().synchronize();
    this->rig.deliver();
    this->store().setData("[1]", "launcherItems");
    this->rig.deliver();
    EXPECT_EQ(this->changes, 0);
}

TYPED_TEST_P(CloudContract, EveryObserverIsCalled) {
    this->signInAndObserve();
    int others = 0;
    this->cloud().addExternalChangeObserver([&others] { ++others; });
    this->rig.changeFromOutside("launcherItems", "[1]");
    this->rig.deliver();
    EXPECT_EQ(this->changes, 1);
    EXPECT_EQ(others, 1);
}

TYPED_TEST_P(CloudContract, AccountsThatComeAndGoAreReported) {
    this->signInAndObserve();
    this->rig.signOut();
    this->rig.deliver();
    EXPECT_EQ(this->changes, 1);
    this->rig.signIn();
    this->rig.deliver();
    EXPECT_EQ(this->changes, 2);
}

REGISTER_TYPED_TEST_SUITE_P(CloudContract, TheTokenIsThereWhileSomeoneIsSignedIn,
                            TheStoreIsTheSameAtEveryUse, SynchronizingIsHarmlessAtAnyTime,
                            AWriteSignsNobodyIn, BytesComeBackAsTheyWere,
                            AFailedWriteLeavesWhatWasStored,
                            ChangesFromOutsideAreReportedAndReadable, OwnWritesAreNotReported,
                            EveryObserverIsCalled, AccountsThatComeAndGoAreReported);

} // namespace kestrel::tests
