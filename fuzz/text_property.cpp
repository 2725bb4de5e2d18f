#include "fuzz/text_property.h"

#include "model/item_list_json.h"
#include "model/text.h"
#include "model/uuid.h"

#include <algorithm>

namespace kestrel {

namespace {

bool isUtf8(std::string_view text) {
    return encodeItem(LauncherItem{.title = std::string(text)}).has_value();
}

bool isPartOf(std::string_view part, std::string_view whole) {
    return part.data() >= whole.data() && part.data() + part.size() <= whole.data() + whole.size();
}

std::optional<std::string> brokenUuidProperty(std::string_view text) {
    const auto id = Uuid::parse(text);
    if (!id)
        return std::nullopt;
    std::string capitals(text);
    std::ranges::transform(capitals, capitals.begin(), [](char c) {
        return c >= 'a' && c <= 'f' ? static_cast<char>(c - 'a' + 'A') : c;
    });
    if (id->toString() != capitals)
        return "an id is written as it was read, in capitals";
    return std::nullopt;
}

std::optional<std::string> brokenTrimming(std::string_view text) {
    const std::string_view trimmed = text::trimmedOfSpaces(text);
    if (!trimmed.empty() && !isPartOf(trimmed, text))
        return "a trimmed text is a part of the text";
    if (text::trimmedOfSpaces(trimmed) != trimmed)
        return "trimming twice is trimming once";
    if (trimmed.starts_with(' ') || trimmed.ends_with('\t'))
        return "a trimmed text has no space at its ends";
    return std::nullopt;
}

} // namespace

std::optional<std::string> brokenTextProperty(std::string_view bytes) {
    const std::size_t middle = std::min(bytes.find('\n'), bytes.size());
    const std::string_view a = bytes.substr(0, middle);
    const std::string_view b = bytes.substr(std::min(middle + 1, bytes.size()));
    const bool same = text::equal(a, b);
    if (!text::equal(a, a) || same != text::equal(b, a))
        return "equality is of a text with itself and works both ways";
    if (same && text::hash(a) != text::hash(b))
        return "equal texts have equal hashes";
    if (!text::hasPrefixIgnoringCase(a, "") || (isUtf8(a) && !text::hasPrefixIgnoringCase(a, a)))
        return "a text begins with nothing and with itself";
    if (same && isUtf8(a) && isUtf8(b) && !text::hasPrefixIgnoringCase(a, b))
        return "a text begins with an equal one";
    if (auto broken = brokenTrimming(a))
        return broken;
    return brokenUuidProperty(a);
}

} // namespace kestrel
