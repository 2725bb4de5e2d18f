#pragma once
// Image and SymbolImages on NSImage.

#import <AppKit/AppKit.h>

#include "platform/images.h"

namespace kestrel::macos_shell {

/// The only Image of this shell.
class AppKitImage final : public Image {
  public:
    explicit AppKitImage(NSImage* image) : image_(image) {}
    NSImage* image() const { return image_; }

  private:
    NSImage* image_;
};

class AppKitSymbolImages final : public SymbolImages {
  public:
    std::shared_ptr<Image>
    imageWithSystemSymbolName(std::string_view name,
                              std::optional<std::string> accessibilityDescription) override;
    std::shared_ptr<Image>
    imageWithSymbolConfiguration(const std::shared_ptr<Image>& symbol,
                                 const SymbolConfiguration& configuration) override;
};

} // namespace kestrel::macos_shell
