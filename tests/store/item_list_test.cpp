#include "store/item_list.h"

#include "tests/fakes/store_fixture.h"

#include <gmock/gmock.h>

namespace kestrel::tests {
namespace {

using testing::ElementsAre;

class ItemListTest : public testing::Test {
  protected:
    WillChangeSignal signal;
    ItemList list{signal};
    int signals = 0;
    std::size_t sizeAtSignal = 0;
    Subscription subscription = signal.subscribe([this] {
        ++signals;
        sizeAtSignal = list.size();
    });

    void SetUp() override {
        list.assign({appItem("A"), appItem("B"), appItem("C"), appItem("D"), appItem("E")});
        signals = 0;
    }
};

TEST_F(ItemListTest, EveryWriteFiresOnceAndBeforeTheChange) {
    list.append(appItem("F"));
    EXPECT_EQ(signals, 1);
    EXPECT_EQ(sizeAtSignal, 5U);
    list.remove({0});
    EXPECT_EQ(signals, 2);
    EXPECT_EQ(sizeAtSignal, 6U);
    list.move({0}, 2);
    EXPECT_EQ(signals, 3);
    list.replace(0, list[0]);
    EXPECT_EQ(signals, 4);
    list.assign({});
    EXPECT_EQ(signals, 5);
    EXPECT_EQ(sizeAtSignal, 5U);
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

TEST_F(ItemListTest, LookupsTakeTheFirstMatchAndMissQuietly) {
    LauncherItem twin = list[1];
    twin.title = "Twin";
    list.append(twin);
    EXPECT_EQ(list.positionOf(twin.id), 1U);
    EXPECT_EQ(list.find(twin.id)->title, "B");
    EXPECT_EQ(list.positionOf(Uuid()), std::nullopt);
    EXPECT_EQ(list.find(Uuid()), nullptr);
}

} // namespace
} // namespace kestrel::tests
