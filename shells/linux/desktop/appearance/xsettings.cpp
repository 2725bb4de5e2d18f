#include "shells/linux/desktop/appearance/xsettings.h"

namespace kestrel::linux_shell {
namespace {

enum class ByteOrder : std::uint8_t { leastFirst = 0, mostFirst = 1 };
enum class SettingType : std::uint8_t { integer = 0, string = 1, color = 2 };

/// Takes values from the front of bytes; once there are too few, everything fails.
class ByteReader {
  public:
    explicit ByteReader(std::span<const std::uint8_t> bytes) : rest_(bytes) {}

    void setOrder(ByteOrder order) { order_ = order; }
    bool hasFailed() const { return failed_; }

    std::span<const std::uint8_t> bytes(std::size_t count) {
        if (count > rest_.size()) {
            failed_ = true;
            rest_ = {};
            return {};
        }
        const auto taken = rest_.first(count);
        rest_ = rest_.subspan(count);
        return taken;
    }

    /// An unsigned number of `size` bytes, at most four.
    std::uint32_t number(std::size_t size) {
        const auto taken = bytes(size);
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < taken.size(); ++i) {
            const std::size_t place = order_ == ByteOrder::leastFirst ? i : taken.size() - 1 - i;
            value |= static_cast<std::uint32_t>(taken[i]) << (8 * place);
        }
        return value;
    }

    /// A text and the bytes that fill it up to a multiple of four.
    std::string_view text(std::size_t length) {
        const auto taken = bytes(length);
        bytes((4 - length % 4) % 4);
        return {reinterpret_cast<const char*>(taken.data()), taken.size()};
    }

  private:
    std::span<const std::uint8_t> rest_;
    ByteOrder order_ = ByteOrder::leastFirst;
    bool failed_ = false;
};

struct XSetting {
    std::string_view name;
    std::optional<std::string_view> text; ///< none of a number or a colour
};

constexpr std::size_t integerSize = 4;
constexpr std::size_t colorSize = 8;

/// None where the bytes end too early or the type is none that the protocol has.
std::optional<XSetting> nextSetting(ByteReader& reader) {
    const auto type = reader.number(1);
    reader.bytes(1);
    XSetting setting;
    setting.name = reader.text(reader.number(2));
    reader.bytes(4); // when it changed last
    switch (static_cast<SettingType>(type)) {
    case SettingType::integer:
        reader.bytes(integerSize);
        break;
    case SettingType::string:
        setting.text = reader.text(reader.number(4));
        break;
    case SettingType::color:
        reader.bytes(colorSize);
        break;
    default:
        return std::nullopt;
    }
    return reader.hasFailed() ? std::nullopt : std::optional(setting);
}

} // namespace

std::optional<std::string> stringSetting(std::span<const std::uint8_t> property,
                                         std::string_view name) {
    ByteReader reader(property);
    const auto order = reader.number(1);
    if (order > static_cast<std::uint32_t>(ByteOrder::mostFirst))
        return std::nullopt;
    reader.setOrder(static_cast<ByteOrder>(order));
    reader.bytes(3);
    reader.bytes(4); // when any of them changed last
    // A false count ends with the bytes.
    for (auto count = reader.number(4); count > 0; --count) {
        const auto setting = nextSetting(reader);
        if (!setting)
            return std::nullopt;
        if (setting->name == name)
            return setting->text ? std::optional(std::string(*setting->text)) : std::nullopt;
    }
    return std::nullopt;
}

} // namespace kestrel::linux_shell
