#include "shells/macos/desktop/open_panel.h"
#include "tests/macos_standins/macos_fixture.h"

#import <UniformTypeIdentifiers/UniformTypeIdentifiers.h>

namespace kestrel::tests {
namespace {

class OpenPanelTest : public MacosFixture {
  protected:
    macos_shell::AppKitOpenPanel panel;
    NSOpenPanel* shown = nil;

    void SetUp() override {
        recording::whileOpenPanelRuns([this](NSOpenPanel* native) { shown = native; });
    }
};

TEST_F(OpenPanelTest, ForApplicationsItTakesOnlyThoseAndStartsInTheirFolder) {
    panel.runModal({.content = OpenPanelOptions::Content::applications,
                    .startFolder = OpenPanelOptions::StartFolder::applications});
    ASSERT_TRUE(shown != nil);
    EXPECT_TRUE(shown.canChooseFiles);
    EXPECT_FALSE(shown.canChooseDirectories);
    EXPECT_FALSE(shown.allowsMultipleSelection);
    EXPECT_TRUE(shown.resolvesAliases);
    ASSERT_EQ(shown.allowedContentTypes.count, 1U);
    EXPECT_TRUE([shown.allowedContentTypes.firstObject isEqual:UTTypeApplication]);
    EXPECT_TRUE([shown.directoryURL.path isEqualToString:@"/Applications"]);
}

TEST_F(OpenPanelTest, ForFilesItTakesAnyAndStartsOnTheDesktop) {
    panel.runModal({});
    ASSERT_TRUE(shown != nil);
    EXPECT_TRUE(shown.canChooseFiles);
    EXPECT_FALSE(shown.canChooseDirectories);
    EXPECT_FALSE(shown.allowsMultipleSelection);
    EXPECT_TRUE(shown.resolvesAliases);
    EXPECT_EQ(shown.allowedContentTypes.count, 0U);
    NSString* const desktop = [NSHomeDirectory() stringByAppendingPathComponent:@"Desktop"];
    EXPECT_TRUE([shown.directoryURL.path isEqualToString:desktop]);
}

TEST_F(OpenPanelTest, EveryOptionIsHandedOn) {
    panel.runModal({.canChooseFiles = false,
                    .canChooseDirectories = true,
                    .allowsMultipleSelection = true,
                    .resolvesAliases = false});
    EXPECT_FALSE(shown.canChooseFiles);
    EXPECT_TRUE(shown.canChooseDirectories);
    EXPECT_TRUE(shown.allowsMultipleSelection);
    EXPECT_FALSE(shown.resolvesAliases);
}

TEST_F(OpenPanelTest, TheAnswerIsTheAbsolutePathOfTheFileAndNoOtherName) {
    recording::answerOpenPanel(
        @[ [NSURL fileURLWithPath:@"/Applications/Gr\u00fc\u00df \u9ce5.app"] ]);
    EXPECT_EQ(panel.runModal({}), (ChosenFile{"/Applications/Grüß 鳥.app", std::nullopt}));
}

TEST_F(OpenPanelTest, CancellingGivesNothing) { EXPECT_EQ(panel.runModal({}), std::nullopt); }

TEST_F(OpenPanelTest, APanelWithoutAnUrlGivesNothing) {
    recording::answerOpenPanel(@[]);
    EXPECT_EQ(panel.runModal({}), std::nullopt);
}

} // namespace
} // namespace kestrel::tests
