#include "model/launcher_item.h"

#include "model/text.h"

namespace kestrel {

namespace {

bool equal(const std::optional<std::string>& a, const std::optional<std::string>& b) {
    return a && b ? text::equal(*a, *b) : a.has_value() == b.has_value();
}

/// Folds one more value into a running hash.
class Hasher {
  public:
    void feed(std::size_t value) {
        // The golden ratio's fraction spreads the bits of small values over the word.
        value_ ^= value + std::size_t{0x9E3779B97F4A7C15U} + (value_ << 6U) + (value_ >> 2U);
    }
    void feed(const std::optional<std::string>& value) {
        feed(std::size_t{value ? 1U : 0U});
        if (value)
            feed(text::hash(*value));
    }
    std::size_t value() const { return value_; }

  private:
    std::size_t value_ = 0;
};

} // namespace

bool operator==(const LauncherItem& a, const LauncherItem& b) {
    return a.id == b.id && text::equal(a.title, b.title) && a.type == b.type &&
           equal(a.path, b.path) && equal(a.command, b.command);
}

} // namespace kestrel

std::size_t std::hash<kestrel::LauncherItem>::operator()(const kestrel::LauncherItem& item) const {
    kestrel::Hasher hasher;
    hasher.feed(std::hash<kestrel::Uuid>{}(item.id));
    hasher.feed(kestrel::text::hash(item.title));
    hasher.feed(std::hash<kestrel::ItemType>{}(item.type));
    hasher.feed(item.path);
    hasher.feed(item.command);
    return hasher.value();
}
