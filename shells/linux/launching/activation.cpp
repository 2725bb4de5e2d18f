#include "shells/linux/launching/activation.h"

namespace kestrel::linux_shell {

namespace {

constexpr const char* tokenVariable = "XDG_ACTIVATION_TOKEN";
constexpr const char* startupIdVariable = "DESKTOP_STARTUP_ID";

using NamedTexts = std::vector<std::pair<const char*, std::string>>;

NamedTexts withoutEmpty(NamedTexts texts) {
    std::erase_if(texts, [](const auto& text) { return text.second.empty(); });
    return texts;
}

} // namespace

NamedTexts Activation::environment() const {
    return withoutEmpty({{tokenVariable, token}, {startupIdVariable, startupId}});
}

NamedTexts Activation::platformData() const {
    return withoutEmpty({{"activation-token", token}, {"desktop-startup-id", startupId}});
}

std::vector<std::string> withoutActivation() {
    return {"env", "-u", tokenVariable, "-u", startupIdVariable};
}

} // namespace kestrel::linux_shell
