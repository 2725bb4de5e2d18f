#include "shells/macos/desktop/hosting_controller.h"

namespace kestrel::macos_shell {

AppKitHostingController::~AppKitHostingController() { [controller_ discardView]; }

void AppKitHostingController::setPreferredContentSize(Size size) {
    controller_.preferredContentSize = NSMakeSize(size.width, size.height);
}

void AppKitHostingController::makeWindowKey() { [controller_.view.window makeKeyWindow]; }

} // namespace kestrel::macos_shell
