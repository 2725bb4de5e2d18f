#include "actions/apple_script.h"

namespace kestrel {

namespace {

constexpr std::string_view scriptHead =
    "tell application \"Terminal\"\n    activate\n    do script \"";
constexpr std::string_view scriptTail = "\"\nend tell";
static_assert(scriptHead.size() == 56 && scriptTail.size() == 10);

/// Replaces every occurrence of one character by a text.
std::string replacing(std::string_view text, char character, std::string_view replacement) {
    std::string result;
    result.reserve(text.size());
    for (const char c : text)
        if (c == character)
            result += replacement;
        else
            result += c;
    return result;
}

} // namespace

std::string escapedForAppleScript(std::string_view command) {
    // Backslashes first: the other order would double those that the quotes' step adds.
    return replacing(replacing(command, '\\', "\\\\"), '"', "\\\"");
}

std::string terminalScript(std::string_view command) {
    std::string script(scriptHead);
    script += escapedForAppleScript(command);
    script += scriptTail;
    return script;
}

Task terminalTask(std::string_view command) {
    return {.executable = "/usr/bin/osascript", .arguments = {"-e", terminalScript(command)}};
}

} // namespace kestrel
