#include "shells/linux/desktop/symbol_images.h"

#include "shells/linux/desktop/appearance/symbol.h"

namespace kestrel::linux_shell {

std::shared_ptr<Image>
KestrelSymbolImages::imageWithSystemSymbolName(std::string_view name,
                                               std::optional<std::string> /*description*/) {
    constexpr int anyExtent = 16;
    if (symbolPixmap(name, anyExtent, Qt::black, 1).isNull()) {
        return nullptr;
    }
    auto image = std::make_shared<SymbolImage>();
    image->name = name;
    return image;
}

std::shared_ptr<Image>
KestrelSymbolImages::imageWithSymbolConfiguration(const std::shared_ptr<Image>& symbol,
                                                  const SymbolConfiguration& configuration) {
    auto image = std::make_shared<SymbolImage>();
    if (const auto* named = dynamic_cast<const SymbolImage*>(symbol.get())) {
        image->name = named->name;
    }
    image->configuration = configuration;
    return image;
}

} // namespace kestrel::linux_shell
