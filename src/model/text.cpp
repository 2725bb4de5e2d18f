#include "model/text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <tuple>
#include <utf8proc.h>
#include <vector>

namespace kestrel::text {

namespace {

bool isAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

const utf8proc_uint8_t* bytes(std::string_view text) {
    return reinterpret_cast<const utf8proc_uint8_t*>(text.data());
}

using Characters = std::vector<utf8proc_int32_t>;

utf8proc_propval_t combiningClass(utf8proc_int32_t character) {
    return utf8proc_get_property(character)->combining_class;
}

enum class Case { kept, folded };

/// Appends the full canonical decomposition of one character, or of what its case folds to.
void appendDecomposed(Characters& characters, utf8proc_int32_t character, Case letters) {
    std::array<utf8proc_int32_t, 16> parts{}; // three folded letters of four parts each at most
    int boundary = 0;
    const int options = UTF8PROC_DECOMPOSE | (letters == Case::folded ? UTF8PROC_CASEFOLD : 0);
    const utf8proc_ssize_t count = utf8proc_decompose_char(
        character, parts.data(), parts.size(), static_cast<utf8proc_option_t>(options), &boundary);
    characters.insert(characters.end(), parts.begin(), parts.begin() + count);
}

/// A combining mark of a run, with its class and its place.
struct Mark {
    utf8proc_propval_t order;
    std::size_t position;
    utf8proc_int32_t character;
};

/// By class; those of one class keep their order.
bool isBefore(const Mark& one, const Mark& other) {
    return std::tie(one.order, one.position) < std::tie(other.order, other.position);
}

// std::stable_sort would do, but the buffer that GCC's library takes for it is deprecated, which
// newer compilers report here.
void sortRun(std::span<utf8proc_int32_t> run) {
    std::vector<Mark> marks;
    marks.reserve(run.size());
    for (const utf8proc_int32_t character : run)
        marks.push_back({combiningClass(character), marks.size(), character});
    std::ranges::sort(marks, isBefore);
    std::ranges::transform(marks, run.begin(), &Mark::character);
}

/// The canonical ordering: sorts each run of combining marks by class. The library's own ordering
/// takes time with the square of a run's length, minutes for a stored text made of marks alone.
void sortMarks(Characters& characters) {
    const auto isMark = [](utf8proc_int32_t c) { return combiningClass(c) != 0; };
    for (auto run = characters.begin(); run != characters.end();) {
        run = std::find_if(run, characters.end(), isMark);
        const auto end = std::find_if_not(run, characters.end(), isMark);
        if (end - run > 1)
            sortRun({run, end});
        run = end;
    }
}

std::string utf8(const Characters& characters) {
    std::string result;
    for (const utf8proc_int32_t character : characters) {
        std::array<utf8proc_uint8_t, 4> units{};
        const utf8proc_ssize_t count = utf8proc_encode_char(character, units.data());
        result.append(units.begin(), units.begin() + count);
    }
    return result;
}

/// The canonical decomposition (NFD). Nothing when `text` is not valid UTF-8.
std::optional<std::string> decomposed(std::string_view text, Case letters = Case::kept) {
    Characters characters;
    characters.reserve(text.size());
    while (!text.empty()) {
        utf8proc_int32_t character = 0;
        const utf8proc_ssize_t length =
            utf8proc_iterate(bytes(text), static_cast<utf8proc_ssize_t>(text.size()), &character);
        if (length <= 0)
            return std::nullopt;
        appendDecomposed(characters, character, letters);
        text.remove_prefix(static_cast<std::size_t>(length));
    }
    sortMarks(characters);
    return utf8(characters);
}

bool isSpace(utf8proc_int32_t character) {
    return character == '\t' || utf8proc_category(character) == UTF8PROC_CATEGORY_ZS;
}

/// The length in bytes of the white-space character at the front; 0 when there is none.
std::size_t spaceAtFront(std::string_view text) {
    utf8proc_int32_t character = 0;
    const utf8proc_ssize_t length =
        utf8proc_iterate(bytes(text), static_cast<utf8proc_ssize_t>(text.size()), &character);
    return length > 0 && isSpace(character) ? static_cast<std::size_t>(length) : 0;
}

/// The length in bytes of the white-space character at the end; 0 when there is none.
std::size_t spaceAtEnd(std::string_view text) {
    if (text.empty())
        return 0;
    std::size_t start = text.size() - 1;
    while (start > 0 && (static_cast<unsigned char>(text[start]) & 0xC0U) == 0x80U)
        --start;
    const std::string_view last = text.substr(start);
    return spaceAtFront(last) == last.size() ? last.size() : 0;
}

} // namespace

bool equal(std::string_view a, std::string_view b) {
    if (a == b)
        return true;
    if (isAscii(a) && isAscii(b))
        return false;
    const auto first = decomposed(a);
    const auto second = decomposed(b);
    return first && second && *first == *second;
}

std::size_t hash(std::string_view text) {
    constexpr std::hash<std::string_view> hasher;
    if (isAscii(text))
        return hasher(text);
    const auto canonical = decomposed(text);
    return hasher(canonical ? *canonical : text);
}

bool hasPrefixIgnoringCase(std::string_view text, std::string_view prefix) {
    if (prefix.empty())
        return true;
    if (isAscii(text) && isAscii(prefix)) {
        const auto lower = [](char c) {
            return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        };
        return text.size() >= prefix.size() &&
               std::ranges::equal(text.substr(0, prefix.size()), prefix, {}, lower, lower);
    }
    const auto foldedText = decomposed(text, Case::folded);
    const auto foldedPrefix = decomposed(prefix, Case::folded);
    return foldedText && foldedPrefix && foldedText->starts_with(*foldedPrefix);
}

std::string_view trimmedOfSpaces(std::string_view text) {
    while (const std::size_t length = spaceAtFront(text))
        text.remove_prefix(length);
    while (const std::size_t length = spaceAtEnd(text))
        text.remove_suffix(length);
    return text;
}

} // namespace kestrel::text
