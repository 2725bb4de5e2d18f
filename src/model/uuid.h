#pragma once
// A 128-bit universally unique identifier (RFC 4122): the identity of a launcher item.

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace kestrel {

class Uuid {
  public:
    using Bytes = std::array<std::uint8_t, 16>;
    static constexpr std::size_t textLength = 36;

    /// The nil UUID, all bits zero.
    constexpr Uuid() = default;
    constexpr explicit Uuid(const Bytes& bytes) : bytes_(bytes) {}

    /// A fresh version 4 UUID from the system's random source.
    static Uuid random();

    /// Reads the 8-4-4-4-12 form, hexadecimal digits of either case, nothing before or after it.
    /// Any version and variant is accepted. Nothing for any other text.
    static std::optional<Uuid> parse(std::string_view text);

    /// The 36-character form with upper-case digits, without and with memory of its own.
    std::array<char, textLength> toCharacters() const;
    std::string toString() const;

    const Bytes& bytes() const { return bytes_; }

    friend constexpr bool operator==(const Uuid&, const Uuid&) = default;

  private:
    Bytes bytes_{};
};

} // namespace kestrel

template <>
struct std::hash<kestrel::Uuid> {
    std::size_t operator()(const kestrel::Uuid& id) const noexcept {
        return std::hash<std::string_view>{}(
            {reinterpret_cast<const char*>(id.bytes().data()), id.bytes().size()});
    }
};
