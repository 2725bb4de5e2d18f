#pragma once
// Comparison of the user's texts (UTF-8) by Unicode canonical equivalence: a precomposed and a
// decomposed accented letter are the same text.

#include <cstddef>
#include <string_view>

namespace kestrel::text {

/// True when the two texts are canonically equivalent. Texts that are not valid UTF-8 are equal
/// only when their bytes are.
bool equal(std::string_view a, std::string_view b);

/// A hash that agrees with `equal`.
std::size_t hash(std::string_view text);

/// True when `text` begins with `prefix`, whatever the case of their letters (Unicode case folding)
/// and however they are composed. The empty prefix begins every text.
bool hasPrefixIgnoringCase(std::string_view text, std::string_view prefix);

/// `text` without the white space at its two ends, where white space is the tab and every
/// character of Unicode's general category Zs. Line breaks are not white space here.
std::string_view trimmedOfSpaces(std::string_view text);

} // namespace kestrel::text
