#include "tests/model_based/generators/generators.h"

#include <array>
#include <string_view>

namespace kestrel::tests {

namespace {

template <class Table>
const auto& pick(const Table& table, std::uint32_t number) {
    return table[number % table.size()];
}

/// Another number out of one, for the next choice.
std::uint32_t next(std::uint32_t number) { return number * 1664525U + 1013904223U; }

/// A list in a form that the program itself never writes: blanks, other order of keys, further
/// keys, small letters in ids, null, slashes as they are.
std::string foreignBytes(const ReferenceItems& items) {
    std::string result = " [";
    for (const ReferenceItem& item : items) {
        const std::string own = referenceBytes({item});
        std::string id = item.id;
        for (char& c : id)
            c = c >= 'A' && c <= 'F' ? static_cast<char>(c - 'A' + 'a') : c;
        const std::size_t title = own.find("\"title\"");
        std::string rest = own.substr(title, own.size() - title - 2);
        for (std::size_t at = rest.find("\\/"); at != std::string::npos; at = rest.find("\\/", at))
            rest.erase(at, 1);
        result += result.size() > 2 ? ",\n" : "";
        result += "{ " + rest + ", \"icon\": [1, {}], \"id\" : \"" + id + '"';
        result += (item.path ? "" : ",\"path\":null");
        result += (item.command ? "" : ",\"command\":null");
        result += " }";
    }
    return result + " ]\n";
}

} // namespace

std::string generateId(std::uint32_t number) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string id = "A1B2C3D4-0000-4000-8000-00000000000";
    return id + digits[number % 16];
}

std::string generateTitle(std::uint32_t number) {
    static const std::array<std::string, 18> titles{
        "Alpha",       "alpine",    "Beta",         "aa",         "a/b", "q\"uote",
        "back\\slash", "Caf\u00e9", "Cafe\u0301",   "two\nlines", "",    "\u00e4rger",
        "\u00c4rmel",  "tab\there", "\u65e5\u672c", "  Deploy  ", "   ", "\u00a0wide\u3000"};
    return pick(titles, number);
}

std::string generateLetters(std::uint32_t number) {
    static const std::array<std::string, 10> letters{"a", "A", "b",      "t",      "q",
                                                     "l", " ", "\u00e4", "\u00c4", "al"};
    return pick(letters, number);
}

std::optional<std::string> generateText(std::uint32_t number) {
    static const std::array<std::optional<std::string>, 7> texts{
        std::nullopt, "", "/opt/a", "/opt/with space/b.app", "~/x.command ", " ", "ls | \"less\""};
    return pick(texts, number);
}

std::string generateType(std::uint32_t number) {
    static const std::array<std::string, 3> types{"App", "Command File", "Inline Command"};
    return pick(types, number);
}

ReferenceItem generateItem(std::uint32_t number) {
    ReferenceItem item{.id = generateId(number >> 3U),
                       .title = generateTitle(number >> 7U),
                       .type = generateType(number >> 12U),
                       .path = {},
                       .command = {}};
    item.path = generateText(number >> 14U);
    item.command = generateText(number >> 17U);
    return item;
}

StoredValue generateList(std::uint32_t length, std::uint32_t number) {
    ReferenceItems items;
    for (std::uint32_t i = 0; i < length % 7; ++i) {
        number = next(number);
        items.push_back(generateItem(number));
    }
    return {number % 2 == 0 ? referenceBytes(items) : foreignBytes(items), items};
}

StoredValue generateInvalidList(std::uint32_t number) {
    static const std::array<std::string, 12> values{
        "",
        "null",
        "{}",
        "[null]",
        "[{}]",
        "[] []",
        "[{\"id\":\"A1B2C3D4-0000-4000-8000-000000000001\",\"title\":\"x\",\"type\":\"app\"}]",
        "[{\"id\":\"A1B2C3D4-0000-4000-8000-00000000000\",\"title\":\"x\",\"type\":\"App\"}]",
        "[{\"id\":\"A1B2C3D4-0000-4000-8000-000000000001\",\"title\":null,\"type\":\"App\"}]",
        "[{\"id\":\"A1B2C3D4-0000-4000-8000-000000000001\",\"title\":\"x\",\"type\":\"App\","
        "\"path\":1}]",
        "[{\"id\":\"A1B2C3D4-0000-4000-8000-000000000001\",\"title\":\"\xFF\",\"type\":\"App\"}]",
        "[{\"id\":\"A1B2C3D4-0000-4000-8000-000000000001\",\"title\":\"x\",\"type\":\"App\"}"};
    return {pick(values, number), std::nullopt};
}

} // namespace kestrel::tests
