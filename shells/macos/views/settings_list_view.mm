#include "shells/macos/views/settings_list_view.h"

#import <objc/runtime.h>

namespace {

constexpr NSEventModifierFlags commandKeys = NSEventModifierFlagShift | NSEventModifierFlagControl |
                                             NSEventModifierFlagOption | NSEventModifierFlagCommand;

/// The first character of a key press, 0 when it has none (a dead key).
unichar characterOf(NSEvent* event) {
    NSString* const characters = event.charactersIgnoringModifiers;
    return characters.length > 0 ? [characters characterAtIndex:0] : u'\0';
}

/// What a key press types; nil when it is a command or a key without a letter.
NSString* lettersOf(NSEvent* event) {
    NSString* const characters = event.characters;
    const NSEventModifierFlags commands = NSEventModifierFlagControl | NSEventModifierFlagCommand;
    if ((event.modifierFlags & commands) != 0 || characters.length == 0)
        return nil;
    const unichar first = [characters characterAtIndex:0];
    // Arrows and function keys come as characters of a private range that ends before U+F900.
    const bool isFunctionKey = first >= NSUpArrowFunctionKey && first < 0xF900;
    const bool isControl = [NSCharacterSet.controlCharacterSet characterIsMember:first];
    return isFunctionKey || isControl ? nil : characters;
}

} // namespace

@interface KSTSettingsListView ()
- (BOOL)takesCommandKey:(NSEvent*)event;
@end

@implementation KSTSettingsListView

- (void)keyDown:(NSEvent*)event {
    if ([self takesCommandKey:event])
        return;
    NSString* const letters = lettersOf(event);
    if (letters)
        [self.commands typed:letters];
    else
        [super keyDown:event];
}

- (BOOL)takesCommandKey:(NSEvent*)event {
    using Direction = kestrel::SettingsView::Direction;
    using Step = kestrel::SettingsView::Step;
    const unichar character = characterOf(event);
    const NSEventModifierFlags modifiers = event.modifierFlags & commandKeys;
    const bool isDelete = character == NSDeleteCharacter || character == NSBackspaceCharacter ||
                          character == NSDeleteFunctionKey;
    const bool isReturn = character == NSCarriageReturnCharacter || character == NSEnterCharacter;
    const bool isVertical =
        character == NSUpArrowFunctionKey || character == NSDownArrowFunctionKey;
    if (isDelete && modifiers == 0)
        [self.commands deleteSelectedRow];
    else if (isReturn && modifiers == 0)
        [self.commands editSelectedRow];
    else if (isVertical && modifiers == NSEventModifierFlagOption)
        [self.commands
            moveSelectedRow:character == NSUpArrowFunctionKey ? Direction::up : Direction::down];
    else if (isVertical && modifiers == 0 && self.selectedRow < 0)
        [self.commands
            moveSelection:character == NSUpArrowFunctionKey ? Step::previous : Step::next];
    else
        return NO;
    return YES;
}

- (NSView<KSTHoverRow>*)hoverRowAtPoint:(NSPoint)point {
    const NSInteger row = [self rowAtPoint:point];
    return row < 0 ? nil : [self viewAtColumn:0 row:row makeIfNecessary:NO];
}

- (IBAction)delete:(id)sender {
    (void)sender;
    [self.commands deleteSelectedRow];
}

- (BOOL)validateMenuItem:(NSMenuItem*)menuItem {
    const SEL action = menuItem.action;
    const bool isDelete = action && sel_isEqual(action, @selector(delete:));
    return !isDelete || self.selectedRow >= 0;
}

@end
