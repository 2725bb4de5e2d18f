#pragma once
// The look as the desktop's own settings (GSettings) tell it, for desktops without a settings
// portal and for what an older portal does not tell.

#include "shells/linux/desktop/appearance/desktop_look.h"
#include "shells/linux/glib/glib_ptr.h"

#include <vector>

namespace kestrel::linux_shell {

/// Reads what is installed and follows it as it changes; schemas and keys that are not there are
/// passed over. Changes arrive through GLib's main loop, which is the toolkit's own.
class GioLook final : public LookSource {
    Q_OBJECT

  public:
    enum class Desktop { gnome, cinnamon };

    explicit GioLook(Desktop desktop);
    ~GioLook() override;
    GioLook(const GioLook&) = delete;
    GioLook& operator=(const GioLook&) = delete;

  private:
    struct Setting;
    struct Watched {
        ObjectPtr<GSettings> settings;
        const Setting* setting;
    };

    static const std::vector<Setting>& settingsOf(Desktop desktop);
    static DesktopLook read(const Watched& watched);
    void watch(const Setting& setting);
    void update();

    std::vector<Watched> watched_;
};

} // namespace kestrel::linux_shell
