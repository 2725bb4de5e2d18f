#include "shells/linux/views/application_search.h"

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

namespace kestrel::linux_shell {
namespace {

using testing::ElementsAre;

const std::vector<InstalledApplication> searched = {
    {"/a", "Archive Manager", "Compress\nfile-roller"},
    {"/b", "Café au Lait", ""},
    {"/c", "Document Editor", "Office"},
    {"/d", "gedit", "Text Editor\nplain;notes"},
    {"/e", "Mail", "Mail Reader\nthunderbird"},
    {"/f", "Text Editor", "notes"},
    {"/g", "Straße", ""},
};

std::vector<std::string> namesFound(const QString& typed) {
    std::vector<std::string> names;
    for (const int position : ApplicationSearch(searched).find(typed))
        names.push_back(searched[static_cast<std::size_t>(position)].name);
    return names;
}

TEST(ApplicationSearchTest, NothingTypedFindsAllInTheirOrder) {
    EXPECT_EQ(namesFound({}).size(), searched.size());
    EXPECT_EQ(namesFound(QStringLiteral("  ")).size(), searched.size());
    EXPECT_EQ(namesFound({}).front(), "Archive Manager");
}

TEST(ApplicationSearchTest, BeginningsOfNamesComeBeforeThoseOfWordsAndTheseBeforeTheRest) {
    EXPECT_THAT(namesFound(QStringLiteral("e")),
                ElementsAre("Document Editor", "Text Editor", "Archive Manager", "Café au Lait",
                            "gedit", "Straße", "Mail"));
    EXPECT_THAT(namesFound(QStringLiteral("edit")),
                ElementsAre("Document Editor", "Text Editor", "gedit"));
    EXPECT_THAT(namesFound(QStringLiteral("text")), ElementsAre("Text Editor", "gedit"));
}

TEST(ApplicationSearchTest, CaseAccentsAndSpacesMakeNoDifference) {
    EXPECT_THAT(namesFound(QStringLiteral("CAFE  au")), ElementsAre("Café au Lait"));
    EXPECT_THAT(namesFound(QStringLiteral("cafe\u0301")), ElementsAre("Café au Lait"));
    EXPECT_THAT(namesFound(QStringLiteral(" mÄil ")), ElementsAre("Mail"));
    EXPECT_THAT(namesFound(QStringLiteral("STRASSE")), ElementsAre("Straße"));
}

TEST(ApplicationSearchTest, WordsMayStandInAnyOrderAndInTheOtherNames) {
    EXPECT_THAT(namesFound(QStringLiteral("editor text")), ElementsAre("gedit", "Text Editor"));
    EXPECT_THAT(namesFound(QStringLiteral("thunderbird")), ElementsAre("Mail"));
    EXPECT_THAT(namesFound(QStringLiteral("roll")), ElementsAre("Archive Manager"));
    EXPECT_THAT(namesFound(QStringLiteral("editor nowhere")), ElementsAre());
}

TEST(ApplicationSearchTest, SignsOfPatternsStandForThemselves) {
    EXPECT_THAT(namesFound(QStringLiteral(".*")), ElementsAre());
    EXPECT_THAT(namesFound(QStringLiteral("file-roller")), ElementsAre("Archive Manager"));
}

} // namespace
} // namespace kestrel::linux_shell
