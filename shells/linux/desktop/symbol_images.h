#pragma once
// The program's symbols as the core asks for them.

#include "platform/images.h"

#include <string>

namespace kestrel::linux_shell {

/// A symbol by its name and the size and weight it is meant for; drawn by whoever shows it.
struct SymbolImage final : public Image {
    std::string name;
    SymbolConfiguration configuration;
};

class KestrelSymbolImages final : public SymbolImages {
  public:
    /// What shows the symbol describes it: there is one status item and it has a title.
    std::shared_ptr<Image>
    imageWithSystemSymbolName(std::string_view name,
                              std::optional<std::string> accessibilityDescription) override;
    std::shared_ptr<Image>
    imageWithSymbolConfiguration(const std::shared_ptr<Image>& symbol,
                                 const SymbolConfiguration& configuration) override;
};

} // namespace kestrel::linux_shell
