#include "shells/linux/desktop/startup.h"

namespace kestrel::linux_shell {

QVariantMap Startup::platformData() const {
    QVariantMap data;
    if (!activationToken.isEmpty())
        data.insert(QStringLiteral("activation-token"), activationToken);
    if (!id.isEmpty())
        data.insert(QStringLiteral("desktop-startup-id"), id);
    return data;
}

Startup startupOfThisProcess() {
    return {.id = qEnvironmentVariable("DESKTOP_STARTUP_ID"),
            .activationToken = qEnvironmentVariable("XDG_ACTIVATION_TOKEN")};
}

} // namespace kestrel::linux_shell
