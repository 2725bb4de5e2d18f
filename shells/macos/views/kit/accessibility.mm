#include "shells/macos/views/kit/accessibility.h"

namespace kestrel::macos_shell {

void hideFromAssistivePrograms(NSControl* control) {
    [control setAccessibilityElement:NO];
    [control.cell setAccessibilityElement:NO];
}

void nameForAssistivePrograms(NSControl* control, NSString* name) {
    [control setAccessibilityLabel:name];
    [control.cell setAccessibilityLabel:name];
}

} // namespace kestrel::macos_shell
