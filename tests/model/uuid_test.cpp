#include "model/uuid.h"

#include <array>
#include <cstdio>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <unordered_set>

namespace kestrel {

namespace {

constexpr const char* canonical = "E621E1F8-C36C-495A-93FC-0C247A3E6E5F";

TEST(UuidTest, TheBytesAreReadInTheOrderOfTheText) {
    const auto id = Uuid::parse("00010203-0405-0607-0809-0A0B0C0D0E0F");
    ASSERT_TRUE(id);
    for (std::size_t i = 0; i < id->bytes().size(); ++i)
        EXPECT_EQ(id->bytes()[i], i);
}

TEST(UuidTest, EitherCaseIsReadAndUpperCaseIsWritten) {
    for (const char* const text : {canonical, "e621e1f8-c36c-495a-93fc-0c247a3e6e5f",
                                   "e621E1f8-C36c-495a-93FC-0c247A3e6E5f"}) {
        const auto id = Uuid::parse(text);
        ASSERT_TRUE(id) << text;
        EXPECT_EQ(id->toString(), canonical) << text;
    }
}

TEST(UuidTest, EveryByteValueSurvivesWritingAndReading) {
    for (unsigned value = 0; value < 256; ++value) {
        Uuid::Bytes bytes;
        bytes.fill(static_cast<std::uint8_t>(value));
        EXPECT_EQ(Uuid::parse(Uuid(bytes).toString()), Uuid(bytes)) << value;
    }
}

TEST(UuidTest, AnyVersionAndVariantIsRead) {
    for (const char* const text :
         {"00000000-0000-0000-0000-000000000000", "FFFFFFFF-FFFF-FFFF-FFFF-FFFFFFFFFFFF",
          "6BA7B810-9DAD-11D1-80B4-00C04FD430C8", "01890A5D-AC96-774B-1CCE-B302099A8057"}) {
        const auto id = Uuid::parse(text);
        ASSERT_TRUE(id) << text;
        EXPECT_EQ(id->toString(), text);
    }
}

TEST(UuidTest, MalformedTextsAreNoUuid) {
    for (const std::string text : {
             "",
             "E621E1F8",
             "E621E1F8C36C495A93FC0C247A3E6E5F",
             "E621E1F8-C36C-495A-93FC-0C247A3E6E5",
             "E621E1F8-C36C-495A-93FC-0C247A3E6E5F0",
             "{E621E1F8-C36C-495A-93FC-0C247A3E6E5F}",
             " E621E1F8-C36C-495A-93FC-0C247A3E6E5F",
             "E621E1F8-C36C-495A-93FC-0C247A3E6E5F\n",
             "E621E1F8-C36C-495A-93FC-0C247A3E6E5G",
             "G621E1F8-C36C-495A-93FC-0C247A3E6E5F",
             "E621E1F8-C36C-495A-93FC-0C247A3E6E5/",
             "E621E1F8-C36C-495A-93FC-0C247A3E6E5:",
             "E621E1F8-C36C-495A-93FC-0C247A3E6E5@",
             "E621E1F8-C36C-495A-93FC-0C247A3E6E5`",
             "E621E1F8-C36C-495A-93FC 0C247A3E6E5F",
             "E621E1F8_C36C_495A_93FC_0C247A3E6E5F",
             "E621E1F-8C36C-495A-93FC-0C247A3E6E5F",
             "E621E1F8-C36C-495A-93FC0-C247A3E6E5F",
             "+621E1F8-C36C-495A-93FC-0C247A3E6E5F",
             "0xE621E1-C36C-495A-93FC-0C247A3E6E5F",
             "E621E1F8-C36C-495A-93FC-0C247A3E6E-F",
             "E621E1F8-C36C-495A-93FC-0C247A3E6E\u00e9",
             "\u0660621E1F-C36C-495A-93FC-0C247A3E6E5F",
         })
        EXPECT_EQ(Uuid::parse(text), std::nullopt) << '"' << text << '"';
    EXPECT_EQ(Uuid::parse({"E621E1F8-C36C-495A-93FC-0C247A3E6E5\0", 36}), std::nullopt);
}

TEST(UuidTest, ARandomUuidHasTheBitsOfVersion4) {
    for (int i = 0; i < 1000; ++i) {
        const std::string text = Uuid::random().toString();
        EXPECT_EQ(text[14], '4') << text;
        EXPECT_NE(std::string_view("89AB").find(text[19]), std::string_view::npos) << text;
    }
}

TEST(UuidTest, AllOtherBitsOfARandomUuidTakeBothValues) {
    Uuid::Bytes ones{};
    Uuid::Bytes zeros{};
    for (int i = 0; i < 1000; ++i) {
        const Uuid id = Uuid::random();
        for (std::size_t k = 0; k < ones.size(); ++k) {
            ones[k] = static_cast<std::uint8_t>(ones[k] | id.bytes()[k]);
            zeros[k] = static_cast<std::uint8_t>(zeros[k] | ~id.bytes()[k]);
        }
    }
    EXPECT_EQ(Uuid(ones).toString(), "FFFFFFFF-FFFF-4FFF-BFFF-FFFFFFFFFFFF");
    EXPECT_EQ(Uuid(zeros).toString(), "FFFFFFFF-FFFF-BFFF-7FFF-FFFFFFFFFFFF");
}

TEST(UuidTest, RandomUuidsDiffer) {
    std::unordered_set<Uuid> seen;
    for (int i = 0; i < 10'000; ++i)
        seen.insert(Uuid::random());
    EXPECT_EQ(seen.size(), 10'000U);
}

/// What the program of that path prints.
std::string outputOf(const char* program) {
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(program, "r"), pclose);
    std::array<char, 100> text{};
    return pipe && std::fgets(text.data(), text.size(), pipe.get()) ? text.data() : "";
}

TEST(UuidTest, TheFirstRandomUuidsOfTwoProcessesDiffer) {
    const std::string first = outputOf(KESTREL_PRINT_RANDOM_ID);
    const std::string second = outputOf(KESTREL_PRINT_RANDOM_ID);
    EXPECT_TRUE(Uuid::parse(first.substr(0, Uuid::textLength))) << first;
    EXPECT_TRUE(Uuid::parse(second.substr(0, Uuid::textLength))) << second;
    EXPECT_NE(first, second);
}

TEST(UuidTest, EqualUuidsHaveEqualHashes) {
    const auto upper = Uuid::parse(canonical);
    const auto lower = Uuid::parse("e621e1f8-c36c-495a-93fc-0c247a3e6e5f");
    ASSERT_TRUE(upper && lower);
    EXPECT_EQ(*upper, *lower);
    EXPECT_EQ(std::hash<Uuid>{}(*upper), std::hash<Uuid>{}(*lower));
    EXPECT_NE(*upper, Uuid());
}

} // namespace

} // namespace kestrel
