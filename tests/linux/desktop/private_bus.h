#pragma once
// A message bus of a test's own, with as many connections to it as the test needs. It starts no
// services, whatever the machine has installed.

#include <QDBusConnection>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace kestrel::linux_shell {

class PrivateBus {
  public:
    PrivateBus();
    ~PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    /// A new connection, as if from another process. Dropped with the bus.
    QDBusConnection connect();

    /// Ends a connection and with it all that it had registered.
    void disconnect(const QDBusConnection& connection);

  private:
    QTemporaryDir folder_;
    QProcess daemon_;
    QString address_;
    QStringList names_;
};

/// The reply to `method` of the object, by a call that leaves the event loop running.
QDBusMessage callAndWait(const QDBusConnection& from, const QString& service, const QString& path,
                         const QString& interface, const QString& method,
                         const QVariantList& arguments = {});

} // namespace kestrel::linux_shell
