#include "shells/macos/desktop/images.h"

#include "shells/macos/foundation/text.h"
#include "shells/macos/views/kit/style_bridge.h"

namespace kestrel::macos_shell {

std::shared_ptr<Image>
AppKitSymbolImages::imageWithSystemSymbolName(std::string_view name,
                                              std::optional<std::string> accessibilityDescription) {
    NSString* const description =
        accessibilityDescription ? toNSString(*accessibilityDescription) : nil;
    NSImage* const image = [NSImage imageWithSystemSymbolName:toNSString(name)
                                     accessibilityDescription:description];
    return image ? std::make_shared<AppKitImage>(image) : nullptr;
}

std::shared_ptr<Image>
AppKitSymbolImages::imageWithSymbolConfiguration(const std::shared_ptr<Image>& symbol,
                                                 const SymbolConfiguration& configuration) {
    NSImageSymbolConfiguration* const native =
        [NSImageSymbolConfiguration configurationWithPointSize:configuration.pointSize
                                                        weight:weightFor(configuration.weight)];
    NSImage* const image =
        [static_cast<const AppKitImage&>(*symbol).image() imageWithSymbolConfiguration:native];
    return image ? std::make_shared<AppKitImage>(image) : symbol;
}

} // namespace kestrel::macos_shell
