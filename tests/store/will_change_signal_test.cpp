#include "store/will_change_signal.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace kestrel {
namespace {

TEST(WillChangeSignalTest, CallsEverySubscriberInOrderAtEveryFiring) {
    const WillChangeSignal* fired = nullptr;
    WillChangeSignal signal;
    fired = &signal;
    std::string calls;
    const auto a = signal.subscribe([&] { calls += 'a'; });
    const auto b = signal.subscribe([&] { calls += 'b'; });
    fired->fire();
    fired->fire();
    EXPECT_EQ(calls, "abab");
}

TEST(WillChangeSignalTest, ADestroyedTokenIsNotCalledAgain) {
    WillChangeSignal signal;
    int calls = 0;
    {
        const auto token = signal.subscribe([&] { ++calls; });
        signal.fire();
    }
    signal.fire();
    EXPECT_EQ(calls, 1);
}

TEST(WillChangeSignalTest, MovingATokenKeepsTheSubscriptionAndAssigningEndsTheOldOne) {
    WillChangeSignal signal;
    std::string calls;
    Subscription token = signal.subscribe([&] { calls += 'a'; });
    Subscription other = std::move(token);
    signal.fire();
    other = signal.subscribe([&] { calls += 'b'; });
    signal.fire();
    EXPECT_EQ(calls, "ab");
}

TEST(WillChangeSignalTest, ATokenMayOutliveTheSignal) {
    auto signal = std::make_optional<WillChangeSignal>();
    int calls = 0;
    Subscription token = signal->subscribe([&] { ++calls; });
    signal->fire();
    signal.reset();
    token = Subscription();
    EXPECT_EQ(calls, 1);
}

TEST(WillChangeSignalTest, AHandlerMayEndItsOwnAndLaterSubscriptionsAndAddNewOnes) {
    WillChangeSignal signal;
    std::string calls;
    Subscription first;
    Subscription second;
    Subscription added;
    first = signal.subscribe([&] {
        calls += '1';
        second = Subscription();
        added = signal.subscribe([&] { calls += '3'; });
        first = Subscription();
    });
    second = signal.subscribe([&] { calls += '2'; });
    signal.fire();
    EXPECT_EQ(calls, "1");
    signal.fire();
    EXPECT_EQ(calls, "13");
}

TEST(WillChangeSignalTest, AHandlerThatEndsItsOwnSubscriptionLivesUntilItReturns) {
    WillChangeSignal signal;
    Subscription token;
    std::weak_ptr<int> captured;
    bool wasAlive = false;
    auto held = std::make_shared<int>(1);
    captured = held;
    token = signal.subscribe([held = std::move(held), &token, &captured, &wasAlive] {
        // Names of their own, since reading a capture of a closure that is gone proves nothing.
        Subscription& own = token;
        const std::weak_ptr<int>& witness = captured;
        bool& result = wasAlive;
        own = Subscription();
        result = !witness.expired();
    });
    EXPECT_FALSE(captured.expired());
    signal.fire();
    EXPECT_TRUE(wasAlive);
    EXPECT_TRUE(captured.expired());
}

TEST(WillChangeSignalTest, AHandlerMayDestroyTheSignal) {
    auto signal = std::make_optional<WillChangeSignal>();
    int calls = 0;
    const auto token = signal->subscribe([&] {
        ++calls;
        signal.reset();
    });
    signal->fire();
    EXPECT_EQ(calls, 1);
}

} // namespace
} // namespace kestrel
