#pragma once
// The appearance as the settings portal tells it, the same way on every desktop that has one.

#include "shells/linux/desktop/appearance/appearance_settings.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>

namespace kestrel::linux_shell {

/// Asks the portal when it is there, whenever it comes, and at each change. An answer is waited for
/// without limit and without holding anything up. What it said last holds
/// when the portal leaves or fails. Without a session bus it says nothing.
class SettingsPortal final : public AppearanceSource {
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
