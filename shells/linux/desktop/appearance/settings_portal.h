#pragma once
// The look as the settings portal tells it, the same way on every desktop that has one.

#include "shells/linux/desktop/appearance/desktop_look.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>

namespace kestrel::linux_shell {

/// Asks the portal when it is there, whenever it comes, and at each change. An answer is waited for
/// without limit and without holding anything up. A portal that leaves, or fails, leaves its last
/// word in force. Without a session bus there is never a word.
class SettingsPortal final : public LookSource {
    Q_OBJECT

  public:
    explicit SettingsPortal(const QDBusConnection& bus);

  private:
    void watchAnswer(const QDBusPendingCall& call);

  private Q_SLOTS:
    void ask();

  private:
    QDBusConnection bus_;
    QDBusServiceWatcher watcher_;
};

} // namespace kestrel::linux_shell
