#include "tests/macos/face_button_support.h"

@implementation KSTTestFaceTarget
- (void)pressed:(KSTFaceButton*)sender {
    (void)sender;
    ++self.presses;
}
@end

namespace kestrel::tests {

KSTFaceButton* faceButton(KSTTestFaceTarget* target) {
    const macos_shell::ButtonFace face{
        .symbol = {.name = "power", .font = {.size = 13}},
        .title = {"Quit"},
        .spacing = 5,
    };
    return [[KSTFaceButton alloc] initWithFace:face target:target action:@selector(pressed:)];
}

} // namespace kestrel::tests
