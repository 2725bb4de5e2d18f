#include "store/item_list.h"

#include "tests/fakes/store_fixture.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

namespace kestrel::tests {
namespace {

using testing::ElementsAre;

class ItemListTest : public testing::Test {
  protected:
    WillChangeSignal signal;
    ItemList list{signal};
    int signals = 0;
    Subscription subscription = signal.subscribe([this] { ++signals; });

    void SetUp() override {
        list.assign({appItem("A"), appItem("B"), appItem("C"), appItem("D"), appItem("E")});
        signals = 0;
    }
};

/// Every kind of write, each of which changes the list of the fixture, whose third item is given.
struct Write {
    const char* name;
    void (*write)(ItemList& list, const LauncherItem& third);
};

const Write writes[] = {
    {"assign", [](ItemList& list, const LauncherItem&) { list.assign({appItem("New")}); }},
    {"append", [](ItemList& list, const LauncherItem&) { list.append(appItem("New")); }},
    {"remove",
     [](ItemList& list, const LauncherItem&) {
         list.remove({1, 3});
     }},
    {"move", [](ItemList& list, const LauncherItem&) { list.move({1}, 4); }},
    {"replace",
     [](ItemList& list, const LauncherItem& third) {
         LauncherItem changed = third;
         changed.title = "New";
         list.replace(changed);
     }},
};

TEST_F(ItemListTest, EveryWriteFiresOnceAndItsHandlersStillSeeTheOldList) {
    const std::vector<LauncherItem> start = list.values();
    std::vector<LauncherItem> seen;
    const Subscription reader = signal.subscribe([&] { seen = list.values(); });
    for (const auto& [name, write] : writes) {
        list.assign(start);
        signals = 0;
        seen.clear();
        write(list, start[2]);
        EXPECT_EQ(signals, 1) << name;
        EXPECT_EQ(seen, start) << name;
        EXPECT_NE(list.values(), start) << name;
    }
}

TEST_F(ItemListTest, EveryWriteFiresOnceEvenIfItChangesNothing) {
    list.remove({});
    list.move({0}, 0);
    list.replace(list[0]);
    list.assign(list.values());
    EXPECT_EQ(signals, 4);
}

TEST_F(ItemListTest, EveryWriteMakesANewRevisionWhichItsHandlersDoNotSeeYet) {
    const std::vector<LauncherItem> start = list.values();
    std::vector<std::uint64_t> seen;
    const Subscription reader = signal.subscribe([&] { seen.push_back(list.revision()); });
    for (const auto& [name, write] : writes) {
        list.assign(start);
        seen.clear();
        const std::uint64_t before = list.revision();
        write(list, start[2]);
        EXPECT_GT(list.revision(), before) << name;
        EXPECT_THAT(seen, ElementsAre(before)) << name;
    }
}

TEST_F(ItemListTest, WhatFiresNoSignalMakesNoRevision) {
    const std::uint64_t before = list.revision();
    EXPECT_FALSE(list.replace(appItem("Unknown")));
    EXPECT_EQ(list.positionOf(Uuid()), std::nullopt);
    EXPECT_EQ(list.revision(), before);
}

TEST_F(ItemListTest, RemoveTakesAllPositionsAtOnceAndIgnoresThosePastTheEnd) {
    list.remove({1, 3, 99});
    EXPECT_THAT(titles(list), ElementsAre("A", "C", "E"));
}

TEST_F(ItemListTest, MoveCountsTheDestinationBeforeTheMove) {
    const struct {
        Positions positions;
        std::size_t destination;
        std::vector<std::string> result;
    } table[] = {
        {{0}, 0, {"A", "B", "C", "D", "E"}},       {{0}, 1, {"A", "B", "C", "D", "E"}},
        {{0}, 2, {"B", "A", "C", "D", "E"}},       {{0}, 5, {"B", "C", "D", "E", "A"}},
        {{4}, 0, {"E", "A", "B", "C", "D"}},       {{3}, 1, {"A", "D", "B", "C", "E"}},
        {{0, 2, 4}, 1, {"A", "C", "E", "B", "D"}}, {{1, 3}, 5, {"A", "C", "E", "B", "D"}},
        {{1, 3}, 2, {"A", "B", "D", "C", "E"}},    {{2}, 99, {"A", "B", "D", "E", "C"}},
        {{99}, 0, {"A", "B", "C", "D", "E"}},      {{}, 3, {"A", "B", "C", "D", "E"}},
    };
    const std::vector<LauncherItem> start = list.values();
    for (const auto& row : table) {
        list.assign(start);
        list.move(row.positions, row.destination);
        EXPECT_EQ(titles(list), row.result)
            << testing::PrintToString(row.positions) << " to " << row.destination;
    }
}

TEST_F(ItemListTest, MoveTakesAnyNumberOfPositionsAnywhere) {
    // Against the rule itself, for every set of positions and every destination.
    const std::vector<std::string> start = titles(list);
    for (unsigned set = 0; set < 1U << start.size(); ++set) {
        for (std::size_t destination = 0; destination <= start.size(); ++destination) {
            Positions positions;
            std::vector<std::string> before;
            std::vector<std::string> moved;
            std::vector<std::string> after;
            for (std::size_t i = 0; i < start.size(); ++i) {
                const bool isMoved = (set >> i & 1U) != 0;
                (isMoved ? moved : i < destination ? before : after).push_back(start[i]);
                if (isMoved)
                    positions.insert(i);
            }
            before.insert(before.end(), moved.begin(), moved.end());
            before.insert(before.end(), after.begin(), after.end());
            list.assign({appItem("A"), appItem("B"), appItem("C"), appItem("D"), appItem("E")});
            list.move(positions, destination);
            ASSERT_EQ(titles(list), before)
                << testing::PrintToString(positions) << " to " << destination;
        }
    }
}

TEST_F(ItemListTest, ReplaceTakesTheFirstItemWithTheIdAndFiresNothingWhenThereIsNone) {
    LauncherItem twin = list[1];
    twin.title = "Twin";
    list.append(twin);
    twin.title = "New";
    signals = 0;
    EXPECT_TRUE(list.replace(twin));
    EXPECT_THAT(titles(list), ElementsAre("A", "New", "C", "D", "E", "Twin"));
    EXPECT_EQ(signals, 1);
    EXPECT_FALSE(list.replace(appItem("Unknown")));
    EXPECT_THAT(titles(list), ElementsAre("A", "New", "C", "D", "E", "Twin"));
    EXPECT_EQ(signals, 1);
}

TEST_F(ItemListTest, LookupsTakeTheFirstMatchAndMissQuietly) {
    LauncherItem twin = list[1];
    twin.title = "Twin";
    list.append(twin);
    EXPECT_EQ(list.positionOf(twin.id), 1U);
    EXPECT_EQ(list.find(twin.id)->title, "B");
    EXPECT_EQ(list.positionOf(Uuid()), std::nullopt);
    EXPECT_EQ(list.find(Uuid()), nullptr);
}

/// What a handler does once, at the first signal that it hears.
class ItemListHandlerTest : public ItemListTest {
  protected:
    std::function<void()> act;
    Subscription actor = signal.subscribe([this] {
        if (const auto once = std::exchange(act, nullptr))
            once();
    });
};

TEST_F(ItemListHandlerTest, AnyWriteInsideAnyWriteIsDoneBeforeItWithASignalOfItsOwn) {
    const std::vector<LauncherItem> start = list.values();
    for (const auto& [outerName, outer] : writes) {
        for (const auto& [innerName, inner] : writes) {
            list.assign(start);
            inner(list, start[2]);
            outer(list, start[2]);
            const std::vector<std::string> oneAfterTheOther = titles(list);
            list.assign(start);
            signals = 0;
            act = [this, &start, write = inner] { write(list, start[2]); };
            outer(list, start[2]);
            EXPECT_EQ(signals, 2) << innerName << " in " << outerName;
            EXPECT_EQ(titles(list), oneAfterTheOther) << innerName << " in " << outerName;
        }
    }
}

TEST_F(ItemListHandlerTest, AWriteInsideAWriteHasARevisionOfItsOwn) {
    const std::vector<LauncherItem> start = list.values();
    for (const auto& [outerName, outer] : writes) {
        for (const auto& [innerName, inner] : writes) {
            list.assign(start);
            const std::uint64_t before = list.revision();
            std::uint64_t between = 0;
            act = [&, write = inner] {
                write(list, start[2]);
                between = list.revision();
            };
            outer(list, start[2]);
            EXPECT_GT(between, before) << innerName << " in " << outerName;
            EXPECT_GT(list.revision(), between) << innerName << " in " << outerName;
        }
    }
}

TEST_F(ItemListHandlerTest, PositionsArePositionsInTheListThatTheHandlersLeft) {
    act = [this] { list.remove({0, 1, 2}); };
    list.remove({1, 4});
    EXPECT_THAT(titles(list), ElementsAre("D"));
    act = [this] { list.assign({appItem("X"), appItem("Y")}); };
    list.move({0, 4}, 5);
    EXPECT_THAT(titles(list), ElementsAre("Y", "X"));
    act = [this] { list.assign({}); };
    list.move({0, 1}, 2);
    EXPECT_TRUE(list.empty());
}

TEST_F(ItemListHandlerTest, ReplaceFindsItsItemWhereverAHandlerMovedIt) {
    LauncherItem changed = list[4];
    changed.title = "New";
    act = [this] {
        list.remove({0, 2});
        list.move({2}, 0);
    };
    EXPECT_TRUE(list.replace(changed));
    EXPECT_THAT(titles(list), ElementsAre("New", "B", "D"));
}

TEST_F(ItemListHandlerTest, AReplacementOfAnItemThatAHandlerRemovedIsDropped) {
    LauncherItem changed = list[4];
    changed.title = "New";
    act = [this] { list.remove({4}); };
    EXPECT_FALSE(list.replace(changed));
    EXPECT_THAT(titles(list), ElementsAre("A", "B", "C", "D"));
    EXPECT_EQ(signals, 2);
}

TEST(ItemListDeathTest, AHandlerThatDestroysTheListEndsTheProgram) {
    for (const auto& [name, write] : writes) {
        WillChangeSignal signal;
        auto list = std::make_unique<ItemList>(signal);
        list->assign({appItem("A"), appItem("B"), appItem("C"), appItem("D")});
        const Subscription destroyer = signal.subscribe([&] { list.reset(); });
        EXPECT_DEATH(write(*list, (*list)[2]), "handler destroyed the list") << name;
    }
}

} // namespace
} // namespace kestrel::tests
