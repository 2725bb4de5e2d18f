#include "shells/linux/desktop/appearance/appearance.h"

#include "shells/linux/desktop/appearance/contrast.h"
#include "shells/linux/desktop/appearance/palettes.h"
#include "tests/linux/desktop/appearance/fake_portal.h"
#include "tests/linux/desktop/appearance/variables.h"
#include "tests/linux/desktop/private_bus.h"
#include "tests/linux/desktop/waiting.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QWidget>

#include <gmock/gmock.h>

#include <memory>
#include <optional>

namespace kestrel::linux_shell {
namespace {

class AppearanceTest : public testing::Test {
  protected:
    ~AppearanceTest() override {
        appearance.reset();
        QApplication::setPalette(QPalette());
    }

    void startPortal(uint colorScheme, uint contrast = 0) {
        portal = std::make_unique<FakePortal>(service);
        portal->settings = {{QStringLiteral("color-scheme"), colorScheme},
                            {QStringLiteral("contrast"), contrast}};
    }

    void start() {
        appearance.emplace(program);
        QObject::connect(&*appearance, &Appearance::colorSchemeChanged, &*appearance,
                         [this] { ++changes; });
    }

    bool scheme(std::optional<ColorScheme> wanted) {
        return waitUntil([&] { return appearance->colorScheme() == wanted; });
    }

    static bool hasPalette(ColorScheme scheme, Contrast contrast = Contrast::normal) {
        return waitUntil([&] { return QApplication::palette() == paletteFor(scheme, contrast); });
    }

    PrivateBus bus;
    Variables variables;
    QDBusConnection program = bus.connect();
    QDBusConnection service = bus.connect();
    const QPalette toolkits = QApplication::palette();
    std::unique_ptr<FakePortal> portal;
    std::optional<Appearance> appearance;
    int changes = 0;
};

TEST_F(AppearanceTest, DarkAtTheStartAndLightWhileRunning) {
    startPortal(1);
    start();
    EXPECT_TRUE(hasPalette(ColorScheme::dark));
    EXPECT_EQ(appearance->colorScheme(), ColorScheme::dark);
    EXPECT_EQ(changes, 1);
    portal->set(QStringLiteral("color-scheme"), 2U);
    EXPECT_TRUE(hasPalette(ColorScheme::light));
    EXPECT_EQ(appearance->colorScheme(), ColorScheme::light);
    EXPECT_EQ(changes, 2);
}

TEST_F(AppearanceTest, WithoutAPreferenceThePaletteIsTheToolkits) {
    start();
    EXPECT_EQ(appearance->colorScheme(), std::nullopt);
    EXPECT_EQ(QApplication::palette(), toolkits);
    startPortal(1);
    ASSERT_TRUE(hasPalette(ColorScheme::dark));
    portal->set(QStringLiteral("color-scheme"), 0U);
    ASSERT_TRUE(scheme(std::nullopt));
    EXPECT_EQ(QApplication::palette(), toolkits);
}

TEST_F(AppearanceTest, HighContrastIsAppliedToEitherScheme) {
    startPortal(0, 1);
    start();
    EXPECT_TRUE(hasPalette(ColorScheme::light, Contrast::high));
    portal->set(QStringLiteral("color-scheme"), 1U);
    EXPECT_TRUE(hasPalette(ColorScheme::dark, Contrast::high));
    portal->set(QStringLiteral("contrast"), 0U);
    EXPECT_TRUE(hasPalette(ColorScheme::dark));
}

TEST_F(AppearanceTest, UsersOwnStyleStaysInForceAndTheSchemeIsToldAllTheSame) {
    for (const auto* variable : {"QT_STYLE_OVERRIDE", "QT_QPA_PLATFORMTHEME"}) {
        Variables choice;
        choice.set(variable, "qt6ct-style");
        startPortal(1, 1);
        start();
        EXPECT_TRUE(scheme(ColorScheme::dark)) << variable;
        EXPECT_EQ(QApplication::palette(), toolkits) << variable;
        appearance.reset();
        portal.reset();
    }
}

TEST_F(AppearanceTest, ColorsOfAPlatformThemeStayInForce) {
    const QPalette own(Qt::darkGreen);
    QApplication::setPalette(own);
    startPortal(1);
    start();
    ASSERT_TRUE(scheme(ColorScheme::dark));
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), own.color(QPalette::Window));
}

TEST_F(AppearanceTest, PlaceholdersThatAPlatformThemeLeavesUnsetCanBeRead) {
    const auto theme = [](const QColor& base, const QColor& text) {
        QPalette palette(base);
        palette.setColor(QPalette::Base, base);
        palette.setColor(QPalette::Text, text);
        palette.setColor(QPalette::PlaceholderText, QColor(0, 0, 0, 128)); // the toolkit's default
        return palette;
    };
    const auto isReadable = [] {
        const QPalette used = QApplication::palette();
        return contrastRatio(used.color(QPalette::PlaceholderText), used.color(QPalette::Base)) >=
               3;
    };
    QApplication::setPalette(theme(QColor(0x1B, 0x1E, 0x20), QColor(0xFC, 0xFC, 0xFC)));
    const QPalette dark = QApplication::palette();
    ASSERT_FALSE(isReadable());
    start();
    EXPECT_TRUE(isReadable());
    for (const auto role : {QPalette::Window, QPalette::Base, QPalette::Text, QPalette::Highlight})
        EXPECT_EQ(QApplication::palette().color(role), dark.color(role));
    QApplication::setPalette(theme(QColor(0x30, 0x20, 0x20), QColor(0xFF, 0xF0, 0xF0)));
    EXPECT_TRUE(isReadable());
}

TEST_F(AppearanceTest, PlaceholdersThatCanBeReadStayTheThemes) {
    QPalette theme(Qt::darkGreen);
    theme.setColor(QPalette::Base, Qt::white);
    theme.setColor(QPalette::PlaceholderText, QColor(0, 0, 0, 128));
    QApplication::setPalette(theme);
    start();
    EXPECT_EQ(QApplication::palette().color(QPalette::PlaceholderText), QColor(0, 0, 0, 128));
}

TEST_F(AppearanceTest, PlasmasOwnColorsComeBeforeThoseOfItsScheme) {
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("kdeglobals")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Colors:Window]\nBackgroundNormal=10,20,30\nForegroundNormal=250,250,250\n");
    file.close();
    variables.set("XDG_CURRENT_DESKTOP", "KDE");
    variables.set("XDG_CONFIG_HOME", QFile::encodeName(folder.path()));
    start();
    EXPECT_EQ(appearance->colorScheme(), ColorScheme::dark);
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), QColor(10, 20, 30));
    startPortal(1, 1);
    ASSERT_TRUE(waitUntil([&] { return portal->calls > 0; }));
    settle();
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), QColor(10, 20, 30));
}

TEST_F(AppearanceTest, WidgetsThatExistFollow) {
    QWidget window;
    QWidget child(&window);
    window.ensurePolished();
    startPortal(1);
    start();
    ASSERT_TRUE(hasPalette(ColorScheme::dark));
    const QColor dark = paletteFor(ColorScheme::dark, Contrast::normal).color(QPalette::Window);
    EXPECT_EQ(window.palette().color(QPalette::Window), dark);
    EXPECT_EQ(child.palette().color(QPalette::Window), dark);
}

} // namespace
} // namespace kestrel::linux_shell
