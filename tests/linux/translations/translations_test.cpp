#include "views/accessible_texts.h"
#include "views/popover/menu_popover_style.h"
#include "views/settings/add_edit_item_style.h"
#include "views/settings/item_row_style.h"
#include "views/settings/settings_style.h"

#include <QDir>
#include <QFile>
#include <QXmlStreamReader>

#include <map>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kestrel::tests {
namespace {

/// Every text of the program that is looked up in a translation.
std::set<std::string> localizableTexts() {
    namespace form = add_edit_item_style;
    namespace row = item_row_style;
    namespace placeholder = settings_style::empty_placeholder;
    namespace accessible = accessible_texts;
    namespace popover = menu_popover_style;
    std::set<std::string> texts;
    for (const style::Text& text : {placeholder::title,
                                    placeholder::hint,
                                    placeholder::button,
                                    row::editAction,
                                    row::deleteAction,
                                    form::addHeader,
                                    form::editHeader,
                                    form::titleLabel,
                                    form::typeLabel,
                                    form::appRow.label,
                                    form::fileRow.label,
                                    form::commandRow.label,
                                    form::browse,
                                    form::cancel,
                                    form::add,
                                    form::save,
                                    accessible::itemList,
                                    accessible::rowActions,
                                    accessible::moveRowUp,
                                    accessible::moveRowDown,
                                    popover::empty_state::title,
                                    popover::empty_state::hint,
                                    popover::footer::settings.title,
                                    popover::footer::quit.title}) {
        EXPECT_EQ(text.lookup, style::Text::Lookup::localizable) << text.english;
        texts.emplace(text.english);
    }
    return texts;
}

/// The finished translations of a language, by their English texts.
std::map<std::string, std::string> translations(const std::string& language) {
    QFile file(QString::fromStdString(TRANSLATIONS_FOLDER "/kestrel_" + language + ".ts"));
    std::map<std::string, std::string> result;
    if (!file.open(QIODevice::ReadOnly)) {
        ADD_FAILURE() << "cannot open " << file.fileName().toStdString();
        return result;
    }
    QXmlStreamReader xml(&file);
    std::string source;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("source"))
            source = xml.readElementText().toStdString();
        else if (xml.name() == QLatin1String("translation") &&
                 !xml.attributes().hasAttribute(QLatin1String("type")))
            result[source] = xml.readElementText().toStdString();
    }
    EXPECT_FALSE(xml.hasError()) << language;
    return result;
}

/// As the files name them.
std::vector<std::string> languages() {
    const QString prefix = QStringLiteral("kestrel_");
    std::vector<std::string> result;
    for (const QFileInfo& file :
         QDir(QStringLiteral(TRANSLATIONS_FOLDER)).entryInfoList({prefix + QStringLiteral("*.ts")}))
        result.push_back(file.completeBaseName().mid(prefix.size()).toStdString());
    return result;
}

class TranslationsTest : public testing::TestWithParam<std::string> {};

TEST_P(TranslationsTest, EveryLocalizableTextIsTranslatedAndNoOther) {
    std::set<std::string> translated;
    for (const auto& [source, translation] : translations(GetParam())) {
        EXPECT_FALSE(translation.empty()) << source;
        translated.insert(source);
    }
    EXPECT_EQ(translated, localizableTexts());
}

INSTANTIATE_TEST_SUITE_P(Languages, TranslationsTest, testing::ValuesIn(languages()),
                         [](const auto& language) { return language.param; });

} // namespace
} // namespace kestrel::tests
