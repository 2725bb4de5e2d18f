#include "shells/macos/desktop/settings_window.h"

#include "shells/macos/desktop/main_queue.h"
#include "shells/macos/foundation/text.h"

namespace kestrel::macos_shell {

AppKitSettingsWindow::AppKitSettingsWindow(NSViewController<KSTViewStateOwner>* content,
                                           Size contentSize, std::string_view title,
                                           id<NSWindowDelegate> delegate)
    : content_(content),
      window_([[NSWindow alloc]
          initWithContentRect:NSMakeRect(0, 0, contentSize.width, contentSize.height)
                    styleMask:NSWindowStyleMaskTitled | NSWindowStyleMaskClosable |
                              NSWindowStyleMaskMiniaturizable | NSWindowStyleMaskResizable
                      backing:NSBackingStoreBuffered
                        defer:NO]) {
    window_.title = toNSString(title);
    window_.contentViewController = content_;
    [window_ setContentSize:NSMakeSize(contentSize.width, contentSize.height)];
    window_.releasedWhenClosed = NO;
    window_.restorable = NO; // the next start begins without it
    [window_ center];
    window_.delegate = delegate;
}

AppKitSettingsWindow::~AppKitSettingsWindow() {
    window_.delegate = nil;
    [content_ discardView]; // its sheets go before the window does
    [window_ orderOut:nil];
    // The window may be in the middle of closing, which goes on after its delegate has returned.
    NSWindow* const closing = window_;
    DispatchMainQueue().async([closing] { closing.contentViewController = nil; });
}

void AppKitSettingsWindow::bringForward() {
    if (window_.miniaturized)
        [window_ deminiaturize:nil];
    [window_ makeKeyAndOrderFront:nil];
}

} // namespace kestrel::macos_shell
