#pragma once
// The look as the theme of an X11 desktop tells it (XSETTINGS): Xfce, MATE, and whoever runs a
// settings daemon under a plain window manager.

#include "shells/linux/desktop/appearance/desktop_look.h"

#include <QAbstractNativeEventFilter>

#include <cstdint>

namespace kestrel::linux_shell {

/// Follows the settings daemon's changes and restarts; one that leaves leaves its last word in
/// force. Never a word where the program does not run on X11.
class XSettingsLook final : public LookSource, public QAbstractNativeEventFilter {
    Q_OBJECT

  public:
    XSettingsLook();
    ~XSettingsLook() override;
    XSettingsLook(const XSettingsLook&) = delete;
    XSettingsLook& operator=(const XSettingsLook&) = delete;

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
