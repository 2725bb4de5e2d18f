#include "views/type_select.h"

#include "tests/fakes/fake_system.h"
#include "tests/fakes/store_fixture.h"

#include <gtest/gtest.h>

namespace kestrel::tests {
namespace {

class TypeSelectTest : public testing::Test {
  protected:
    WillChangeSignal signal;
    ItemList list{signal};
    FakeClock clock;
    TypeSelect select{clock};

    void SetUp() override {
        list.assign({appItem("Terminal"), appItem("text editor"), appItem("Mail"),
                     appItem("\u00C9diteur"), appItem("Aardvark"), appItem("Abacus"), appItem("")});
    }
    std::optional<std::size_t> type(std::string_view text,
                                    std::optional<std::size_t> current = std::nullopt) {
        return select.typed(text, list, current);
    }
};

TEST_F(TypeSelectTest, OneLetterFindsTheFirstTitleThatBeginsWithItWhateverTheCase) {
    EXPECT_EQ(type("M"), 2U);
}

TEST_F(TypeSelectTest, LettersTypedSoonAfterEachOtherMakeOnePrefix) {
    EXPECT_EQ(type("t"), 0U);
    EXPECT_EQ(type("e", 0), 0U);
    EXPECT_EQ(type("x", 0), 1U);
}

TEST_F(TypeSelectTest, AfterAPauseThePrefixStartsAnew) {
    EXPECT_EQ(type("t"), 0U);
    clock.time += TypeSelect::pause + std::chrono::milliseconds(1);
    EXPECT_EQ(type("m", 0), 2U);
}

TEST_F(TypeSelectTest, TheSameLetterAgainGoesOnToTheNextMatchAndAround) {
    EXPECT_EQ(type("t"), 0U);
    EXPECT_EQ(type("t", 0), 1U);
    EXPECT_EQ(type("t", 1), 0U);
}

TEST_F(TypeSelectTest, ADoubledLetterThatTheTitleHasStays) {
    EXPECT_EQ(type("a"), 4U);
    EXPECT_EQ(type("a", 4), 4U);
    EXPECT_EQ(type("r", 4), 4U);
}

TEST_F(TypeSelectTest, LettersMatchHoweverTheyAreComposed) { EXPECT_EQ(type("e\u0301"), 3U); }

TEST_F(TypeSelectTest, NoMatchAndAFirstSpaceFindNothing) {
    EXPECT_EQ(type("z"), std::nullopt);
    clock.time += std::chrono::hours(1);
    EXPECT_EQ(type(" "), std::nullopt);
    list.assign({});
    clock.time += std::chrono::hours(1);
    EXPECT_EQ(type("t"), std::nullopt);
}

TEST_F(TypeSelectTest, ASpaceInsideAPrefixIsPartOfIt) {
    type("t");
    type("e", 0);
    type("x", 0);
    type("t", 1);
    EXPECT_EQ(type(" ", 1), 1U);
    EXPECT_EQ(type("e", 1), 1U);
}

TEST_F(TypeSelectTest, AClockThatIsSetBackStartsAnew) {
    type("t");
    clock.time -= std::chrono::hours(1);
    EXPECT_EQ(type("m", 0), 2U);
}

} // namespace
} // namespace kestrel::tests
