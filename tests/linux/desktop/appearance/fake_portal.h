#pragma once
// A settings portal that says what a test tells it to, or nothing at all.

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QMap>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

namespace kestrel::linux_shell {

class FakePortal : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

  public:
    static constexpr const char* service = "org.freedesktop.portal.Desktop";

    using Namespaces = QMap<QString, QVariantMap>;

    explicit FakePortal(const QDBusConnection& bus);
    ~FakePortal() override;
    FakePortal(const FakePortal&) = delete;
    FakePortal& operator=(const FakePortal&) = delete;

    /// Changes a setting and says so.
    void set(const QString& key, const QVariant& value);

    QVariantMap settings;
    bool answers = true;
    int calls = 0;

  public Q_SLOTS:
    kestrel::linux_shell::FakePortal::Namespaces ReadAll(const QStringList& namespaces);

  Q_SIGNALS:
    void SettingChanged(const QString& name, const QString& key, const QDBusVariant& value);

  private:
    QDBusConnection bus_;
};

} // namespace kestrel::linux_shell

Q_DECLARE_METATYPE(kestrel::linux_shell::FakePortal::Namespaces)
