#include "shells/macos/desktop/window_server.h"

#import <dispatch/dispatch.h>

#include "shells/macos/desktop/hosting_controller.h"
#include "shells/macos/foundation/text.h"

#include <algorithm>

namespace kestrel::macos_shell {

namespace {

static_assert(static_cast<NSUInteger>(WindowStyleMask::titled) == NSWindowStyleMaskTitled);
static_assert(static_cast<NSUInteger>(WindowStyleMask::closable) == NSWindowStyleMaskClosable);
static_assert(static_cast<NSUInteger>(WindowStyleMask::miniaturizable) ==
              NSWindowStyleMaskMiniaturizable);
static_assert(static_cast<NSUInteger>(WindowStyleMask::resizable) == NSWindowStyleMaskResizable);
static_assert(static_cast<NSUInteger>(BackingStore::buffered) == NSBackingStoreBuffered);

} // namespace

AppKitWindow::AppKitWindow(AppKitWindowServer& server, NSWindow* window)
    : server_(server), window_(window) {
    server_.windows_.push_back(this);
}

AppKitWindow::~AppKitWindow() {
    std::erase(server_.windows_, this);
    window_.delegate = nil;
    controller_.reset(); // its sheets go before the window does
    [window_ orderOut:nil];
    // The window may be in the middle of closing, which goes on after its delegate has returned.
    NSWindow* const closing = window_;
    dispatch_async(dispatch_get_main_queue(), ^{
        closing.contentViewController = nil;
    });
}

void AppKitWindow::setTitle(std::string_view title) { window_.title = toNSString(title); }

void AppKitWindow::setContentViewController(std::unique_ptr<HostingController> controller) {
    const NSSize size = window_.contentView.frame.size;
    window_.contentViewController =
        static_cast<const AppKitHostingController&>(*controller).controller();
    [window_ setContentSize:size];
    controller_ = std::move(controller);
}

void AppKitWindow::setReleasedWhenClosed(bool released) { window_.releasedWhenClosed = released; }

void AppKitWindow::center() { [window_ center]; }

void AppKitWindow::setDelegate(WindowDelegate* delegate) {
    delegate_ = delegate;
    window_.delegate = delegate ? server_.delegate_ : nil;
}

void AppKitWindow::makeKeyAndOrderFront() {
    if (window_.miniaturized)
        [window_ deminiaturize:nil];
    [window_ makeKeyAndOrderFront:nil];
}

std::unique_ptr<Window> AppKitWindowServer::makeWindow(Rect contentRect, WindowStyleMask styleMask,
                                                       BackingStore backing,
                                                       WindowCreation creation) {
    NSWindow* const window =
        [[NSWindow alloc] initWithContentRect:NSMakeRect(contentRect.x, contentRect.y,
                                                         contentRect.width, contentRect.height)
                                    styleMask:static_cast<NSWindowStyleMask>(styleMask)
                                      backing:static_cast<NSBackingStoreType>(backing)
                                        defer:creation == WindowCreation::deferred];
    return std::make_unique<AppKitWindow>(*this, window);
}

void AppKitWindowServer::windowWillClose(NSNotification* notification) {
    const id object = notification.object;
    NSWindow* const closing = [object isKindOfClass:NSWindow.class] ? object : nil;
    const auto found = std::ranges::find_if(windows_, [closing](const AppKitWindow* window) {
        return window->delegate() && (!closing || window->window() == closing);
    });
    if (found != windows_.end())
        (*found)->delegate()->windowWillClose(closing ? *found : nullptr);
}

} // namespace kestrel::macos_shell
