#include "shells/linux/desktop/appearance/settings_portal.h"

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QMap>
#include <QVariantMap>

namespace kestrel::linux_shell {
namespace {

using Namespaces = QMap<QString, QVariantMap>;

constexpr QLatin1String portalService("org.freedesktop.portal.Desktop");
constexpr QLatin1String portalPath("/org/freedesktop/portal/desktop");
constexpr QLatin1String settingsInterface("org.freedesktop.portal.Settings");

// The keys that mean the same on every desktop.
const QString appearanceNamespace = QStringLiteral("org.freedesktop.appearance");

/// A setting of the only type that both keys have; 0, "no preference", for any other.
uint numberIn(const QVariantMap& settings, QLatin1String key) {
    const QVariant value = settings.value(key);
    return value.typeId() == QMetaType::UInt ? value.toUInt() : 0;
}

AppearanceSettings settingsIn(const QVariantMap& values) {
    AppearanceSettings settings;
    switch (numberIn(values, QLatin1String("color-scheme"))) {
    case 1:
        settings.scheme = ColorScheme::dark;
        break;
    case 2:
        settings.scheme = ColorScheme::light;
        break;
    default:
        break;
    }
    if (numberIn(values, QLatin1String("contrast")) == 1)
        settings.contrast = Contrast::high;
    return settings;
}

} // namespace

// The signal only says when to ask: the owner of the portal's name is asked, not the
// sender of the signal.
SettingsPortal::SettingsPortal(const QDBusConnection& bus)
    : bus_(bus), watcher_(portalService, bus, QDBusServiceWatcher::WatchForRegistration) {
    qDBusRegisterMetaType<Namespaces>();
    if (!bus_.isConnected())
        return;
    connect(&watcher_, &QDBusServiceWatcher::serviceRegistered, this, &SettingsPortal::ask);
    bus_.connect(QString(), portalPath, settingsInterface, QStringLiteral("SettingChanged"),
                 {appearanceNamespace}, QString(), this, SLOT(ask()));
    ask();
}

// GTK's programs start the portal where it does not run. This one does not: an icon that starts
// with the session would load the portal and its helpers into sessions that do without, only to
// hear what the desktop's own settings say as well. Whoever starts it later is noticed.
void SettingsPortal::ask() {
    auto call = QDBusMessage::createMethodCall(portalService, portalPath, settingsInterface,
                                               QStringLiteral("ReadAll"));
    call << QStringList{appearanceNamespace};
    call.setAutoStartService(false);
    watchAnswer(bus_.asyncCall(call));
}

void SettingsPortal::watchAnswer(const QDBusPendingCall& call) {
    auto* answer = new QDBusPendingCallWatcher(call, this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        const QDBusPendingReply<Namespaces> reply = *answer;
        if (!reply.isError())
            setSettings(settingsIn(reply.value().value(appearanceNamespace)));
    });
}

} // namespace kestrel::linux_shell
