#include "shells/linux/desktop/appearance/xsettings.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace kestrel::linux_shell {
namespace {

using Bytes = std::vector<std::uint8_t>;

/// Writes the property as a settings daemon does.
class Property {
  public:
    explicit Property(bool mostFirst) : mostFirst_(mostFirst) {}

    Property& number(std::uint32_t value, int size) {
        for (int i = 0; i < size; ++i) {
            const int place = mostFirst_ ? size - 1 - i : i;
            bytes_.push_back(static_cast<std::uint8_t>(value >> (8 * place)));
        }
        return *this;
    }

    Property& text(const std::string& text) {
        bytes_.insert(bytes_.end(), text.begin(), text.end());
        bytes_.resize((bytes_.size() + 3) / 4 * 4);
        return *this;
    }

    Property& header(std::uint32_t count) {
        bytes_.push_back(mostFirst_ ? 1 : 0);
        bytes_.resize(4);
        return number(7, 4).number(count, 4);
    }

    Property& name(std::uint8_t type, const std::string& name) {
        number(type, 1).number(0, 1).number(static_cast<std::uint32_t>(name.size()), 2);
        return text(name).number(3, 4);
    }

    Property& string(const std::string& key, const std::string& value) {
        return name(1, key).number(static_cast<std::uint32_t>(value.size()), 4).text(value);
    }

    const Bytes& bytes() const { return bytes_; }

  private:
    bool mostFirst_;
    Bytes bytes_;
};

Bytes daemonsProperty(bool mostFirst = false) {
    Property property(mostFirst);
    property.header(4);
    property.name(0, "Xft/DPI").number(98304, 4);
    property.name(2, "Some/Color").number(1, 4).number(2, 4);
    property.string("Net/IconThemeName", "elementary-xfce");
    property.string("Net/ThemeName", "Adwaita-dark");
    return property.bytes();
}

TEST(XSettingsTest, FindsAStringBehindSettingsOfEveryTypeInBothByteOrders) {
    for (const bool mostFirst : {false, true}) {
        const Bytes bytes = daemonsProperty(mostFirst);
        EXPECT_EQ(stringSetting(bytes, "Net/ThemeName"), "Adwaita-dark");
        EXPECT_EQ(stringSetting(bytes, "Net/IconThemeName"), "elementary-xfce");
    }
}

TEST(XSettingsTest, NoStringIsNoAnswer) {
    const Bytes bytes = daemonsProperty();
    EXPECT_EQ(stringSetting(bytes, "Xft/DPI"), std::nullopt);
    EXPECT_EQ(stringSetting(bytes, "Some/Color"), std::nullopt);
    EXPECT_EQ(stringSetting(bytes, "Net/Theme"), std::nullopt);
    EXPECT_EQ(stringSetting(bytes, ""), std::nullopt);
}

TEST(XSettingsTest, EmptyTextIsATextOfItsOwn) {
    EXPECT_EQ(stringSetting(Property(false).header(1).string("A", "").bytes(), "A"), "");
}

TEST(XSettingsTest, WhatEndsTooEarlyIsNoAnswer) {
    const Bytes whole = daemonsProperty();
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_EQ(stringSetting(cut, "Net/ThemeName"), std::nullopt) << length;
    }
}

TEST(XSettingsTest, AnyByteMayBeWrong) {
    const Bytes whole = daemonsProperty();
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (int value = 0; value < 256; ++value) {
            Bytes wrong = whole;
            wrong[at] = static_cast<std::uint8_t>(value);
            const auto text = stringSetting(wrong, "Net/ThemeName");
            EXPECT_LE(text.value_or("").size(), whole.size()) << at << ' ' << value;
        }
    }
}

struct Malformed {
    const char* what;
    Bytes bytes;
};

TEST(XSettingsTest, MalformedPropertiesAreNoAnswer) {
    const std::vector<Malformed> table{
        {"nothing", {}},
        {"an unknown byte order", Bytes(64, 2)},
        {"zeros", Bytes(64, 0)},
        {"all bits set", Bytes(64, 0xFF)},
        {"fewer settings than told", Property(false).header(0xFFFFFFFF).bytes()},
        {"more settings than told", Property(false).header(0).string("A", "x").bytes()},
        {"an unknown type", Property(false).header(2).name(3, "B").string("A", "x").bytes()},
        {"a text longer than the rest",
         Property(false).header(1).name(1, "A").number(0xFFFFFFFF, 4).text("x").bytes()},
        {"a name longer than the rest",
         Property(false).header(1).number(1, 1).number(0, 1).number(0xFFFF, 2).text("A").bytes()},
    };
    for (const auto& [what, bytes] : table)
        EXPECT_EQ(stringSetting(bytes, "A"), std::nullopt) << what;
}

} // namespace
} // namespace kestrel::linux_shell
