#pragma once
// A face button for tests, and its target.

#import <AppKit/AppKit.h>

#include "shells/macos/views/kit/face_button.h"

@interface KSTTestFaceTarget : NSObject
@property(nonatomic) int presses;
- (void)pressed:(KSTFaceButton*)sender;
@end

namespace kestrel::tests {

/// "Quit", with a symbol.
KSTFaceButton* faceButton(KSTTestFaceTarget* target);

} // namespace kestrel::tests
