#pragma once
// The per-user local store: small values under text keys, kept between runs.

#include "platform/clock.h"

#include <optional>
#include <string>
#include <string_view>

namespace kestrel {

/// Main thread only. Writes report nothing: a write that fails leaves the value that was stored.
class UserDefaults {
  public:
    virtual ~UserDefaults() = default;

    /// The bytes stored under `key`; nothing when the key is missing, unreadable or holds no data.
    virtual std::optional<std::string> dataForKey(std::string_view key) = 0;

    /// Stores bytes, or a date, under `key`, whole or not at all.
    virtual void setData(std::string_view data, std::string_view key) = 0;
    virtual void setDate(Date date, std::string_view key) = 0;
};

} // namespace kestrel
