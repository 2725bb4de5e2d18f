#pragma once
// What every UserDefaults promises, run on the fake and on each system's own.
//
// A Rig offers `UserDefaults& defaults()`, `void makeNextWriteFail()` and `void startAnew()`,
// after which `defaults()` is as in the next run of the program.

#include "platform/user_defaults.h"

#include <optional>
#include <string>

#include <gtest/gtest.h>

namespace kestrel::tests {

template <typename Rig>
class UserDefaultsContract : public testing::Test {
  protected:
    Rig rig;

    UserDefaults& defaults() { return rig.defaults(); }
};

TYPED_TEST_SUITE_P(UserDefaultsContract);

TYPED_TEST_P(UserDefaultsContract, AMissingKeyHoldsNothing) {
    EXPECT_EQ(this->defaults().dataForKey("launcherItems"), std::nullopt);
}

TYPED_TEST_P(UserDefaultsContract, BytesComeBackAsTheyWere) {
    for (const std::string& data : {std::string("[]"), std::string("\0\xFF\n\r", 4), std::string(),
                                    std::string(1000000, 'x')}) {
        this->defaults().setData(data, "launcherItems");
        EXPECT_EQ(this->defaults().dataForKey("launcherItems"), data);
    }
}

TYPED_TEST_P(UserDefaultsContract, KeysAreIndependent) {
    this->defaults().setData("one", "first");
    this->defaults().setData("two", "second");
    this->defaults().setDate(Date{}, "third");
    EXPECT_EQ(this->defaults().dataForKey("first"), "one");
    EXPECT_EQ(this->defaults().dataForKey("second"), "two");
    EXPECT_EQ(this->defaults().dataForKey("fourth"), std::nullopt);
}

TYPED_TEST_P(UserDefaultsContract, ValuesOutliveTheProgram) {
    this->defaults().setData("[]", "launcherItems");
    this->rig.startAnew();
    EXPECT_EQ(this->defaults().dataForKey("launcherItems"), "[]");
}

TYPED_TEST_P(UserDefaultsContract, AFailedWriteLeavesWhatWasStored) {
    this->defaults().setData("old", "launcherItems");
    this->rig.makeNextWriteFail();
    this->defaults().setData("new", "launcherItems");
    EXPECT_EQ(this->defaults().dataForKey("launcherItems"), "old");
    this->rig.makeNextWriteFail();
    this->defaults().setDate(Date{}, "launcherItems");
    EXPECT_EQ(this->defaults().dataForKey("launcherItems"), "old");
}

TYPED_TEST_P(UserDefaultsContract, OnlyOneWriteFails) {
    this->rig.makeNextWriteFail();
    this->defaults().setData("first", "launcherItems");
    EXPECT_EQ(this->defaults().dataForKey("launcherItems"), std::nullopt);
    this->defaults().setData("second", "launcherItems");
    EXPECT_EQ(this->defaults().dataForKey("launcherItems"), "second");
}

TYPED_TEST_P(UserDefaultsContract, ADateTakesThePlaceOfBytes) {
    this->defaults().setData("bytes", "key");
    this->defaults().setDate(Date{}, "key");
    EXPECT_NE(this->defaults().dataForKey("key"), "bytes");
    this->defaults().setData("again", "key");
    EXPECT_EQ(this->defaults().dataForKey("key"), "again");
}

REGISTER_TYPED_TEST_SUITE_P(UserDefaultsContract, AMissingKeyHoldsNothing, BytesComeBackAsTheyWere,
                            KeysAreIndependent, ValuesOutliveTheProgram,
                            AFailedWriteLeavesWhatWasStored, OnlyOneWriteFails,
                            ADateTakesThePlaceOfBytes);

} // namespace kestrel::tests
