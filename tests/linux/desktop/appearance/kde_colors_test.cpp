#include "shells/linux/desktop/appearance/kde_colors.h"

#include "shells/linux/desktop/appearance/contrast.h"
#include "tests/linux/desktop/appearance/variables.h"
#include "tests/linux/desktop/private_bus.h"
#include "tests/linux/desktop/waiting.h"

#include <QDBusMessage>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <vector>

namespace kestrel::linux_shell {
namespace {

const QByteArray darkScheme = "[Colors:Window]\nBackgroundNormal=42,46,50\n"
                              "ForegroundNormal=252,252,252\n\n"
                              "[Colors:View]\nBackgroundNormal=27,30,32\n"
                              "ForegroundNormal=252,252,252\nForegroundInactive=161,169,177\n"
                              "\n[Colors:Selection]\nBackgroundNormal=61,174,233\n";
const QByteArray lightScheme = "[Colors:Window]\nBackgroundNormal=239,240,241\n"
                               "ForegroundNormal=35,38,41\n";

class KdeColorsTest : public testing::Test {
  protected:
    KdeColorsTest() {
        variables.set("XDG_CONFIG_HOME", QFile::encodeName(folder.filePath(QStringLiteral("own"))));
        variables.set("XDG_CONFIG_DIRS",
                      QFile::encodeName(folder.filePath(QStringLiteral("system"))));
        variables.set("XDG_DATA_HOME", QFile::encodeName(folder.filePath(QStringLiteral("data"))));
    }

    void write(const QString& name, const QByteArray& content) {
        const QString path = folder.filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    static QColor color(const KdeColors& colors, QPalette::ColorRole role) {
        return colors.palette() ? colors.palette()->color(role) : QColor();
    }

    /// Says that colours have changed, to a program that by then listens.
    void notify(int what) {
        callAndWait(program, QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                    QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId"));
        auto message = QDBusMessage::createSignal(QStringLiteral("/KGlobalSettings"),
                                                  QStringLiteral("org.kde.KGlobalSettings"),
                                                  QStringLiteral("notifyChange"));
        message << what << 0;
        desktop.send(message);
    }

    QTemporaryDir folder;
    Variables variables;
    PrivateBus bus;
    QDBusConnection program = bus.connect();
    QDBusConnection desktop = bus.connect();
};

TEST_F(KdeColorsTest, SchemesOwnColorsAreUsed) {
    write(QStringLiteral("own/kdeglobals"), darkScheme);
    const KdeColors colors(program);
    EXPECT_EQ(colors.settings().scheme, ColorScheme::dark);
    EXPECT_EQ(color(colors, QPalette::Window), QColor(42, 46, 50));
    EXPECT_EQ(color(colors, QPalette::Base), QColor(27, 30, 32));
    EXPECT_EQ(color(colors, QPalette::Highlight), QColor(61, 174, 233));
    EXPECT_EQ(color(colors, QPalette::PlaceholderText), QColor(161, 169, 177));
}

TEST_F(KdeColorsTest, SchemeWithoutPlaceholdersHasReadableOnes) {
    write(QStringLiteral("own/kdeglobals"), lightScheme);
    const KdeColors colors(program);
    EXPECT_EQ(colors.settings().scheme, ColorScheme::light);
    EXPECT_GE(
        contrastRatio(color(colors, QPalette::PlaceholderText), color(colors, QPalette::Base)), 3);
}

TEST_F(KdeColorsTest, ChangeIsFollowed) {
    write(QStringLiteral("own/kdeglobals"), lightScheme);
    const KdeColors colors(program);
    write(QStringLiteral("own/kdeglobals"), darkScheme);
    notify(0);
    EXPECT_TRUE(waitUntil([&] { return colors.settings().scheme == ColorScheme::dark; }));
    EXPECT_EQ(color(colors, QPalette::Window), QColor(42, 46, 50));
}

TEST_F(KdeColorsTest, OtherColorsOfTheSameSchemeAreAChange) {
    write(QStringLiteral("own/kdeglobals"), lightScheme);
    const KdeColors colors(program);
    int changes = 0;
    QObject::connect(&colors, &AppearanceSource::changed, &colors, [&changes] { ++changes; });
    write(QStringLiteral("own/kdeglobals"), QByteArray(lightScheme).replace("35,38,41", "0,0,0"));
    notify(0);
    EXPECT_TRUE(waitUntil([&] { return changes == 1; }));
    EXPECT_EQ(color(colors, QPalette::WindowText), QColor(0, 0, 0));
}

TEST_F(KdeColorsTest, SystemsFileCountsWhereTheUserHasChosenNothing) {
    write(QStringLiteral("own/kdeglobals"), "[General]\nfixed=Hack\n");
    write(QStringLiteral("system/kdeglobals"), darkScheme);
    const KdeColors colors(program);
    EXPECT_EQ(color(colors, QPalette::Window), QColor(42, 46, 50));
}

TEST_F(KdeColorsTest, SchemeThatIsOnlyNamedIsLookedUp) {
    write(QStringLiteral("system/kdeglobals"), "[General]\nColorScheme=Night\n");
    write(QStringLiteral("data/color-schemes/Night.colors"), darkScheme);
    const KdeColors colors(program);
    EXPECT_EQ(colors.settings().scheme, ColorScheme::dark);
}

TEST_F(KdeColorsTest, WithoutColorsThereIsNoPalette) {
    const std::vector<QByteArray> table{
        "",
        "\xff\xfe\x00[[[",
        "[Colors:Window]\nBackgroundNormal=1,2,3\n",
        "[Colors:Window]\nBackgroundNormal=1,2\nForegroundNormal=255,255,255\n",
        "[Colors:Window]\nBackgroundNormal=1,2,256\nForegroundNormal=255,255,255\n",
        "[Colors:Window]\nBackgroundNormal=1,2,x\nForegroundNormal=255,255,255\n",
        "[Colors:Window]\nBackgroundNormal=1,2,-3\nForegroundNormal=255,255,255\n",
    };
    for (const QByteArray& content : table) {
        write(QStringLiteral("own/kdeglobals"), content);
        const KdeColors colors(program);
        EXPECT_FALSE(colors.palette()) << content.constData();
        EXPECT_EQ(colors.settings(), AppearanceSettings()) << content.constData();
    }
}

} // namespace
} // namespace kestrel::linux_shell
