#include <QDir>
#include <QIcon>
#include <QPixmap>
#include <QSettings>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace kestrel::linux_shell {
namespace {

const QString builtIndexes = QStringLiteral(KESTREL_ICON_INDEX);

class IconIndexTest : public testing::Test {
  protected:
    ~IconIndexTest() override {
        QIcon::setThemeSearchPaths(searchPaths_);
        QIcon::setThemeName(themeName_);
    }

  private:
    QStringList searchPaths_ = QIcon::themeSearchPaths();
    QString themeName_ = QIcon::themeName();
};

TEST_F(IconIndexTest, EveryFolderOfApplicationsIsAsTheInstalledThemeSays) {
    const QSettings installed(QStringLiteral("/usr/share/icons/hicolor/index.theme"),
                              QSettings::IniFormat);
    const QSettings ours(builtIndexes + QStringLiteral("/hicolor/index.theme"),
                         QSettings::IniFormat);
    const auto keys = ours.allKeys();
    ASSERT_GT(keys.size(), 200);
    for (const QString& key : keys) {
        if (key.contains(QLatin1String("/apps/")) || key.contains(QLatin1String("/mimetypes/"))) {
            EXPECT_EQ(ours.value(key).toString().toStdString(),
                      installed.value(key).toString().toStdString())
                << qUtf8Printable(key);
        }
    }
}

TEST_F(IconIndexTest, AnIconIsFoundInAFolderThatComesLater) {
    const QTemporaryDir themes;
    const QString name = QStringLiteral("an-applications-own-icon");
    QDir(themes.path()).mkpath(QStringLiteral("hicolor/48x48/apps"));
    QPixmap pixmap(48, 48);
    pixmap.fill(Qt::red);
    ASSERT_TRUE(
        pixmap.save(themes.filePath(QStringLiteral("hicolor/48x48/apps/%1.png").arg(name))));
    QIcon::setThemeSearchPaths({builtIndexes, themes.path()});
    QIcon::setThemeName(QStringLiteral("hicolor"));
    EXPECT_EQ(QIcon::fromTheme(name).availableSizes(), QList{QSize(48, 48)});
}

} // namespace
} // namespace kestrel::linux_shell
