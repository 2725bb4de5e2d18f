#pragma once
// What assistive programs see of a control. They meet its cell as well as the view, and what is
// said to the view alone does not reach the cell. Main thread only.

#import <AppKit/AppKit.h>

NS_ASSUME_NONNULL_BEGIN

namespace kestrel::macos_shell {

/// The control is decoration: its meaning is said by the view that it stands in.
void hideFromAssistivePrograms(NSControl* control);

/// The control is read as `name`, whatever text or picture its cell holds.
void nameForAssistivePrograms(NSControl* control, NSString* name);

} // namespace kestrel::macos_shell

NS_ASSUME_NONNULL_END
