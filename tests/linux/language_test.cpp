// The program in the user's language, with its own translations and the toolkit's as installed.

#include "shells/linux/desktop/appearance/texts.h"
#include "shells/linux/desktop/language.h"
#include "views/popover/menu_popover_style.h"

#include <QApplication>
#include <QFile>
#include <QLibraryInfo>
#include <QLineEdit>
#include <QMenu>
#include <QStringList>

#include <memory>

#include <gtest/gtest.h>

namespace kestrel::linux_shell {
namespace {

class LanguageTest : public testing::Test {
  protected:
    void TearDown() override { QApplication::setLayoutDirection(Qt::LeftToRight); }

    static QString quit() { return textFor(menu_popover_style::footer::quit.title); }
    static QString toolkitFolder() { return QLibraryInfo::path(QLibraryInfo::TranslationsPath); }

    /// What a locale shows in the footer, without a translation of the toolkit.
    static QString quitIn(const char* locale) {
        const Language language(QLocale(QLatin1String(locale)), {});
        return quit();
    }
};

TEST_F(LanguageTest, ATextIsShownInTheLanguageOfTheLocale) {
    EXPECT_EQ(quitIn("de_AT"), QStringLiteral("Beenden"));
    EXPECT_EQ(quitIn("es_MX"), QStringLiteral("Salir"));
    EXPECT_EQ(quitIn("fr_FR"), QStringLiteral("Quitter"));
    EXPECT_EQ(quitIn("ja_JP"), QStringLiteral("終了"));
    EXPECT_EQ(quitIn("zh_CN"), QStringLiteral("退出"));
}

TEST_F(LanguageTest, ALanguageWithoutATranslationShowsEnglish) {
    for (const char* const locale : {"C", "en_US", "fi_FI", "ar_EG", "zh_TW"})
        EXPECT_EQ(quitIn(locale), QStringLiteral("Quit")) << locale;
}

TEST_F(LanguageTest, TheWindowsMirrorWhereTheLanguageIsWrittenFromTheRight) {
    for (const char* const locale : {"ar_EG", "he_IL", "fa_IR"}) {
        const Language language(QLocale(QLatin1String(locale)), {});
        EXPECT_EQ(QApplication::layoutDirection(), Qt::RightToLeft) << locale;
    }
    for (const char* const locale : {"C", "en_US", "de_DE", "ja_JP"}) {
        const Language language(QLocale(QLatin1String(locale)), toolkitFolder());
        EXPECT_EQ(QApplication::layoutDirection(), Qt::LeftToRight) << locale;
    }
}

TEST_F(LanguageTest, TheToolkitsOwnMenusSpeakTheLanguageToo) {
    if (!QFile::exists(toolkitFolder() + QStringLiteral("/qtbase_de.qm")))
        GTEST_SKIP() << "the toolkit's translations are not installed";
    const Language language(QLocale(QStringLiteral("de_DE")), toolkitFolder());
    QLineEdit field;
    const std::unique_ptr<QMenu> menu(field.createStandardContextMenu());
    QStringList titles;
    for (const QAction* action : menu->actions())
        titles << action->text().section(QLatin1Char('\t'), 0, 0).remove(QLatin1Char('&'));
    EXPECT_TRUE(titles.contains(QStringLiteral("Rückgängig"))) << titles.join(u' ').toStdString();
    EXPECT_EQ(quit(), QStringLiteral("Beenden"));
}

} // namespace
} // namespace kestrel::linux_shell
