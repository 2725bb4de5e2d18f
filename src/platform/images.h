#pragma once
// Pictures, opaque to the core, and the system symbols that are asked for by name.

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace kestrel {

/// A picture of the platform. The core only passes it on.
class Image {
  public:
    virtual ~Image() = default;
};

enum class FontWeight { regular, medium, semibold, bold };

struct SymbolConfiguration {
    double pointSize = 0; ///< points
    FontWeight weight = FontWeight::regular;
    friend bool operator==(const SymbolConfiguration&, const SymbolConfiguration&) = default;
};

/// Main thread only.
class SymbolImages {
  public:
    virtual ~SymbolImages() = default;

    /// The system symbol of that name; null when the system has none.
    virtual std::shared_ptr<Image>
    imageWithSystemSymbolName(std::string_view name,
                              std::optional<std::string> accessibilityDescription) = 0;

    /// The same symbol drawn at another size and weight; never null.
    virtual std::shared_ptr<Image>
    imageWithSymbolConfiguration(const std::shared_ptr<Image>& symbol,
                                 const SymbolConfiguration& configuration) = 0;
};

} // namespace kestrel
