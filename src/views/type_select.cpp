#include "views/type_select.h"

#include "model/text.h"

namespace kestrel {

namespace {

/// True when `prefix` is `letter`, any number of times.
bool repeats(std::string_view prefix, std::string_view letter) {
    if (letter.empty() || prefix.size() % letter.size() != 0)
        return false;
    for (std::size_t i = 0; i < prefix.size(); i += letter.size())
        if (prefix.substr(i, letter.size()) != letter)
            return false;
    return true;
}

std::optional<std::size_t> firstMatch(const ItemList& items, std::string_view prefix,
                                      std::size_t start) {
    for (std::size_t i = 0; i < items.size(); ++i) {
        const std::size_t position = (start + i) % items.size();
        if (text::hasPrefixIgnoringCase(items[position].title, prefix))
            return position;
    }
    return std::nullopt;
}

} // namespace

bool TypeSelect::isUnderWay() const {
    const Date now = clock_.now();
    return !prefix_.empty() && now >= lastTyped_ && now - lastTyped_ <= pause;
}

std::optional<std::size_t> TypeSelect::typed(std::string_view text, const ItemList& items,
                                             std::optional<std::size_t> current) {
    if (!isUnderWay())
        prefix_.clear();
    lastTyped_ = clock_.now();
    if (text.empty() || (prefix_.empty() && text == " "))
        return std::nullopt;
    const bool cycles = repeats(prefix_, text);
    prefix_ += text;
    const std::size_t here = current.value_or(0);
    if (!cycles)
        return firstMatch(items, prefix_, here);
    // The letters as they stand first ("aa" may begin a title), then on to the next item.
    if (prefix_ != text && current) {
        const LauncherItem& item = items[*current];
        if (text::hasPrefixIgnoringCase(item.title, prefix_))
            return current;
    }
    return firstMatch(items, text, current ? here + 1 : 0);
}

} // namespace kestrel
