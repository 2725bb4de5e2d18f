#include "tests/linux/desktop/appearance/fake_portal.h"

#include <QDBusMetaType>

namespace kestrel::linux_shell {
namespace {

const QString portalObject = QStringLiteral("/org/freedesktop/portal/desktop");
const QString appearanceKeys = QStringLiteral("org.freedesktop.appearance");

} // namespace

FakePortal::FakePortal(const QDBusConnection& bus) : bus_(bus) {
    qDBusRegisterMetaType<Namespaces>();
    bus_.registerObject(portalObject, this, QDBusConnection::ExportAllContents);
    bus_.registerService(QLatin1String(service));
}

FakePortal::~FakePortal() {
    bus_.unregisterService(QLatin1String(service));
    bus_.unregisterObject(portalObject);
}

void FakePortal::set(const QString& key, const QVariant& value) {
    settings.insert(key, value);
    Q_EMIT SettingChanged(appearanceKeys, key, QDBusVariant(value));
}

FakePortal::Namespaces FakePortal::ReadAll(const QStringList& namespaces) {
    ++calls;
    if (!answers)
        setDelayedReply(true);
    return namespaces.contains(appearanceKeys) ? Namespaces{{appearanceKeys, settings}}
                                               : Namespaces();
}

} // namespace kestrel::linux_shell
