// What an item and a list look like in their stored form, and which records are read.

#include "model/item_list_json.h"
#include "tests/model/launcher_item_printing.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace kestrel {

namespace {

constexpr const char* idText = "E621E1F8-C36C-495A-93FC-0C247A3E6E5F";

Uuid someId() { return Uuid::parse(idText).value_or(Uuid()); }

/// A list of one record: the id above and `fields`, as in `"title":"A","type":"App"`.
std::string listWith(const std::string& fields) {
    return R"([{"id":")" + std::string(idText) + "\"," + fields + "}]";
}

/// The list written again after it was read; nothing when it was not read.
std::optional<std::string> rewritten(const std::string& json) {
    const auto items = decodeItems(json);
    return items ? encodeItems(*items) : std::nullopt;
}

TEST(ItemListJsonTest, KeysAreWrittenInOrderWithoutWhiteSpaceAndWithEscapedSlashes) {
    const std::vector<LauncherItem> items{
        {.id = someId(), .title = "Files", .type = ItemType::app, .path = "/usr/bin/files"},
        {.id = Uuid(), .title = "", .type = ItemType::inlineCommand, .command = "ls / | less"},
        {.id = Uuid(), .title = "Both", .type = ItemType::commandFile, .path = "a", .command = "b"},
    };
    EXPECT_EQ(
        encodeItems(items),
        R"([{"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","title":"Files","type":"App",)"
        R"("path":"\/usr\/bin\/files"},)"
        R"({"id":"00000000-0000-0000-0000-000000000000","title":"","type":"Inline Command",)"
        R"("command":"ls \/ | less"},)"
        R"({"id":"00000000-0000-0000-0000-000000000000","title":"Both","type":"Command File",)"
        R"("path":"a","command":"b"}])");
}

TEST(ItemListJsonTest, ARecordWithoutPathAndCommandDecodesWithBothAbsentAndIsWrittenWithoutThem) {
    const std::string json = listWith(R"("title":"A","type":"App")");
    const auto items = decodeItems(json);
    ASSERT_TRUE(items);
    ASSERT_EQ(items->size(), 1U);
    EXPECT_EQ(items->front().path, std::nullopt);
    EXPECT_EQ(items->front().command, std::nullopt);
    EXPECT_EQ(encodeItems(*items), json);
}

TEST(ItemListJsonTest, ANullPathDecodesAsAbsentAndIsLeftOutWhenWritten) {
    const auto items = decodeItems(listWith(R"("title":"A","type":"App","path":null)"));
    ASSERT_TRUE(items);
    ASSERT_EQ(items->size(), 1U);
    EXPECT_EQ(items->front().path, std::nullopt);
    EXPECT_EQ(encodeItems(*items), listWith(R"("title":"A","type":"App")"));
}

TEST(ItemListJsonTest, ANullCommandDecodesAsAbsentAndIsLeftOutWhenWritten) {
    const auto items = decodeItems(listWith(R"("title":"A","type":"App","command":null)"));
    ASSERT_TRUE(items);
    ASSERT_EQ(items->size(), 1U);
    EXPECT_EQ(items->front().command, std::nullopt);
    EXPECT_EQ(encodeItems(*items), listWith(R"("title":"A","type":"App")"));
}

TEST(ItemListJsonTest, AnEmptyPathAndCommandAreKept) {
    const std::string json = listWith(R"("title":"A","type":"App","path":"","command":"")");
    EXPECT_EQ(rewritten(json), json);
}

TEST(ItemListJsonTest, ATypeInAnotherCaseMakesTheWholeListUndecodable) {
    for (const std::string type :
         {"app", "APP", "Inline command", "inline Command", "command file", "Command file"})
        EXPECT_EQ(decodeItems(listWith(R"("title":"A","type":")" + type + "\"")), std::nullopt)
            << type;
}

TEST(ItemListJsonTest, AnyOtherTypeMakesTheWholeListUndecodable) {
    for (const std::string type : {R"(" App")", R"("App ")", R"("")", R"("Folder")", "0", "null",
                                   "true", R"(["App"])", R"({"App":1})"})
        EXPECT_EQ(decodeItems(listWith(R"("title":"A","type":)" + type)), std::nullopt) << type;
    EXPECT_EQ(decodeItems(listWith(R"("title":"A")")), std::nullopt);
}

TEST(ItemListJsonTest, ALowerCaseIdIsAcceptedAndWrittenInUpperCase) {
    EXPECT_EQ(rewritten(R"([{"id":"e621e1f8-c36c-495a-93fc-0c247a3e6e5f","title":"A",)"
                        R"("type":"App"}])"),
              listWith(R"("title":"A","type":"App")"));
}

TEST(ItemListJsonTest, AnExtraKeyIsIgnoredAndGoneWhenWrittenAgain) {
    for (const std::string value : {R"("star")", "null", "true", "12", "-1.5e3", "[]", "{}",
                                    R"([1,{"id":[null]}])", R"({"id":"x","title":5})"})
        EXPECT_EQ(rewritten(listWith(R"("icon":)" + value + R"(,"title":"A","type":"App")")),
                  listWith(R"("title":"A","type":"App")"))
            << value;
}

TEST(ItemListJsonTest, KeysThatOnlyResembleTheKnownOnesAreIgnored) {
    for (const std::string key : {"Path", "PATH", "path ", " path", "pat", "paths", "", "p\\u0000"})
        EXPECT_EQ(rewritten(listWith(R"("title":"A","type":"App",")" + key + R"(":1)")),
                  listWith(R"("title":"A","type":"App")"))
            << key;
}

TEST(ItemListJsonTest, NumbersBeyondEveryMachineNumberAreIgnoredUnderAnExtraKey) {
    for (const std::string number :
         {"123456789012345678901234567890", "-123456789012345678901234567890",
          "18446744073709551616", "1e400", "-1E+400", "1.5e99999999999999999999", "1e-99999"})
        EXPECT_EQ(rewritten(listWith(R"("icon":)" + number + R"(,"title":"1e400","type":"App")")),
                  listWith(R"("title":"1e400","type":"App")"))
            << number;
}

TEST(ItemListJsonTest, NumbersBeyondEveryMachineNumberAreStillNoTexts) {
    EXPECT_EQ(decodeItems(listWith(R"("title":1e400,"type":"App")")), std::nullopt);
    EXPECT_EQ(decodeItems(listWith(R"("title":"A","type":"App","path":1e400)")), std::nullopt);
    EXPECT_EQ(decodeItems("[1e400]"), std::nullopt);
    EXPECT_EQ(decodeItems("1e400"), std::nullopt);
}

TEST(ItemListJsonTest, AnEmptyTitleDecodes) {
    const auto items = decodeItems(listWith(R"("title":"","type":"App")"));
    ASSERT_TRUE(items);
    ASSERT_EQ(items->size(), 1U);
    EXPECT_EQ(items->front().title, "");
}

TEST(ItemListJsonTest, AMissingTitleFailsTheList) {
    EXPECT_EQ(decodeItems(listWith(R"("type":"App")")), std::nullopt);
}

TEST(ItemListJsonTest, ANullTitleFailsTheList) {
    EXPECT_EQ(decodeItems(listWith(R"("title":null,"type":"App")")), std::nullopt);
}

TEST(ItemListJsonTest, ATitleOfAnotherKindFailsTheList) {
    for (const std::string title : {"0", "1.5", "true", "[]", R"(["A"])", "{}"})
        EXPECT_EQ(decodeItems(listWith(R"("type":"App","title":)" + title)), std::nullopt) << title;
}

TEST(ItemListJsonTest, APathOrCommandOfAnotherKindFailsTheList) {
    for (const std::string value : {"0", "false", "[]", "[null]", "{}"}) {
        EXPECT_EQ(decodeItems(listWith(R"("title":"A","type":"App","path":)" + value)),
                  std::nullopt)
            << value;
        EXPECT_EQ(decodeItems(listWith(R"("title":"A","type":"App","command":)" + value)),
                  std::nullopt)
            << value;
    }
}

TEST(ItemListJsonTest, AnEmptyArrayDecodesToAnEmptyList) {
    EXPECT_EQ(decodeItems("[]"), std::vector<LauncherItem>());
    EXPECT_EQ(decodeItems(" \t\r\n[ \n] "), std::vector<LauncherItem>());
}

TEST(ItemListJsonTest, AnEmptyListEncodesToAnEmptyArray) { EXPECT_EQ(encodeItems({}), "[]"); }

TEST(ItemListJsonTest, AMalformedIdInTheThirdRecordYieldsNoItemsAtAll) {
    const auto listWithThirdId = [](const std::string& id) {
        const std::string record = R"({"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","title":"A",)"
                                   R"("type":"App"},)";
        return "[" + record + record + R"({"title":"A","type":"App","id":")" + id + "\"}]";
    };
    const auto good = decodeItems(listWithThirdId(idText));
    ASSERT_TRUE(good);
    EXPECT_EQ(good->size(), 3U);
    for (const std::string id :
         {"", "E621E1F8-C36C-495A-93FC-0C247A3E6E5", "x", "E621E1F8-C36C-495A-93FC-0C247A3E6E5G"})
        EXPECT_EQ(decodeItems(listWithThirdId(id)), std::nullopt) << id;
}

TEST(ItemListJsonTest, AMissingIdOrOneOfAnotherKindFailsTheList) {
    for (const std::string id : {"", R"("id":null,)", R"("id":5,)", R"("id":[],)", R"("id":{},)"})
        EXPECT_EQ(decodeItems("[{" + id + R"("title":"A","type":"App"}])"), std::nullopt) << id;
}

TEST(ItemListJsonTest, DecodedItemsThatDifferOnlyInTheirIdAreNotEqual) {
    const auto items =
        decodeItems(R"([{"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","title":"A","type":"App"},)"
                    R"({"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E50","title":"A","type":"App"}])");
    ASSERT_TRUE(items);
    ASSERT_EQ(items->size(), 2U);
    EXPECT_NE(items->at(0), items->at(1));
}

TEST(ItemListJsonTest, ADecodedItemWithoutPathDoesNotEqualOneWithAnEmptyPath) {
    const auto absent = decodeItems(listWith(R"("title":"A","type":"App")"));
    const auto empty = decodeItems(listWith(R"("title":"A","type":"App","path":"")"));
    ASSERT_TRUE(absent && empty);
    EXPECT_NE(absent->front(), empty->front());
}

TEST(ItemListJsonTest, RecordsWithTheSameIdAreAllKeptInOrder) {
    const auto first = listWith(R"("title":"A","type":"App")");
    const auto second = listWith(R"("title":"B","type":"App")");
    const std::string both = first.substr(0, first.size() - 1) + "," + second.substr(1);
    EXPECT_EQ(rewritten(both), both);
}

TEST(ItemListJsonTest, KeysAreReadInAnyOrder) {
    EXPECT_EQ(rewritten(R"([{"command":"c","path":"p","type":"App","title":"A","id":")" +
                        std::string(idText) + "\"}]"),
              listWith(R"("title":"A","type":"App","path":"p","command":"c")"));
}

TEST(ItemListJsonTest, OfAKeyThatStandsTwiceTheLastOneCounts) {
    EXPECT_EQ(rewritten(listWith(R"("title":"A","title":"B","type":"No","type":"App",)"
                                 R"("path":1,"path":"p","command":"c","command":null)")),
              listWith(R"("title":"B","type":"App","path":"p")"));
    EXPECT_EQ(decodeItems(listWith(R"("title":"A","type":"App","title":null)")), std::nullopt);
    EXPECT_EQ(decodeItems(listWith(R"("title":"A","type":"App","type":"app")")), std::nullopt);
    EXPECT_EQ(decodeItems(listWith(R"("title":"A","type":"App","path":"p","path":1)")),
              std::nullopt);
    EXPECT_EQ(decodeItems(listWith(R"("id":"x","title":"A","type":"App")")), std::nullopt);
}

TEST(ItemListJsonTest, AKeyWrittenWithEscapesIsTheSameKey) {
    EXPECT_EQ(rewritten(listWith(R"("\u0074itle":"A","t\u0079pe":"App","p\u0061th":"p")")),
              listWith(R"("title":"A","type":"App","path":"p")"));
}

TEST(ItemListJsonTest, AnElementThatIsNoObjectFailsTheList) {
    for (const std::string element : {"null", "true", "1", R"("A")", "[]", "{}", "[{}]"})
        EXPECT_EQ(decodeItems("[" + element + "]"), std::nullopt) << element;
}

TEST(ItemListJsonTest, AnotherTopLevelThanAnArrayFails) {
    const std::string list = listWith(R"("title":"A","type":"App")");
    for (const std::string& json :
         {std::string("null"), std::string("1"), std::string(R"("[]")"), std::string("{}"),
          R"({"items":)" + list + "}", list.substr(1, list.size() - 2)})
        EXPECT_EQ(decodeItems(json), std::nullopt) << json;
}

TEST(ItemListJsonTest, OneItemIsWrittenAndReadByTheSameRules) {
    const LauncherItem item{
        .id = someId(), .title = "A/B", .type = ItemType::commandFile, .path = "/a"};
    const std::string json =
        R"({"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","title":"A\/B","type":"Command File",)"
        R"("path":"\/a"})";
    EXPECT_EQ(encodeItem(item), json);
    EXPECT_EQ(decodeItem(json), item);
    for (const std::string& other :
         {"[" + json + "]", json + json, std::string("{}"), std::string("null"), std::string()})
        EXPECT_EQ(decodeItem(other), std::nullopt) << other;
}

/// Texts of up to 40 characters from all over Unicode, often from what has to be escaped.
class RandomItems {
  public:
    LauncherItem next() {
        LauncherItem item{.title = text(), .type = allItemTypes.at(below(allItemTypes.size()))};
        if (below(2) == 0)
            item.path = text();
        if (below(2) == 0)
            item.command = text();
        return item;
    }

    std::size_t below(std::size_t limit) { return generator_() % limit; }

  private:
    std::string text() {
        static const std::vector<std::string> parts{
            "a",      "Z",          " ",          "/",          "\\",      "\"",
            "\b",     "\f",         "\n",         "\r",         "\t",      "\x7f",
            "\u0080", "\u00e9",     "e\u0301",    "\u2028",     "\ud7ff",  "\ufeff",
            "\uffff", "\U00010000", "\U0001f600", "\U0010ffff", "\\u0041", "\\/"};
        std::string result;
        for (std::size_t length = below(40); length > 0; --length)
            if (below(4) == 0)
                result += static_cast<char>(below(0x20));
            else
                result += parts[below(parts.size())];
        return result;
    }

    std::mt19937 generator_{20240229};
};

TEST(ItemListJsonTest, RandomListsComeBackAsTheyWere) {
    RandomItems random;
    for (int round = 0; round < 500; ++round) {
        std::vector<LauncherItem> items;
        for (std::size_t count = random.below(12); count > 0; --count)
            items.push_back(random.next());
        const auto json = encodeItems(items);
        ASSERT_TRUE(json) << "round " << round;
        const auto decoded = decodeItems(*json);
        ASSERT_EQ(decoded, items) << *json;
        for (std::size_t i = 0; i < items.size(); ++i) {
            // Byte by byte: equality of items would let a normalised text pass.
            EXPECT_EQ(decoded->at(i).title, items[i].title);
            EXPECT_EQ(decoded->at(i).path, items[i].path);
            EXPECT_EQ(decoded->at(i).command, items[i].command);
        }
        EXPECT_EQ(encodeItems(*decoded), json);
    }
}

TEST(ItemListJsonTest, WhatIsWrittenIsReadAgainWhateverTheTexts) {
    std::vector<std::string> texts;
    for (int byte = 0; byte < 0x100; ++byte) {
        const std::string c(1, static_cast<char>(byte));
        texts.insert(texts.end(), {c, "a" + c, c + "\u00e9", "\xe2" + c, "\xed" + c + "\x80"});
    }
    texts.insert(texts.end(), {std::string("a\0b\0", 4), "\xed\xa0\x80", "\xed\xb0\x80",
                               "\xed\xa0\xbd\xed\xb8\x80", "\xc0\x80", "\xf4\x90\x80\x80",
                               "\xf0\x9f\x98\x80", "\ufeff", "\ufffe", std::string(1000, '['),
                               std::string(100'000, '\x1f'), std::string(100'000, '\\')});
    std::size_t written = 0;
    for (const std::string& text : texts) {
        for (const LauncherItem& item :
             {LauncherItem{.title = text}, LauncherItem{.title = "A", .path = text},
              LauncherItem{.title = "A", .command = text}}) {
            const std::vector<LauncherItem> items{item};
            const auto json = encodeItems(items);
            written += json ? 1U : 0U;
            EXPECT_TRUE(!json || decodeItems(*json) == items) << testing::PrintToString(text);
        }
    }
    EXPECT_GT(written, 3U * 0x80);
}

TEST(ItemListJsonTest, TheLongestListIsWrittenAndReadAgainAndALongerOneIsNeither) {
    std::vector<LauncherItem> items{{.title = ""}, {.title = "Last", .command = "\x01/"}};
    const auto frame = encodeItems(items);
    ASSERT_TRUE(frame);
    items.front().title.assign(maximumListSize - frame->size(), 'x');
    auto json = encodeItems(items);
    ASSERT_TRUE(json);
    EXPECT_EQ(json->size(), maximumListSize);
    EXPECT_TRUE(decodeItems(*json) == items);

    *json += ' '; // which would be as good a list
    EXPECT_FALSE(decodeItems(*json));
    items.front().title += 'x';
    EXPECT_FALSE(encodeItems(items));
}

TEST(ItemListJsonTest, ItIsTheWrittenFormWhoseLengthCounts) {
    // Each of these bytes is written as six.
    const std::vector<LauncherItem> items{{.title = std::string(maximumListSize / 6, '\x01')}};
    EXPECT_FALSE(encodeItems(items));
    EXPECT_FALSE(encodeItem(items.front()));
    // Many items, too, and none of them long.
    const std::vector<LauncherItem> many(40, {.title = std::string(maximumListSize / 40, 'x')});
    EXPECT_FALSE(encodeItems(many));
}

/// A record with `title` as it stands between the quotes, and with a key that nobody knows.
std::string recordWith(const std::string& title) {
    return R"({"id":")" + std::string(idText) + R"(","title":")" + title +
           R"(","more":[{"a":"},{"},{"b":[{},{}]}],"type":"App"})";
}

/// `count` records that are told apart by their titles, about 120 bytes each.
std::string records(std::size_t count) {
    std::string json;
    for (std::size_t i = 0; i < count; ++i)
        json += (i > 0 ? "," : "") + recordWith(std::to_string(i) + R"( },{ \"},{\")");
    return json;
}

TEST(ItemListJsonTest, ALongListIsReadWholeWhereverItsBracesStand) {
    // Growing titles at the front let every byte of a record come to stand at any place.
    for (std::size_t shift = 0; shift < 150; ++shift) {
        const auto items =
            decodeItems("[" + recordWith(std::string(shift, 'x')) + "," + records(2'000) + "]");
        ASSERT_TRUE(items) << shift;
        ASSERT_EQ(items->size(), 2'001U) << shift;
        for (std::size_t i = 0; i < 2'000; ++i)
            ASSERT_EQ(items->at(i + 1).title, std::to_string(i) + R"( },{ "},{")") << shift;
    }
}

TEST(ItemListJsonTest, ALongListComesBackInOrderWhateverItsLength) {
    std::vector<LauncherItem> items;
    std::string json;
    for (std::size_t count = 0; json.size() < std::size_t{1} << 20U; count += 97) {
        while (items.size() < count)
            items.push_back({.id = someId(), .title = std::to_string(items.size())});
        json = encodeItems(items).value_or("");
        const auto decoded = decodeItems(json);
        ASSERT_TRUE(decoded == items) << count;
    }
}

TEST(ItemListJsonTest, AFaultAnywhereInALongListFailsIt) {
    const std::string list = records(2'000);
    EXPECT_TRUE(decodeItems("[" + list + "]"));
    EXPECT_TRUE(decodeItems("\xEF\xBB\xBF \n[" + list + "]\n "));
    for (const std::string& json :
         {list, "[" + list, list + "]", "[" + list + "]]", "[" + list + ",]", "[," + list + "]",
          "[[" + list + "]]", R"({"a":[)" + list + "]}", "[" + list + "],[" + list + "]",
          "[" + list + "][" + list + "]", "[" + list + "," + recordWith("\xff") + "," + list + "]",
          "[" + list + ",," + list + "]", "[" + list + R"(,{"id":"x"},)" + list + "]",
          "[" + list + ",1," + list + "]", "[" + list + R"(,"},{",)" + list + "]",
          "[" + list + ",{}]", "\xEF\xBB\xBF\xEF\xBB\xBF[" + list + "]"})
        EXPECT_FALSE(decodeItems(json)) << json.substr(0, 40) << " ... " << json.size();
}

TEST(ItemListJsonTest, LargeNumbersAndLongRecordsStandAnywhereInALongList) {
    const std::string list = records(2'000);
    const std::string number =
        R"({"id":")" + std::string(idText) + R"(","title":"N","type":"App","icon":1e400})";
    const std::string giant(300'000, 'y');
    const auto items = decodeItems("[" + list + "," + number + "," + list + "," +
                                   recordWith(giant) + "," + list + "]");
    ASSERT_TRUE(items);
    ASSERT_EQ(items->size(), 6'002U);
    EXPECT_EQ(items->at(2'000).title, "N");
    EXPECT_EQ(items->at(4'001).title, giant);
    EXPECT_EQ(items->back().title, R"(1999 },{ "},{")");
}

} // namespace

} // namespace kestrel
