#include "views/accessible_texts.h"
#include "views/settings/add_edit_item_style.h"
#include "views/settings/application_chooser_style.h"
#include "views/settings/item_row_style.h"
#include "views/settings/settings_style.h"

#include <QFile>
#include <QXmlStreamReader>

#include <map>
#include <ostream>
#include <set>
#include <string>

#include <gtest/gtest.h>

namespace kestrel::tests {
namespace {

/// Every text of the program that is looked up in a translation.
std::set<std::string> localizableTexts() {
    namespace form = add_edit_item_style;
    namespace row = item_row_style;
    namespace placeholder = settings_style::empty_placeholder;
    namespace accessible = accessible_texts;
    namespace chooser = application_chooser_style;
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
                                    chooser::title,
                                    chooser::search,
                                    chooser::list,
                                    chooser::nothingFound,
                                    chooser::other,
                                    chooser::choose}) {
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

class TranslationsTest : public testing::TestWithParam<const char*> {};

TEST_P(TranslationsTest, EveryLocalizableTextIsTranslatedAndNoOther) {
    std::set<std::string> translated;
    for (const auto& [source, translation] : translations(GetParam())) {
        EXPECT_FALSE(translation.empty()) << source;
        translated.insert(source);
    }
    EXPECT_EQ(translated, localizableTexts());
}

INSTANTIATE_TEST_SUITE_P(Languages, TranslationsTest,
                         testing::Values("de", "es", "fr", "ja", "zh_CN"),
                         [](const auto& language) { return std::string(language.param); });

} // namespace
} // namespace kestrel::tests
