#include "model/text.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace kestrel {

namespace {

using Pair = std::pair<std::string, std::string>;

TEST(TextTest, CanonicallyEquivalentTextsAreEqualAndHashAlike) {
    for (const auto& [a, b] : {
             Pair("", ""),
             Pair("plain", "plain"),
             Pair("caf\u00e9", "cafe\u0301"),
             Pair("\u00c5", "A\u030a"),
             Pair("\u212b", "A\u030a"),                  // the sign of the unit
             Pair("\u212a", "K"),                        // one side is ASCII
             Pair("\u037e", ";"),                        // the Greek question mark
             Pair("\u1e69", "s\u0307\u0323"),            // marks in the other order
             Pair("q\u0307\u0323", "q\u0323\u0307"),     // no precomposed form at all
             Pair("\uac01", "\u1100\u1161\u11a8"),       // a Hangul syllable
             Pair("\u1f82", "\u03b1\u0313\u0300\u0345"), // the longest decomposition
             Pair("\U0001d15e", "\U0001d157\U0001d165"), // outside the basic plane
             Pair("x\u00e9/\u00fc", "xe\u0301/u\u0308"),
         }) {
        EXPECT_TRUE(text::equal(a, b)) << a << " and " << b;
        EXPECT_TRUE(text::equal(b, a)) << b << " and " << a;
        EXPECT_EQ(text::hash(a), text::hash(b)) << a << " and " << b;
    }
}

TEST(TextTest, OtherTextsDiffer) {
    for (const auto& [a, b] : {
             Pair("", " "),
             Pair("a", "A"),
             Pair("e", "\u00e9"),
             Pair("\u00e9", "\u00e8"),
             Pair("\ufb01", "fi"), // compatibility equivalence only
             Pair("\uff21", "A"),  // full width
             Pair("\u00a0", " "),
             Pair("a\u0301\u0300", "a\u0300\u0301"), // two marks of one class keep their order
             Pair(std::string("a\0b", 3), std::string("a\0c", 3)),
             Pair(std::string("\u00e9\0b", 4), std::string("e\u0301\0c", 5)),
         }) {
        EXPECT_FALSE(text::equal(a, b)) << a << " and " << b;
        EXPECT_FALSE(text::equal(b, a)) << b << " and " << a;
    }
}

TEST(TextTest, InvalidUtf8EqualsOnlyTheSameBytes) {
    EXPECT_TRUE(text::equal("\xff\xfe", "\xff\xfe"));
    EXPECT_FALSE(text::equal("\xff", "\xfe"));
    EXPECT_FALSE(text::equal("\xff\u00e9", "\xff"
                                           "e\u0301"));
    EXPECT_FALSE(text::equal("\xed\xa0\x80", "\xed\xb0\x80"));
    EXPECT_EQ(text::hash("\xff\xfe"), text::hash("\xff\xfe"));
}

TEST(TextTest, TextsOfVeryManyCombiningMarksAreCompared) {
    std::string a = "a";
    std::string b = "a";
    for (int i = 0; i < 100'000; ++i) {
        a += "\u0301\u0327";
        b += "\u0327\u0301";
    }
    EXPECT_TRUE(text::equal(a, b));
    EXPECT_EQ(text::hash(a), text::hash(b));
    EXPECT_FALSE(text::equal(a, b + "\u0301"));
}

TEST(TextTest, ManyMarksOfOneClassKeepTheirOrderAmongMarksOfAnother) {
    const std::vector<std::string> above{"\u0300", "\u0301", "\u0302", "\u0303",
                                         "\u0304", "\u0306", "\u0307"};
    const std::vector<std::string> below{"\u0316", "\u0317", "\u0318", "\u0319", "\u031c"};
    std::string mixed = "q";
    std::string allBelow;
    std::string allAbove;
    for (std::size_t i = 0; i < 100; ++i) {
        const std::string& high = above[i * i % above.size()];
        const std::string& low = below[i * i % below.size()];
        mixed += high + low;
        allBelow += low;
        allAbove += high;
    }
    const std::string sorted = "q" + allBelow + allAbove;
    EXPECT_TRUE(text::equal(mixed, sorted));
    EXPECT_EQ(text::hash(mixed), text::hash(sorted));
    // The same marks in another order are another text.
    EXPECT_FALSE(text::equal("q" + allAbove, "q" + allAbove.substr(2) + allAbove.substr(0, 2)));
}

TEST(TextTest, WhiteSpaceAtBothEndsIsTrimmed) {
    for (const auto& [text, trimmed] : {
             Pair("", ""), Pair("a", "a"), Pair("  a b  ", "a b"), Pair("\t a\t", "a"),
             Pair(" \t\u00a0\u2003\u3000", ""), Pair("\u00a0a\u1680", "a"),
             Pair("\u3000\u00e9\u202f", "\u00e9"), Pair("\na\n", "\na\n"), // line breaks stay
             Pair(" \n ", "\n"), Pair("\r a\v", "\r a\v"),
             Pair("\u2028a\u2029", "\u2028a\u2029"), // as do the line and paragraph separators
             Pair("\u200ba\u200b", "\u200ba\u200b"), // and a character without width
             Pair(" \xff ", "\xff"), Pair(" \xa0", "\xa0"), // half a no-break space
         })
        EXPECT_EQ(text::trimmedOfSpaces(text), trimmed) << '"' << text << '"';
}

} // namespace

} // namespace kestrel
