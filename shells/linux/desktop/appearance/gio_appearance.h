#pragma once
// The appearance as the desktop's own settings (GSettings) tell it, for desktops without a settings
// portal and for what an older portal does not tell.

#include "shells/linux/desktop/appearance/appearance_settings.h"
#include "shells/linux/glib/glib_ptr.h"

#include <vector>

namespace kestrel::linux_shell {

/// Reads what is installed and follows it as it changes; schemas and keys that are not there are
/// passed over. Changes arrive through GLib's main loop, which is the toolkit's own.
class GioAppearance final : public AppearanceSource {
    Q_OBJECT

  public:
    enum class Desktop { gnome, cinnamon };

    explicit GioAppearance(Desktop desktop);
    ~GioAppearance() override;
    GioAppearance(const GioAppearance&) = delete;
    GioAppearance& operator=(const GioAppearance&) = delete;

  private:
    struct Setting;
    struct Watched {
        ObjectPtr<GSettings> settings;
        const Setting* setting;
    };

    static const std::vector<Setting>& settingsOf(Desktop desktop);
    static AppearanceSettings read(const Watched& watched);
    void watch(const Setting& setting);
    void update();

    std::vector<Watched> watched_;
};

} // namespace kestrel::linux_shell
