#pragma once
// The StatusNotifierWatcher that a panel runs, with a host or without one.

#include <QDBusConnection>
#include <QObject>
#include <QStringList>

namespace kestrel::linux_shell {

class FakeWatcher : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hasHost)

  public:
    static constexpr const char* service = "org.kde.StatusNotifierWatcher";

    FakeWatcher(const QDBusConnection& bus, bool hasHost) : bus_(bus), hasHost_(hasHost) {
        bus_.registerObject(QStringLiteral("/StatusNotifierWatcher"), this,
                            QDBusConnection::ExportAllContents);
        bus_.registerService(QLatin1String(service));
    }
    ~FakeWatcher() override {
        bus_.unregisterService(QLatin1String(service));
        bus_.unregisterObject(QStringLiteral("/StatusNotifierWatcher"));
    }
    FakeWatcher(const FakeWatcher&) = delete;
    FakeWatcher& operator=(const FakeWatcher&) = delete;

    bool hasHost() const { return hasHost_; }
    void setHost(bool hasHost) {
        hasHost_ = hasHost;
        hasHost ? Q_EMIT StatusNotifierHostRegistered() : Q_EMIT StatusNotifierHostUnregistered();
    }

    /// The items that have registered, in order.
    QStringList items;

  public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString& item) { items.append(item); }

  Q_SIGNALS:
    void StatusNotifierHostRegistered();
    void StatusNotifierHostUnregistered();

  private:
    QDBusConnection bus_;
    bool hasHost_;
};

} // namespace kestrel::linux_shell
