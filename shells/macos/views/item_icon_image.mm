#include "shells/macos/views/item_icon_image.h"

#include "shells/macos/foundation/text.h"

namespace kestrel::macos_shell {

namespace {

NSImage* symbolOrEmpty(const SymbolIcon& icon) {
    NSImage* const symbol = [NSImage imageWithSystemSymbolName:toNSString(icon.name)
                                      accessibilityDescription:nil];
    return symbol ? symbol : [[NSImage alloc] init];
}

} // namespace

NSImage* itemIconImage(const kestrel::ItemIcon& icon) {
    if (const auto* const file = std::get_if<FileIcon>(&icon))
        return [NSWorkspace.sharedWorkspace iconForFile:toNSString(file->path)];
    return symbolOrEmpty(std::get<SymbolIcon>(icon));
}

} // namespace kestrel::macos_shell
