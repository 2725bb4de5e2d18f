#include "model/item_list_json.h"
#include "model/json_numbers.h"

#include <algorithm>
#include <cstddef>
#include <simdjson.h>
#include <utility>

namespace kestrel {

namespace {

namespace dom = simdjson::dom;

/// The values that stand under an item's keys, of a repeated key the last one.
struct Record {
    std::optional<dom::element> id;
    std::optional<dom::element> title;
    std::optional<dom::element> type;
    std::optional<dom::element> path;
    std::optional<dom::element> command;
};

Record readRecord(dom::object object) {
    Record record;
    for (const auto& [key, value] : object) {
        if (key == "id")
            record.id = value;
        else if (key == "title")
            record.title = value;
        else if (key == "type")
            record.type = value;
        else if (key == "path")
            record.path = value;
        else if (key == "command")
            record.command = value;
    }
    return record;
}

/// Nothing when the key is missing or its value is not a string.
std::optional<std::string_view> requiredText(const std::optional<dom::element>& value) {
    std::string_view text;
    if (!value || value->get(text) != simdjson::SUCCESS)
        return std::nullopt;
    return text;
}

/// Sets `text` from a string, leaves it absent for a missing key and for null. False for a value
/// of any other kind.
bool readOptionalText(const std::optional<dom::element>& value, std::optional<std::string>& text) {
    if (!value || value->is_null())
        return true;
    const auto string = requiredText(value);
    if (string)
        text.emplace(*string);
    return string.has_value();
}

std::optional<LauncherItem> readItem(dom::element element) {
    dom::object object;
    if (element.get(object) != simdjson::SUCCESS)
        return std::nullopt;
    const Record record = readRecord(object);
    const auto idText = requiredText(record.id);
    const auto title = requiredText(record.title);
    const auto typeText = requiredText(record.type);
    if (!idText || !title || !typeText)
        return std::nullopt;
    const auto id = Uuid::parse(*idText);
    const auto type = itemTypeFromRawValue(*typeText);
    if (!id || !type)
        return std::nullopt;
    std::optional<LauncherItem> item{
        LauncherItem{.id = *id, .title = std::string(*title), .type = *type}};
    if (!readOptionalText(record.path, item->path) ||
        !readOptionalText(record.command, item->command))
        return std::nullopt;
    return item;
}

/// Nothing when the top level is not an array or an element is not an item.
std::optional<std::vector<LauncherItem>> readItems(dom::element root, std::size_t jsonSize) {
    // No item is shorter than this, so a long list of something else reserves no memory to match.
    constexpr std::size_t shortestItem =
        std::string_view(R"({"id":"","title":"","type":"App"})").size() + Uuid::textLength;
    dom::array array;
    if (root.get(array) != simdjson::SUCCESS)
        return std::nullopt;
    std::vector<LauncherItem> items;
    items.reserve(std::min(array.size(), jsonSize / shortestItem));
    for (const dom::element element : array) {
        auto item = readItem(element);
        if (!item)
            return std::nullopt;
        items.push_back(*std::move(item));
    }
    return items;
}

/// Removes one byte-order mark from the front. False when a second one follows, which is no JSON.
bool skipByteOrderMark(std::string_view& json) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (json.starts_with(mark))
        json.remove_prefix(mark.size());
    return !json.starts_with(mark);
}

/// Parses `json` into `document`, which owns the root. Nothing for malformed JSON, invalid UTF-8
/// (the escape of a lone surrogate included) and too deep a nesting.
std::optional<dom::element> parse(dom::document& document, std::string_view json) {
    if (!skipByteOrderMark(json))
        return std::nullopt;
    // Not kept longer than the parse, so that the items can have the memory of its large buffers.
    dom::parser parser;
    dom::element root;
    auto error = parser.parse_into_document(document, json.data(), json.size()).get(root);
    if (error == simdjson::NUMBER_ERROR) {
        const std::string zeroed = withNumbersZeroed(json);
        error = parser.parse_into_document(document, zeroed).get(root);
    }
    if (error != simdjson::SUCCESS)
        return std::nullopt;
    return root;
}

} // namespace

std::optional<std::vector<LauncherItem>> decodeItems(std::string_view json) {
    dom::document document;
    const auto root = parse(document, json);
    return root ? readItems(*root, json.size()) : std::nullopt;
}

std::optional<LauncherItem> decodeItem(std::string_view json) {
    dom::document document;
    const auto root = parse(document, json);
    return root ? readItem(*root) : std::nullopt;
}

} // namespace kestrel
