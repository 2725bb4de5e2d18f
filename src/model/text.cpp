#include "model/text.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <optional>
#include <utf8proc.h>

namespace kestrel::text {

namespace {

struct Free {
    void operator()(utf8proc_uint8_t* memory) const { std::free(memory); } // NOLINT: C allocation
};

bool isAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

const utf8proc_uint8_t* bytes(std::string_view text) {
    return reinterpret_cast<const utf8proc_uint8_t*>(text.data());
}

/// The canonical decomposition (NFD) and its length in bytes.
struct Decomposed {
    std::unique_ptr<utf8proc_uint8_t, Free> memory;
    std::size_t size = 0;

    std::string_view view() const { return {reinterpret_cast<const char*>(memory.get()), size}; }
};

enum class Case { kept, folded };

/// Nothing when `text` is not valid UTF-8.
std::optional<Decomposed> decomposed(std::string_view text, Case letters = Case::kept) {
    int options = UTF8PROC_STABLE | UTF8PROC_DECOMPOSE;
    if (letters == Case::folded)
        options |= UTF8PROC_CASEFOLD;
    utf8proc_uint8_t* result = nullptr;
    const utf8proc_ssize_t size =
        utf8proc_map(bytes(text), static_cast<utf8proc_ssize_t>(text.size()), &result,
                     static_cast<utf8proc_option_t>(options));
    if (size < 0)
        return std::nullopt;
    return Decomposed{.memory = std::unique_ptr<utf8proc_uint8_t, Free>(result),
                      .size = static_cast<std::size_t>(size)};
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
    return first && second && first->view() == second->view();
}

std::size_t hash(std::string_view text) {
    constexpr std::hash<std::string_view> hasher;
    if (isAscii(text))
        return hasher(text);
    const auto canonical = decomposed(text);
    return hasher(canonical ? canonical->view() : text);
}

bool hasPrefixIgnoringCase(std::string_view text, std::string_view prefix) {
    if (isAscii(text) && isAscii(prefix)) {
        const auto lower = [](char c) {
            return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        };
        return text.size() >= prefix.size() &&
               std::ranges::equal(text.substr(0, prefix.size()), prefix, {}, lower, lower);
    }
    const auto foldedText = decomposed(text, Case::folded);
    const auto foldedPrefix = decomposed(prefix, Case::folded);
    return foldedText && foldedPrefix && foldedText->view().starts_with(foldedPrefix->view());
}

std::string_view trimmedOfSpaces(std::string_view text) {
    while (const std::size_t length = spaceAtFront(text))
        text.remove_prefix(length);
    while (const std::size_t length = spaceAtEnd(text))
        text.remove_suffix(length);
    return text;
}

} // namespace kestrel::text
