#include "model/uuid.h"

#include <random>

namespace kestrel {

namespace {

/// The positions of the hyphens in the 8-4-4-4-12 form.
constexpr bool isHyphen(std::size_t position) {
    return position == 8 || position == 13 || position == 18 || position == 23;
}

/// The value of a hexadecimal digit; -1 for any other character.
constexpr int digitValue(char character) {
    if (character >= '0' && character <= '9')
        return character - '0';
    if (character >= 'A' && character <= 'F')
        return character - 'A' + 10;
    if (character >= 'a' && character <= 'f')
        return character - 'a' + 10;
    return -1;
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
    Bytes bytes;
    std::size_t filled = 0;
    for (std::size_t i = 0; i < text.size();) {
        if (isHyphen(i)) {
            if (text[i] != '-')
                return std::nullopt;
            ++i;
            continue;
        }
        const int high = digitValue(text[i]);
        const int low = digitValue(text[i + 1]);
        if (high < 0 || low < 0)
            return std::nullopt;
        bytes[filled++] = static_cast<std::uint8_t>(high * 16 + low);
        i += 2;
    }
    return Uuid(bytes);
}

std::string Uuid::toString() const {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    text.reserve(textLength);
    for (const std::uint8_t byte : bytes_) {
        if (isHyphen(text.size()))
            text += '-';
        text += digits[byte >> 4U];
        text += digits[byte & 0x0FU];
    }
    return text;
}

} // namespace kestrel
