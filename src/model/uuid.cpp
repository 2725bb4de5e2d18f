#include "model/uuid.h"

#include <cstring>
#include <random>

namespace kestrel {

namespace {

/// The hyphens and the first digits of the bytes in the 8-4-4-4-12 form.
constexpr std::array<std::uint8_t, 4> hyphenPositions{8, 13, 18, 23};
constexpr std::array<std::uint8_t, 16> bytePositions{0,  2,  4,  6,  9,  11, 14, 16,
                                                     19, 21, 24, 26, 28, 30, 32, 34};

/// Marks, in `digitValues`, what is no hexadecimal digit; no sum of digits has this bit.
constexpr unsigned noDigit = 0x100;

/// The value of every hexadecimal digit. A table, since the digits of an id are too random for a
/// processor to predict branches on them.
constexpr std::array<std::uint16_t, 256> digitValues = [] {
    std::array<std::uint16_t, 256> table{};
    table.fill(noDigit);
    for (unsigned digit = 0; digit < 10; ++digit)
        table['0' + digit] = static_cast<std::uint16_t>(digit);
    for (unsigned digit = 0; digit < 6; ++digit) {
        table['A' + digit] = static_cast<std::uint16_t>(10 + digit);
        table['a' + digit] = static_cast<std::uint16_t>(10 + digit);
    }
    return table;
}();

/// The two digits of every byte.
constexpr std::array<std::array<char, 2>, 256> digitPairs = [] {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::array<std::array<char, 2>, 256> table{};
    for (std::size_t byte = 0; byte < table.size(); ++byte)
        table[byte] = {digits[byte >> 4U], digits[byte & 0x0FU]};
    return table;
}();

constexpr unsigned digitValue(char character) {
    return digitValues[static_cast<unsigned char>(character)];
}

} // namespace

Uuid Uuid::random() {
    static thread_local std::random_device source;
    Bytes bytes;
    for (std::size_t i = 0; i < bytes.size(); i += 4) {
        const std::uint32_t word = source();
        for (std::size_t k = 0; k < 4; ++k)
            bytes[i + k] = static_cast<std::uint8_t>(word >> (8 * k));
    }
    // RFC 4122, section 4.4: the version in the high half of octet 6, the variant in the two high
    // bits of octet 8.
    bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0FU) | 0x40U);
    bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3FU) | 0x80U);
    return Uuid(bytes);
}

std::optional<Uuid> Uuid::parse(std::string_view text) {
    if (text.size() != textLength)
        return std::nullopt;
    for (const std::size_t position : hyphenPositions)
        if (text[position] != '-')
            return std::nullopt;
    Bytes bytes;
    unsigned seen = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const unsigned high = digitValue(text[bytePositions[i]]);
        const unsigned low = digitValue(text[bytePositions[i] + 1U]);
        seen |= high | low;
        bytes[i] = static_cast<std::uint8_t>(high << 4U | low);
    }
    if ((seen & noDigit) != 0)
        return std::nullopt;
    return Uuid(bytes);
}

std::array<char, Uuid::textLength> Uuid::toCharacters() const {
    std::array<char, textLength> text{};
    for (const std::size_t position : hyphenPositions)
        text[position] = '-';
    for (std::size_t i = 0; i < bytes_.size(); ++i)
        std::memcpy(text.data() + bytePositions[i], digitPairs[bytes_[i]].data(), 2);
    return text;
}

std::string Uuid::toString() const {
    const auto text = toCharacters();
    return {text.begin(), text.end()};
}

} // namespace kestrel
