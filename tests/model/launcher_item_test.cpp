#include "model/launcher_item.h"
#include "tests/model/launcher_item_printing.h"

#include <gtest/gtest.h>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

namespace kestrel {

namespace {

LauncherItem fullItem() {
    return {.id = Uuid::parse("E621E1F8-C36C-495A-93FC-0C247A3E6E5F").value_or(Uuid()),
            .title = "Caf\u00e9",
            .type = ItemType::commandFile,
            .path = "/bin/caf\u00e9",
            .command = "echo caf\u00e9"};
}

std::size_t hashOf(const LauncherItem& item) { return std::hash<LauncherItem>{}(item); }

TEST(LauncherItemTest, ANewItemGetsAFreshIdAndNoTexts) {
    const LauncherItem a{.title = "A", .type = ItemType::app};
    const LauncherItem b{.title = "A", .type = ItemType::app};
    EXPECT_NE(a.id, b.id);
    EXPECT_EQ(a.id.toString()[14], '4');
    EXPECT_EQ(a.path, std::nullopt);
    EXPECT_EQ(a.command, std::nullopt);
}

TEST(LauncherItemTest, AGivenIdIsKept) {
    const Uuid id = Uuid::random();
    EXPECT_EQ((LauncherItem{.id = id, .title = "A"}).id, id);
}

TEST(LauncherItemTest, CopiesAreIndependent) {
    const LauncherItem item = fullItem();
    LauncherItem copy = item;
    EXPECT_EQ(copy, item);
    copy.path->append("x");
    EXPECT_EQ(item, fullItem());
    EXPECT_NE(copy, item);
}

TEST(LauncherItemTest, ItemsThatDifferOnlyInTheirIdAreNotEqual) {
    LauncherItem other = fullItem();
    other.id = Uuid::random();
    EXPECT_NE(other, fullItem());
}

TEST(LauncherItemTest, ItemsThatDifferInOneFieldAreNotEqual) {
    const std::vector<std::pair<std::string, void (*)(LauncherItem&)>> changes{
        {"title", [](LauncherItem& item) { item.title = "Cafe"; }},
        {"type", [](LauncherItem& item) { item.type = ItemType::app; }},
        {"path", [](LauncherItem& item) { item.path = "/bin"; }},
        {"no path", [](LauncherItem& item) { item.path.reset(); }},
        {"command", [](LauncherItem& item) { item.command = "echo"; }},
        {"no command", [](LauncherItem& item) { item.command.reset(); }},
        {"swapped", [](LauncherItem& item) { std::swap(item.path, item.command); }},
    };
    for (const auto& [name, change] : changes) {
        LauncherItem other = fullItem();
        change(other);
        EXPECT_NE(other, fullItem()) << name;
        EXPECT_NE(fullItem(), other) << name;
    }
}

TEST(LauncherItemTest, AnAbsentPathDoesNotEqualAnEmptyPath) {
    LauncherItem absent = fullItem();
    absent.path.reset();
    LauncherItem empty = fullItem();
    empty.path = "";
    EXPECT_NE(absent, empty);
    EXPECT_NE(hashOf(absent), hashOf(empty));
}

TEST(LauncherItemTest, AnAbsentCommandDoesNotEqualAnEmptyCommand) {
    LauncherItem absent = fullItem();
    absent.command.reset();
    LauncherItem empty = fullItem();
    empty.command = "";
    EXPECT_NE(absent, empty);
    EXPECT_NE(hashOf(absent), hashOf(empty));
}

TEST(LauncherItemTest, TextsAreComparedByCanonicalEquivalenceInEveryField) {
    LauncherItem decomposed = fullItem();
    decomposed.title = "Cafe\u0301";
    decomposed.path = "/bin/cafe\u0301";
    decomposed.command = "echo cafe\u0301";
    EXPECT_EQ(decomposed, fullItem());
    EXPECT_EQ(hashOf(decomposed), hashOf(fullItem()));
    EXPECT_EQ((std::unordered_set<LauncherItem>{decomposed, fullItem()}).size(), 1U);
}

TEST(LauncherItemTest, EveryFieldTakesPartInTheHash) {
    std::unordered_set<std::size_t> hashes{hashOf(fullItem())};
    const std::vector<void (*)(LauncherItem&)> changes{
        [](LauncherItem& item) { item.id = Uuid(); },
        [](LauncherItem& item) { item.title = "x"; },
        [](LauncherItem& item) { item.type = ItemType::app; },
        [](LauncherItem& item) { item.path = "x"; },
        [](LauncherItem& item) { item.command = "x"; },
        [](LauncherItem& item) { std::swap(item.path, item.command); },
    };
    for (const auto change : changes) {
        LauncherItem item = fullItem();
        change(item);
        hashes.insert(hashOf(item));
    }
    EXPECT_EQ(hashes.size(), changes.size() + 1);
}

TEST(LauncherItemTest, TheHashTellsAPathFromACommandOfTheSameText) {
    LauncherItem path = fullItem();
    path.command.reset();
    LauncherItem command = fullItem();
    command.command = std::exchange(command.path, std::nullopt);
    ASSERT_EQ(path.path, command.command);
    EXPECT_NE(path, command);
    EXPECT_NE(hashOf(path), hashOf(command));
}

} // namespace

} // namespace kestrel
