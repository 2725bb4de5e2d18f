#pragma once
// Reads the property in which an X11 desktop's settings daemon publishes its settings (XSETTINGS).

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace kestrel::linux_shell {

/// The value of the string setting `name`. None where there is no such setting, where it is not a
/// string, and where the bytes up to it are not what the protocol says. Any bytes are safe.
std::optional<std::string> stringSetting(std::span<const std::uint8_t> property,
                                         std::string_view name);

} // namespace kestrel::linux_shell
