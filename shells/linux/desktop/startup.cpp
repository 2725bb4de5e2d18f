#include "shells/linux/desktop/startup.h"

#include <QMetaType>

namespace kestrel::linux_shell {
namespace {

const QString tokenKey = QStringLiteral("activation-token");
const QString idKey = QStringLiteral("desktop-startup-id");

// Characters. No launcher's are nearly as long.
constexpr qsizetype longestText = 1024;

QString text(const QVariant& value) {
    const QString found =
        value.metaType().id() == QMetaType::QString ? value.toString() : QString();
    return found.size() <= longestText ? found : QString();
}

} // namespace

QVariantMap Startup::platformData() const {
    QVariantMap data;
    if (!activationToken.isEmpty())
        data.insert(tokenKey, activationToken);
    if (!id.isEmpty())
        data.insert(idKey, id);
    return data;
}

Startup Startup::fromPlatformData(const QVariantMap& data) {
    return {.id = text(data.value(idKey)), .activationToken = text(data.value(tokenKey))};
}

Startup startupOfThisProcess() {
    return {.id = qEnvironmentVariable("DESKTOP_STARTUP_ID"),
            .activationToken = qEnvironmentVariable("XDG_ACTIVATION_TOKEN")};
}

} // namespace kestrel::linux_shell
