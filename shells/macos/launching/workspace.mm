#include "shells/macos/launching/workspace.h"

#import <AppKit/AppKit.h>

#include "shells/macos/foundation/text.h"

namespace kestrel::macos_shell {

void AppKitWorkspace::openApplication(std::string_view path) {
    NSURL* const url = fileURL(path);
    if (!url)
        return;
    [NSWorkspace.sharedWorkspace openApplicationAtURL:url
                                        configuration:[[NSWorkspaceOpenConfiguration alloc] init]
                                    completionHandler:nil];
}

void AppKitWorkspace::openFile(std::string_view path) {
    if (NSURL* const url = fileURL(path))
        [NSWorkspace.sharedWorkspace openURL:url];
}

} // namespace kestrel::macos_shell
