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
    for (const auto& [key, value] : object)
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

/// Appends the elements of an array. False when the root is none or an element is not an item.
bool appendItems(dom::element root, std::vector<LauncherItem>& items) {
    dom::array array;
    if (root.get(array) != simdjson::SUCCESS)
        return false;
    for (const dom::element element : array) {
        auto item = readItem(element);
        if (!item)
            return false;
        items.push_back(*std::move(item));
    }
    return true;
}

/// Removes one byte-order mark from the front. False when a second one follows, which is no JSON.
bool skipByteOrderMark(std::string_view& json) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (json.starts_with(mark))
        json.remove_prefix(mark.size());
    return !json.starts_with(mark);
}

/// Parses `json` into `document`, which owns the root. Nothing for malformed JSON, invalid UTF-8
/// (the escape of a lone surrogate included), too deep a nesting and too long a text.
std::optional<dom::element> parse(dom::document& document, std::string_view json) {
    if (json.size() > maximumListSize || !skipByteOrderMark(json))
        return std::nullopt;
    // Not kept longer than the parse, so that the items can have the memory of its large buffers.
    dom::parser parser;
    dom::element root;
    auto error = parser.parse_into_document(document, json.data(), json.size()).get(root);
    // Which error a number too large gives differs between the library's versions.
    if (error != simdjson::SUCCESS) {
        const std::string zeroed = withNumbersZeroed(json);
        error = parser.parse_into_document(document, zeroed).get(root);
    }
    if (error != simdjson::SUCCESS)
        return std::nullopt;
    return root;
}

/// The length of the next piece of `json`, up to and with the last brace that a comma and another
/// brace follow within the usual size; all of `json` when there is none.
std::size_t pieceLength(std::string_view json) {
    constexpr std::size_t usualSize = std::size_t{64} * 1024;
    constexpr std::string_view boundary = "},{";
    if (json.size() <= usualSize)
        return json.size();
    std::size_t found = json.rfind(boundary, usualSize);
    if (found == std::string_view::npos)
        found = json.find(boundary, usualSize);
    return found == std::string_view::npos ? json.size() : found + 1;
}

/// Reads a list a piece at a time, each as a list of its own. The parser's buffers, several times
/// as large as its text, are so small that they are made once and stay in the processor's cache.
///
/// A text up to a boundary makes a list with one bracket added only if the boundary stands between
/// two elements, and not in a string or deeper down: so what is read in pieces is what the whole
/// would give. Nothing when a piece does not read, which says nothing about the whole.
std::optional<std::vector<LauncherItem>> decodeInPieces(std::string_view json) {
    if (json.empty() || json.size() > maximumListSize)
        return std::nullopt;
    dom::parser parser;
    std::vector<LauncherItem> items;
    std::string piece;
    for (std::size_t start = 0; start < json.size();) {
        const std::size_t length = pieceLength(json.substr(start));
        const bool isLast = start + length == json.size();
        piece.clear();
        if (start > 0)
            piece += '[';
        piece += json.substr(start, length);
        if (!isLast)
            piece += ']';
        piece.reserve(piece.size() + simdjson::SIMDJSON_PADDING); // or the parser copies it
        dom::element root;
        if (parser.parse(piece).get(root) != simdjson::SUCCESS || !appendItems(root, items))
            return std::nullopt;
        // About as many items will come in as many bytes again.
        if (start == 0 && !isLast)
            items.reserve(items.size() * (json.size() / length + 1));
        start += length + 1; // and the comma
    }
    return items;
}

} // namespace

std::optional<std::vector<LauncherItem>> decodeItems(std::string_view json) {
    if (auto items = decodeInPieces(json))
        return items;
    dom::document document;
    std::vector<LauncherItem> items;
    const auto root = parse(document, json);
    if (!root || !appendItems(*root, items))
        return std::nullopt;
    return items;
}

std::optional<LauncherItem> decodeItem(std::string_view json) {
    dom::document document;
    const auto root = parse(document, json);
    return root ? readItem(*root) : std::nullopt;
}

} // namespace kestrel
