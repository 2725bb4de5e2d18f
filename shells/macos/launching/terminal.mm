#include "shells/macos/launching/terminal.h"

#import <AppKit/AppKit.h>

#include "actions/apple_script.h"
#include "shells/macos/foundation/text.h"

namespace kestrel::macos_shell {

namespace {

/// Starts the task and lets go of it. One that cannot be started leaves no trace.
void start(const Task& description) {
    NSMutableArray<NSString*>* const arguments = [NSMutableArray array];
    for (const std::string& argument : description.arguments)
        [arguments addObject:toNSString(argument)];
    NSTask* const task = [[NSTask alloc] init];
    @try {
        task.executableURL = fileURL(description.executable);
        task.arguments = arguments;
        [task launchAndReturnError:nullptr];
    } @catch (NSException*) {
        return; // an argument that no process can be given
    }
}

} // namespace

void AppleScriptTerminal::runInNewWindow(std::string_view command) {
    if (command.find('\0') == std::string_view::npos)
        start(terminalTask(command));
}

std::optional<std::string> AppleScriptTerminal::applicationPath() {
    NSURL* const url =
        [NSWorkspace.sharedWorkspace URLForApplicationWithBundleIdentifier:@"com.apple.Terminal"];
    NSString* const path = url.path;
    return path ? std::optional(toUtf8(path)) : std::nullopt;
}

} // namespace kestrel::macos_shell
