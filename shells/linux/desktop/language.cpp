#include "shells/linux/desktop/language.h"

#include <QGuiApplication>
#include <QStringList>

#include <algorithm>

namespace kestrel::linux_shell {
namespace {

/// The languages that the user prefers to English, the best first, named as in files' names. What
/// stands behind English is not asked: the texts are in English already.
QStringList languagesOf(const QLocale& locale) {
    QStringList names = locale.uiLanguages();
    const auto english = std::ranges::find_if(names, [](const QString& name) {
        const QLocale::Language language = QLocale(name).language();
        return language == QLocale::English || language == QLocale::C;
    });
    names.erase(english, names.end());
    return names.replaceInStrings(QStringLiteral("-"), QStringLiteral("_"));
}

/// Loads the first that there is.
void install(QTranslator& translator, const QStringList& languages, const QString& name,
             const QString& folder) {
    const auto load = [&](const QString& language) {
        return translator.load(name + QLatin1Char('_') + language, folder);
    };
    if (std::ranges::any_of(languages, load))
        QCoreApplication::installTranslator(&translator);
}

} // namespace

Language::Language(const QLocale& locale, const QString& toolkitFolder) {
    const QStringList languages = languagesOf(locale);
    install(toolkit_, languages, QStringLiteral("qtbase"), toolkitFolder);
    install(program_, languages, QStringLiteral("kestrel"),
            QStringLiteral(":/kestrel/translations"));
    // The toolkit would ask its translation, which may be absent.
    const QLocale shown = languages.isEmpty() ? QLocale(QLocale::English) : QLocale(languages[0]);
    QGuiApplication::setLayoutDirection(shown.textDirection());
}

} // namespace kestrel::linux_shell
