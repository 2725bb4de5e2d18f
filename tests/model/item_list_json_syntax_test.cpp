// The JSON text itself: escapes, encodings, malformed and oversized texts.

#include "model/item_list_json.h"
#include "tests/model/launcher_item_printing.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace kestrel {

namespace {

using Pair = std::pair<std::string, std::string>;

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// A list of one record whose title is the JSON string `literal`, quotes left out.
std::string listWithTitle(const std::string& literal) {
    return R"([{"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","title":")" + literal +
           R"(","type":"App"}])";
}

/// A list of one record that is right but for the member in front of all others, such as
/// `"icon":1`.
std::string listWithMember(const std::string& member) {
    return "[{" + member + "," + listWithTitle("A").substr(2);
}

/// `text` as a JSON string; nothing in it is escaped.
std::string quoted(const std::string& text) { return '"' + text + '"'; }

/// A list whose record has an ignored key with the JSON value `value`.
std::string listWithIcon(const std::string& value) { return listWithMember(R"("icon":)" + value); }

/// The title of the only record; nothing when the list is not decodable.
std::optional<std::string> decodedTitle(const std::string& literal) {
    const auto items = decodeItems(listWithTitle(literal));
    return items && items->size() == 1 ? std::optional(items->front().title) : std::nullopt;
}

std::optional<std::string> encodedWithTitle(const std::string& title) {
    const std::vector<LauncherItem> items{
        {.id = Uuid::parse("E621E1F8-C36C-495A-93FC-0C247A3E6E5F").value_or(Uuid()),
         .title = title}};
    return encodeItems(items);
}

TEST(ItemListJsonSyntaxTest, EveryStandardEscapeIsRead) {
    for (const auto& [literal, title] : {
             Pair(R"(\"\\\/\b\f\n\r\t)", "\"\\/\b\f\n\r\t"),
             Pair(R"(\u0041\u00e9\u00E9\u20ac)", "A\u00e9\u00e9\u20ac"),
             Pair(R"(\ud83d\ude00\uDBFF\uDFFF)", "\U0001f600\U0010ffff"),
             Pair(R"(\uffff\ufdd0)", "\uffff\ufdd0"),
             Pair(R"(\u002f\u005c\u0022)", "/\\\""),
         })
        EXPECT_EQ(decodedTitle(literal), title) << literal;
}

TEST(ItemListJsonSyntaxTest, EscapedAndUnescapedSlashesAreReadAlike) {
    EXPECT_EQ(decodedTitle("/usr/bin"), "/usr/bin");
    EXPECT_EQ(decodedTitle(R"(\/usr\/bin)"), "/usr/bin");
    EXPECT_EQ(decodedTitle(R"(\\/)"), "\\/");
}

TEST(ItemListJsonSyntaxTest, OnlyWhatMustBeEscapedIsEscaped) {
    for (const auto& [title, literal] : {
             Pair("\"\\/", R"(\"\\\/)"),
             Pair("\b\f\n\r\t", R"(\b\f\n\r\t)"),
             Pair("\x01\x0b\x1a\x1f", R"(\u0001\u000b\u001a\u001f)"),
             Pair("\x7f\u0080\u2028\u2029", "\x7f\u0080\u2028\u2029"),
             Pair("<&'> \u00e9\U0001f600\ufeff", "<&'> \u00e9\U0001f600\ufeff"),
         })
        EXPECT_EQ(encodedWithTitle(title), listWithTitle(literal)) << literal;
}

TEST(ItemListJsonSyntaxTest, EveryAsciiCharacterComesBack) {
    for (char c = 0; c >= 0 && c < 0x7f; ++c) {
        const std::string title = std::string("<") + c + ">";
        const auto json = encodedWithTitle(title);
        ASSERT_TRUE(json) << static_cast<int>(c);
        const auto items = decodeItems(*json);
        ASSERT_TRUE(items) << *json;
        EXPECT_EQ(items->front().title, title) << *json;
    }
}

TEST(ItemListJsonSyntaxTest, ANulCharacterInATextIsKept) {
    const std::string title("a\0b\0", 4);
    EXPECT_EQ(decodedTitle(R"(a\u0000b\u0000)"), title);
    EXPECT_EQ(encodedWithTitle(title), listWithTitle(R"(a\u0000b\u0000)"));
}

TEST(ItemListJsonSyntaxTest, OneByteOrderMarkAtTheFrontIsSkipped) {
    const std::string json = listWithTitle("A");
    EXPECT_EQ(decodeItems(std::string(byteOrderMark) + json), decodeItems(json));
    EXPECT_EQ(decodeItems(std::string(byteOrderMark) + "[]"), std::vector<LauncherItem>());
}

TEST(ItemListJsonSyntaxTest, AByteOrderMarkAnywhereElseIsUndecodable) {
    const std::string mark(byteOrderMark);
    for (const std::string& json : {mark + mark + "[]", " " + mark + "[]", "[]" + mark,
                                    "[" + mark + "]", mark, mark + mark, mark.substr(0, 2) + "[]"})
        EXPECT_EQ(decodeItems(json), std::nullopt) << json;
}

TEST(ItemListJsonSyntaxTest, AByteOrderMarkInATextIsPartOfTheText) {
    EXPECT_EQ(decodedTitle("\ufeffA"), "\ufeffA");
}

TEST(ItemListJsonSyntaxTest, Utf16AndUtf32AreUndecodable) {
    for (const std::string& json :
         {std::string("\xff\xfe[\0]\0", 6), std::string("\xfe\xff\0[\0]", 6),
          std::string("[\0]\0", 4), std::string("\0[\0]", 4),
          std::string("\xff\xfe\0\0[\0\0\0]\0\0\0", 12), std::string("\0\0\0[\0\0\0]", 8)})
        EXPECT_EQ(decodeItems(json), std::nullopt) << testing::PrintToString(json);
}

TEST(ItemListJsonSyntaxTest, InvalidUtf8IsUndecodable) {
    for (const std::string bytes :
         {"\x80", "\xff", "\xc3", "\xc3(", "\xc0\xaf", "\xe2\x82", "\xe0\x80\xaf", "\xed\xa0\x80",
          "\xed\xbf\xbf", "\xf0\x9f\x98", "\xf0\x80\x80\xaf", "\xf4\x90\x80\x80", "\xf8\x88\x80"}) {
        EXPECT_EQ(decodedTitle(bytes), std::nullopt) << testing::PrintToString(bytes);
        EXPECT_EQ(decodeItems(listWithIcon(quoted(bytes))), std::nullopt)
            << testing::PrintToString(bytes);
    }
}

TEST(ItemListJsonSyntaxTest, ATextThatIsNotValidUtf8IsNotEncoded) {
    for (const std::string text : {"\x80", "\xc3", "a\xff", "\xed\xa0\x80", "\xc3\xa9\xe2\x82"}) {
        EXPECT_EQ(encodedWithTitle(text), std::nullopt) << testing::PrintToString(text);
        EXPECT_EQ(encodeItem({.title = "", .path = text}), std::nullopt)
            << testing::PrintToString(text);
        EXPECT_EQ(encodeItem({.title = "", .command = text}), std::nullopt)
            << testing::PrintToString(text);
    }
}

TEST(ItemListJsonSyntaxTest, TwoHalvesOfACharacterInTwoTextsAreNotEncoded) {
    EXPECT_EQ(encodeItem({.title = "", .path = "\xc3", .command = "\xa9"}), std::nullopt);
}

TEST(ItemListJsonSyntaxTest, TheEscapeOfALoneSurrogateIsUndecodable) {
    for (const std::string literal :
         {R"(\ud800)", R"(\uDBFF)", R"(\udc00)", R"(\uDFFF)", R"(\ud800x)", R"(\ud800\n)",
          R"(\ud800\u0041)", R"(\ud800\udbff)", R"(\ud800\ue000)", R"(\ud800\uffff)",
          R"(\ud800\ud800\udc00)", R"(\udc00\ud800)", R"(\ud83d\\ude00)", R"(\ud83d\ude0)",
          R"(\ud83d \ude00)", R"(\ud83d\ude00\ude00)"}) {
        EXPECT_EQ(decodedTitle(literal), std::nullopt) << literal;
        // Under a key that is ignored, and in such a key.
        EXPECT_EQ(decodeItems(listWithIcon(quoted(literal))), std::nullopt) << literal;
        EXPECT_EQ(decodeItems(listWithMember(quoted(literal) + ":1")), std::nullopt) << literal;
    }
}

TEST(ItemListJsonSyntaxTest, AMalformedEscapeIsUndecodable) {
    for (const std::string literal : {R"(\)", R"(\a)", R"(\x41)", R"(\')", R"(\U0041)", R"(\u)",
                                      R"(\u004)", R"(\u00g1)", R"(\u 041)", R"(\u-041)", R"(\0)"})
        EXPECT_EQ(decodedTitle(literal), std::nullopt) << literal;
}

TEST(ItemListJsonSyntaxTest, AnUnescapedControlCharacterIsUndecodable) {
    for (char c = 0; c < 0x20; ++c)
        EXPECT_EQ(decodedTitle(std::string("a") + c), std::nullopt) << static_cast<int>(c);
    EXPECT_EQ(decodedTitle("\x7f"), "\x7f");
}

TEST(ItemListJsonSyntaxTest, MalformedTextIsUndecodable) {
    const std::string list = listWithTitle("A");
    ASSERT_TRUE(decodeItems(list));
    for (const std::string& json : {
             std::string(),
             std::string(" \n"),
             std::string(1, '\0'),
             std::string("["),
             std::string("]"),
             std::string("[}"),
             std::string("[,]"),
             std::string("[]]"),
             std::string("[][]"),
             std::string("[] x"),
             std::string("[]\0", 3),
             std::string("[]\0\0\0\0", 6),
             std::string("\0[]", 3),
             std::string("[]\v"),
             std::string("\f[]"),
             std::string("\u00a0[]"),
             std::string("// list\n[]"),
             std::string("[/* list */]"),
             list.substr(0, list.size() - 1),
             list.substr(0, list.size() - 2) + "]",
             list.substr(0, list.size() - 1) + ",]",
             list.substr(0, list.size() - 2) + ",}]",
             list + ",",
             list + list,
             "[" + list.substr(1, list.size() - 2) + " " + list.substr(1),
             std::string(R"([{id:"A"}])"),
             std::string(R"([{'id':'A'}])"),
             std::string(R"([{"id" "A"}])"),
             std::string(R"([{"id":}])"),
             std::string(R"([{"id"}])"),
         })
        EXPECT_EQ(decodeItems(json), std::nullopt) << testing::PrintToString(json);
}

TEST(ItemListJsonSyntaxTest, AMalformedValueUnderAnIgnoredKeyIsUndecodable) {
    ASSERT_TRUE(decodeItems(listWithIcon("1")));
    for (const std::string value :
         {"",       "tru",   "True", "nul",        "NaN",    "Infinity", "-Infinity",
          "01",     "-",     "+1",   "1.",         ".5",     "1e",       "1e+",
          "0x1",    "1.2.3", "--1",  "1e400.5",    "01e400", "1e400,",   "1e400x",
          "[1e400", "1_000", "[1,]", "{\"a\":1,}", "'a'",    "\"a"})
        EXPECT_EQ(decodeItems(listWithIcon(value)), std::nullopt) << value;
}

TEST(ItemListJsonSyntaxTest, EveryTruncationOfAListIsUndecodable) {
    const std::string json = listWithTitle(R"(\u00e9\ud83d\ude00 \/ 😀)");
    ASSERT_TRUE(decodeItems(json));
    for (std::size_t size = 0; size < json.size(); ++size)
        EXPECT_EQ(decodeItems(json.substr(0, size)), std::nullopt) << json.substr(0, size);
}

TEST(ItemListJsonSyntaxTest, WhiteSpaceBetweenTokensIsRead) {
    EXPECT_EQ(decodeItems("\n[\t{ \"title\" :\r\n\"A\", \"id\": "
                          "\"E621E1F8-C36C-495A-93FC-0C247A3E6E5F\" ,\"type\":\"App\" } ]\n"),
              decodeItems(listWithTitle("A")));
}

TEST(ItemListJsonSyntaxTest, AnIgnoredValueMayNestAThousandLevels) {
    const std::string value = std::string(1000, '[') + std::string(1000, ']');
    EXPECT_EQ(decodeItems(listWithIcon(value)), decodeItems(listWithTitle("A")));
}

TEST(ItemListJsonSyntaxTest, NestingFarTooDeepIsUndecodable) {
    for (const std::size_t depth : {2'000U, 100'000U, 5'000'000U}) {
        const std::string value = std::string(depth, '[') + std::string(depth, ']');
        EXPECT_EQ(decodeItems(value), std::nullopt) << depth;
        EXPECT_EQ(decodeItems(std::string(depth, '[')), std::nullopt) << depth;
        EXPECT_EQ(decodeItems(listWithIcon(value)), std::nullopt) << depth;
    }
    std::string objects;
    for (int i = 0; i < 100'000; ++i)
        objects += R"({"id":)";
    EXPECT_EQ(decodeItems("[" + objects + "1" + std::string(100'000, '}') + "]"), std::nullopt);
}

TEST(ItemListJsonSyntaxTest, AListOfAHundredThousandItemsComesBack) {
    std::vector<LauncherItem> items;
    items.reserve(100'000);
    for (int i = 0; i < 100'000; ++i)
        items.push_back(
            {.title = "Item " + std::to_string(i), .path = "/bin/" + std::to_string(i)});
    const auto json = encodeItems(items);
    ASSERT_TRUE(json);
    EXPECT_TRUE(decodeItems(*json) == items);
    // One wrong element at the very end takes all the others with it.
    EXPECT_FALSE(decodeItems(json->substr(0, json->size() - 1) + ",{}]"));
}

TEST(ItemListJsonSyntaxTest, AnArrayOfMillionsOfOtherThingsIsUndecodable) {
    std::string json = "[";
    for (int i = 0; i < 2'000'000; ++i)
        json += "1,";
    EXPECT_EQ(decodeItems(json + "1]"), std::nullopt);
}

TEST(ItemListJsonSyntaxTest, ATextOfTenMegabytesComesBack) {
    constexpr std::size_t size = 10'000'000;
    for (const std::string unit :
         {"a", "/", "\x01", "\u00e9", "\U0001f600", "line\n\"quoted\"\\"}) {
        std::string text;
        while (text.size() < size)
            text += unit;
        const auto json = encodeItem({.title = "", .command = text});
        ASSERT_TRUE(json) << unit;
        const auto item = decodeItem(*json);
        ASSERT_TRUE(item) << unit;
        EXPECT_TRUE(item->command == text) << unit;
    }
}

} // namespace

} // namespace kestrel
