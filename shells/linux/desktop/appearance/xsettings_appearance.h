#pragma once
// The appearance as the theme of an X11 desktop tells it (XSETTINGS): Xfce, MATE, and whoever runs
// a settings daemon under a plain window manager.

#include "shells/linux/desktop/appearance/appearance_settings.h"

#include <QAbstractNativeEventFilter>

#include <cstdint>

namespace kestrel::linux_shell {

/// Follows the settings daemon's changes and restarts; what it said last holds when it leaves.
/// Says nothing where the program does not run on X11.
class XSettingsAppearance final : public AppearanceSource, public QAbstractNativeEventFilter {
    Q_OBJECT

  public:
    XSettingsAppearance();
    ~XSettingsAppearance() override;
    XSettingsAppearance(const XSettingsAppearance&) = delete;
    XSettingsAppearance& operator=(const XSettingsAppearance&) = delete;

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

  private:
    void findDaemon();
    void read();

    std::uint32_t selection_ = 0;
    std::uint32_t property_ = 0;
    std::uint32_t manager_ = 0;
    std::uint32_t daemon_ = 0; ///< its window; 0 while none is known
};

} // namespace kestrel::linux_shell
