#pragma once
// One running program for each session, known by its D-Bus name. Starting it again, from a menu or
// by hand, activates the one that runs.

#include "shells/linux/desktop/startup.h"

#include <QDBusConnection>
#include <QObject>

namespace kestrel::linux_shell {

/// Main thread only. Without a session bus this program is taken for the only one.
class SingleInstance final : public QObject {
    Q_OBJECT

  public:
    enum class Role {
        first,  ///< this process is the program
        second, ///< another one is, and has been activated: end
    };

    /// `startup` is told to the other program when there is one.
    SingleInstance(const QDBusConnection& bus, const Startup& startup);
    ~SingleInstance() override;
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    /// Claims the name. Waits for the other program's answer when there is one, at most 3 s.
    Role claim();

  Q_SIGNALS:
    /// The user has started the program once more, by that start. Comes from the event loop.
    void activated(const Startup& startup);
    /// It was the bus that has started this very process, at its user's wish. Comes from the event
    /// loop.
    void startedByHand(const Startup& startup);

  private:
    friend class ApplicationAdaptor;
    void activate(const QVariantMap& platformData);
    void activateOther();

    QDBusConnection bus_;
    Startup startup_;
    bool isFirst_ = false;
    bool isStartedByBus_;
};

} // namespace kestrel::linux_shell
