#pragma once
// The colours of Plasma's current scheme, which may be any: light, dark, or the user's own.

#include "shells/linux/desktop/appearance/appearance_settings.h"

#include <QDBusConnection>
#include <QPalette>

#include <optional>

namespace kestrel::linux_shell {

/// Reads the desktop's file of colours at once, and again when Plasma says that they have changed.
class KdeColors final : public AppearanceSource {
    Q_OBJECT

  public:
    explicit KdeColors(const QDBusConnection& bus);

    /// None where no file says anything about colours.
    const std::optional<QPalette>& palette() const { return palette_; }

  private:
    void read();

  private Q_SLOTS:
    void globalSettingsChanged(int what, int detail);

  private:
    std::optional<QPalette> palette_;
};

} // namespace kestrel::linux_shell
