#include "shells/linux/views/application_search.h"

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

namespace kestrel::linux_shell {
namespace {

using testing::ElementsAre;

const std::vector<InstalledApplication> applications = {
    {"/a", "Archive Manager", "Compress\nfile-roller"},
    {"/b", "Café au Lait", ""},
    {"/c", "Document Editor", "Office"},
    {"/d", "gedit", "Text Editor\nplain;notes"},
    {"/e", "Mail", "Mail Reader\nthunderbird"},
    {"/f", "Text Editor", "notes"},
    {"/g", "Straße", ""},
};

std::vector<std::string> found(const QString& typed) {
    std::vector<std::string> names;
    for (const int position : ApplicationSearch(applications).find(typed))
        names.push_back(applications[static_cast<std::size_t>(position)].name);
    return names;
}

TEST(ApplicationSearchTest, NothingTypedFindsAllInTheirOrder) {
    EXPECT_EQ(found({}).size(), applications.size());
    EXPECT_EQ(found(QStringLiteral("  ")).size(), applications.size());
    EXPECT_EQ(found({}).front(), "Archive Manager");
}

TEST(ApplicationSearchTest, BeginningsOfNamesComeBeforeThoseOfWordsAndTheseBeforeTheRest) {
    EXPECT_THAT(found(QStringLiteral("e")),
                ElementsAre("Document Editor", "Text Editor", "Archive Manager", "Café au Lait",
                            "gedit", "Straße", "Mail"));
    EXPECT_THAT(found(QStringLiteral("edit")),
                ElementsAre("Document Editor", "Text Editor", "gedit"));
    EXPECT_THAT(found(QStringLiteral("text")), ElementsAre("Text Editor", "gedit"));
}

TEST(ApplicationSearchTest, CaseAccentsAndSpacesMakeNoDifference) {
    EXPECT_THAT(found(QStringLiteral("CAFE  au")), ElementsAre("Café au Lait"));
    EXPECT_THAT(found(QStringLiteral("cafe\u0301")), ElementsAre("Café au Lait"));
    EXPECT_THAT(found(QStringLiteral(" mÄil ")), ElementsAre("Mail"));
    EXPECT_THAT(found(QStringLiteral("STRASSE")), ElementsAre("Straße"));
}

TEST(ApplicationSearchTest, WordsMayStandInAnyOrderAndInTheOtherNames) {
    EXPECT_THAT(found(QStringLiteral("editor text")), ElementsAre("gedit", "Text Editor"));
    EXPECT_THAT(found(QStringLiteral("thunderbird")), ElementsAre("Mail"));
    EXPECT_THAT(found(QStringLiteral("roll")), ElementsAre("Archive Manager"));
    EXPECT_THAT(found(QStringLiteral("editor nowhere")), ElementsAre());
}

TEST(ApplicationSearchTest, SignsOfPatternsStandForThemselves) {
    EXPECT_THAT(found(QStringLiteral(".*")), ElementsAre());
    EXPECT_THAT(found(QStringLiteral("file-roller")), ElementsAre("Archive Manager"));
}

} // namespace
} // namespace kestrel::linux_shell
