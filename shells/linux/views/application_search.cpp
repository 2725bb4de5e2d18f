#include "shells/linux/views/application_search.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace kestrel::linux_shell {

namespace {

constexpr std::size_t ranks = 4;

/// Letters without their accents, in one case, words with one space between them. Only the way over
/// capitals makes "ss" of "ß".
QString folded(const QString& text) {
    const QString plain = text.normalized(QString::NormalizationForm_KD).toUpper().toCaseFolded();
    QString result = plain.simplified();
    result.removeIf([](QChar c) { return c.isMark(); });
    return result;
}

QString foldedUtf8(std::string_view text) {
    return folded(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
}

bool hasWordThatBeginsWith(const QString& text, const QString& typed) {
    for (qsizetype at = text.indexOf(typed); at >= 0; at = text.indexOf(typed, at + 1))
        if (at == 0 || !text.at(at - 1).isLetterOrNumber())
            return true;
    return false;
}

} // namespace

ApplicationSearch::ApplicationSearch(const std::vector<InstalledApplication>& applications) {
    known_.reserve(applications.size());
    for (const InstalledApplication& application : applications) {
        QString name = foldedUtf8(application.name);
        const QString all = name + u' ' + foldedUtf8(application.otherNames);
        known_.push_back({std::move(name), all});
    }
}

std::vector<int> ApplicationSearch::find(const QString& typed) const {
    const QString wanted = folded(typed);
    const QStringList words = wanted.split(u' ', Qt::SkipEmptyParts);
    const auto rankOf = [&](const Known& known) -> std::optional<std::size_t> {
        if (known.name.startsWith(wanted))
            return 0;
        if (hasWordThatBeginsWith(known.name, wanted))
            return 1;
        if (known.name.contains(wanted))
            return 2;
        const auto stands = [&known](const QString& word) { return known.all.contains(word); };
        return std::ranges::all_of(words, stands) ? std::optional<std::size_t>(3) : std::nullopt;
    };
    std::array<std::vector<int>, ranks> found;
    for (std::size_t i = 0; i < known_.size(); ++i)
        if (const auto rank = rankOf(known_[i]))
            found.at(*rank).push_back(static_cast<int>(i));
    std::vector<int> result;
    for (const std::vector<int>& positions : found)
        result.insert(result.end(), positions.begin(), positions.end());
    return result;
}

} // namespace kestrel::linux_shell
