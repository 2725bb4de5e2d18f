#include "model/item_list_json.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <simdjson.h>
#include <utility>

namespace kestrel {

namespace {

/// What follows the backslash for the characters that are written as an escape of two characters,
/// 'u' for those written as \u00xx, 0 for all others.
constexpr std::array<char, 256> escapes = [] {
    std::array<char, 256> table{};
    std::fill_n(table.begin(), 0x20, 'u');
    table['\b'] = 'b';
    table['\t'] = 't';
    table['\n'] = 'n';
    table['\f'] = 'f';
    table['\r'] = 'r';
    table['"'] = '"';
    table['\\'] = '\\';
    table['/'] = '/';
    return table;
}();

constexpr char escapeOf(char c) { return escapes[static_cast<unsigned char>(c)]; }

void appendEscaped(std::string& json, char c) {
    constexpr std::string_view digits = "0123456789abcdef";
    json += '\\';
    json += escapeOf(c);
    if (escapeOf(c) != 'u')
        return;
    json += "00";
    json += digits[static_cast<unsigned char>(c) >> 4U];
    json += digits[static_cast<unsigned char>(c) & 0x0FU];
}

void appendString(std::string& json, std::string_view text) {
    json += '"';
    while (!text.empty()) {
        const auto* const end = std::ranges::find_if(text, [](char c) { return escapeOf(c) != 0; });
        const auto length = static_cast<std::size_t>(end - text.begin());
        json.append(text, 0, length);
        text.remove_prefix(length);
        if (text.empty())
            break;
        appendEscaped(json, text.front());
        text.remove_prefix(1);
    }
    json += '"';
}

void appendItem(std::string& json, const LauncherItem& item) {
    const auto id = item.id.toCharacters();
    json += R"({"id":")";
    json.append(id.data(), id.size());
    json += R"(","title":)";
    appendString(json, item.title);
    json += R"(,"type":")";
    json += rawValue(item.type);
    json += '"';
    if (item.path) {
        json += R"(,"path":)";
        appendString(json, *item.path);
    }
    if (item.command) {
        json += R"(,"command":)";
        appendString(json, *item.command);
    }
    json += '}';
}

/// About the bytes that an item takes: its keys and id, its texts and some escapes.
std::size_t expectedSize(const LauncherItem& item) {
    constexpr std::size_t keys = 128;
    const std::size_t texts = item.title.size() + (item.path ? item.path->size() : 0) +
                              (item.command ? item.command->size() : 0);
    return keys + texts + texts / 4;
}

/// Nothing when `json` is too long or not UTF-8. Every text stands between ASCII quotes and escapes
/// replace ASCII only, so the whole is valid UTF-8 exactly when every text is.
std::optional<std::string> validated(std::string json) {
    if (json.size() > maximumListSize || !simdjson::validate_utf8(json))
        return std::nullopt;
    return json;
}

} // namespace

std::optional<std::string> encodeItems(std::span<const LauncherItem> items) {
    std::size_t size = 2;
    for (const LauncherItem& item : items)
        size += expectedSize(item);
    std::string json;
    json.reserve(std::min(size, maximumListSize));
    json += '[';
    for (const LauncherItem& item : items) {
        if (json.size() > maximumListSize)
            return std::nullopt;
        if (json.size() > 1)
            json += ',';
        appendItem(json, item);
    }
    json += ']';
    return validated(std::move(json));
}

std::optional<std::string> encodeItem(const LauncherItem& item) {
    std::string json;
    json.reserve(std::min(expectedSize(item), maximumListSize));
    appendItem(json, item);
    return validated(std::move(json));
}

} // namespace kestrel
