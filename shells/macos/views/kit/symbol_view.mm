#include "shells/macos/views/kit/symbol_view.h"

#include "shells/macos/foundation/text.h"
#include "shells/macos/views/kit/accessibility.h"
#include "shells/macos/views/kit/style_bridge.h"

using namespace kestrel;
using namespace kestrel::macos_shell;

@implementation KSTItemPictureView

- (instancetype)initWithFrame:(NSRect)frame {
    if ((self = [super initWithFrame:frame])) {
        self.imageScaling = NSImageScaleAxesIndependently;
        self.contentTintColor = colorFor(style::ColorLevel::primary);
        hideFromAssistivePrograms(self);
    }
    return self;
}

- (void)drawRect:(NSRect)dirtyRect {
    NSGraphicsContext.currentContext.imageInterpolation = NSImageInterpolationHigh;
    [super drawRect:dirtyRect];
}

@end

namespace kestrel::macos_shell {

NSImage* symbolImage(const style::SymbolStyle& symbol) {
    NSImage* const plain = [NSImage imageWithSystemSymbolName:toNSString(symbol.name)
                                     accessibilityDescription:nil];
    NSImageSymbolConfiguration* const configuration =
        [NSImageSymbolConfiguration configurationWithPointSize:symbol.font.size
                                                        weight:weightFor(symbol.font.weight)];
    NSImage* const sized = [plain imageWithSymbolConfiguration:configuration];
    return sized ? sized : [[NSImage alloc] initWithSize:NSZeroSize];
}

NSImageView* symbolView(const style::SymbolStyle& symbol) {
    NSImage* const image = symbolImage(symbol);
    [image setTemplate:YES];
    NSImageView* const view = [NSImageView imageViewWithImage:image];
    view.frame = NSMakeRect(0, 0, image.size.width, image.size.height);
    view.contentTintColor = colorFor(symbol.color);
    hideFromAssistivePrograms(view);
    return view;
}

} // namespace kestrel::macos_shell
