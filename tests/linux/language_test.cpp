// The program in the user's language, with its own translations and the toolkit's as installed.

#include "shells/linux/desktop/appearance/texts.h"
#include "shells/linux/desktop/language.h"
#include "shells/linux/views/footer_button.h"
#include "shells/linux/views/kit/style_bridge.h"
#include "shells/linux/views/kit/text_label.h"
#include "views/popover/menu_popover_style.h"
#include "views/settings/settings_style.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QLibraryInfo>
#include <QLineEdit>
#include <QMenu>
#include <QStringList>

#include <algorithm>
#include <memory>
#include <utility>

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

/// The widths of the upper and the lower half of what a label draws, in pixels.
std::pair<int, int> widthsOfLines(TextLabel& label) {
    const QImage image = label.grab().toImage();
    const auto widthBetween = [&image](int top, int bottom) {
        QRect ink;
        for (int y = top; y < bottom; ++y) {
            for (int x = 0; x < image.width(); ++x)
                if (image.pixel(x, y) != image.pixel(0, 0))
                    ink |= QRect(x, y, 1, 1);
        }
        return ink.width();
    };
    const int middle = image.height() / 2;
    return {widthBetween(0, middle), widthBetween(middle, image.height())};
}

/// As the files of the program's translations name them, and English.
QStringList languages() {
    QStringList names{QStringLiteral("en")};
    const QString prefix = QStringLiteral("kestrel_");
    for (const QFileInfo& file : QDir(QStringLiteral(":/kestrel/translations")).entryInfoList())
        names << file.completeBaseName().mid(prefix.size());
    EXPECT_GT(names.size(), 5);
    return names;
}

TEST_F(LanguageTest, BothButtonsOfTheFooterFitSideBySide) {
    namespace footer = menu_popover_style::footer;
    for (const QString& name : languages()) {
        SCOPED_TRACE(name.toStdString());
        const Language language(QLocale(name), {});
        const FooterButton settings(footer::settings);
        const FooterButton quit(footer::quit);
        const double free =
            menu_popover_style::width - footer::padding.left - footer::padding.right;
        EXPECT_LT(settings.sizeHint().width() + quit.sizeHint().width(), free);
    }
}

TEST_F(LanguageTest, TheTextsOfTheEmptyPopoverFitIntoIt) {
    namespace state = menu_popover_style::empty_state;
    for (const QString& name : languages()) {
        SCOPED_TRACE(name.toStdString());
        const Language language(QLocale(name), {});
        TextLabel hint(textFor(state::hint), state::hintStyle);
        const int line = hint.sizeHint().height();
        hint.setWrapWidth(pixels(state::hintMaximumWidth));
        EXPECT_LE(hint.sizeHint().height(), 2 * line);
        const TextLabel title(textFor(state::title), state::titleStyle);
        EXPECT_LE(title.sizeHint().width(), menu_popover_style::width);
    }
}

TEST_F(LanguageTest, ThePlaceholdersHintHasEvenLines) {
    namespace placeholder = settings_style::empty_placeholder;
    for (const QString& name : languages()) {
        SCOPED_TRACE(name.toStdString());
        const Language language(QLocale(name), {});
        TextLabel hint(textFor(placeholder::hint), placeholder::hintStyle);
        const int whole = hint.sizeHint().width();
        hint.setWrapWidth(pixels(placeholder::hintMaximumWidth));
        hint.resize(hint.sizeHint());
        EXPECT_LE(hint.width(), placeholder::hintMaximumWidth);
        if (whole <= placeholder::hintMaximumWidth)
            continue;
        const auto [upper, lower] = widthsOfLines(hint);
        EXPECT_NEAR(upper, lower, 0.25 * std::max(upper, lower));
    }
}

} // namespace
} // namespace kestrel::linux_shell
