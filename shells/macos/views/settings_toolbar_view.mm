#include "shells/macos/views/settings_toolbar_view.h"

#include "shells/macos/foundation/text.h"
#include "shells/macos/views/kit/face_button.h"
#include "shells/macos/views/kit/style_bridge.h"
#include "views/settings/settings_style.h"

using namespace kestrel;
using namespace kestrel::macos_shell;
namespace toolbar_style = kestrel::settings_style::toolbar;

@interface KSTSettingsToolbarView ()
- (void)addButtons;
- (void)buttonClicked:(KSTFaceButton*)sender;
@end

namespace {

KSTFaceButton* toolbarButton(const ToolbarButton& button, id target, SEL action) {
    const ButtonFace face{
        .symbol = {.name = button.icon, .font = toolbar_style::symbolFont},
        .title = {button.label},
        .titleStyle = {.font = toolbar_style::labelFont},
        .axis = ButtonFace::Axis::vertical,
        .spacing = toolbar_style::buttonSpacing,
    };
    KSTFaceButton* const made = [[KSTFaceButton alloc] initWithFace:face
                                                             target:target
                                                             action:action];
    made.toolTip = toNSString(button.label);
    return made;
}

} // namespace

@implementation KSTSettingsToolbarView {
    SettingsView* _state;
    NSMutableArray<KSTFaceButton*>* _buttons;
}

+ (CGFloat)height {
    return toolbar_style::padding.top + toolbar_style::buttonSize.height +
           toolbar_style::padding.bottom;
}

- (instancetype)initWithFrame:(NSRect)frame state:(SettingsView&)state {
    if ((self = [super initWithFrame:frame color:colorFor(toolbar_style::background) radius:0])) {
        _state = &state;
        _buttons = [NSMutableArray array];
        [self addButtons];
        [self updateNow];
    }
    return self;
}

- (void)addButtons {
    const NSSize size = sizeFor(toolbar_style::buttonSize);
    CGFloat x = toolbar_style::padding.left;
    for (const ToolbarButton& button : _state->toolbarButtons()) {
        KSTFaceButton* const made = toolbarButton(button, self, @selector(buttonClicked:));
        made.frame = NSMakeRect(x, toolbar_style::padding.bottom, size.width, size.height);
        made.autoresizingMask = NSViewMaxXMargin | NSViewMinYMargin;
        made.tag = static_cast<NSInteger>(_buttons.count);
        [_buttons addObject:made];
        [self addSubview:made];
        x += size.width;
    }
}

- (void)updateNow {
    const auto buttons = _state->toolbarButtons();
    for (KSTFaceButton* button in _buttons) {
        const bool isEnabled = buttons[static_cast<std::size_t>(button.tag)].enabled;
        button.enabled = isEnabled;
        [button
            setFaceColor:isEnabled ? toolbar_style::enabledColor : toolbar_style::disabledColor];
    }
}

- (void)buttonClicked:(KSTFaceButton*)sender {
    _state->toolbarButtons()[static_cast<std::size_t>(sender.tag)].action();
}

@end
