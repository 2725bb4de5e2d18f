#include "shells/macos/desktop/open_panel.h"

#import <AppKit/AppKit.h>
#import <UniformTypeIdentifiers/UniformTypeIdentifiers.h>

#include "shells/macos/foundation/text.h"

namespace kestrel::macos_shell {

namespace {

NSURL* startFolder(OpenPanelOptions::StartFolder folder) {
    switch (folder) {
    case OpenPanelOptions::StartFolder::applications:
        return [NSURL fileURLWithPath:@"/Applications"];
    case OpenPanelOptions::StartFolder::desktop:
        break;
    }
    NSURL* const home = NSFileManager.defaultManager.homeDirectoryForCurrentUser;
    return [home URLByAppendingPathComponent:@"Desktop"];
}

} // namespace

std::optional<ChosenFile> AppKitOpenPanel::runModal(const OpenPanelOptions& options) {
    NSOpenPanel* const panel = [[NSOpenPanel alloc] init];
    panel.canChooseFiles = options.canChooseFiles;
    panel.canChooseDirectories = options.canChooseDirectories;
    panel.allowsMultipleSelection = options.allowsMultipleSelection;
    panel.resolvesAliases = options.resolvesAliases;
    if (options.content == OpenPanelOptions::Content::applications)
        panel.allowedContentTypes = @[ UTTypeApplication ];
    panel.directoryURL = startFolder(options.startFolder);
    if ([panel runModal] != NSModalResponseOK)
        return std::nullopt;
    NSURL* const url = panel.URL;
    NSString* const path = url.path;
    if (path == nil)
        return std::nullopt;
    // An application's file name is its name.
    return ChosenFile{toUtf8(path), std::nullopt};
}

} // namespace kestrel::macos_shell
