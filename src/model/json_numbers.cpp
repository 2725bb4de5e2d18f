#include "model/json_numbers.h"

#include <algorithm>
#include <cstddef>

namespace kestrel {

namespace {

constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }

constexpr bool isInNumber(char c) {
    return isDigit(c) || c == '-' || c == '+' || c == '.' || c == 'e' || c == 'E';
}

/// Removes the digits at the front of `text`. False when there are none.
bool skipDigits(std::string_view& text) {
    const auto* const end = std::ranges::find_if_not(text, isDigit);
    const auto count = static_cast<std::size_t>(end - text.begin());
    text.remove_prefix(count);
    return count > 0;
}

/// The number of RFC 8259, section 6.
bool isNumber(std::string_view text) {
    if (text.starts_with('-'))
        text.remove_prefix(1);
    if (text.starts_with('0'))
        text.remove_prefix(1);
    else if (!skipDigits(text))
        return false;
    if (text.starts_with('.')) {
        text.remove_prefix(1);
        if (!skipDigits(text))
            return false;
    }
    if (text.starts_with('e') || text.starts_with('E')) {
        text.remove_prefix(1);
        if (text.starts_with('+') || text.starts_with('-'))
            text.remove_prefix(1);
        if (!skipDigits(text))
            return false;
    }
    return text.empty();
}

/// The length of the string literal at the front, quotes included; all of `json` when it does not
/// end.
std::size_t stringLength(std::string_view json) {
    std::size_t i = 1;
    while (i < json.size() && json[i] != '"')
        i += json[i] == '\\' ? 2U : 1U;
    return std::min(i + 1, json.size());
}

} // namespace

std::string withNumbersZeroed(std::string_view json) {
    std::string result;
    result.reserve(json.size());
    while (!json.empty()) {
        std::size_t length = 1;
        if (json.front() == '"') {
            length = stringLength(json);
        } else if (json.front() == '-' || isDigit(json.front())) {
            const auto* const end = std::ranges::find_if_not(json, isInNumber);
            length = static_cast<std::size_t>(end - json.begin());
        }
        const std::string_view token = json.substr(0, length);
        result.append(isNumber(token) ? std::string_view("0") : token);
        json.remove_prefix(length);
    }
    return result;
}

} // namespace kestrel
