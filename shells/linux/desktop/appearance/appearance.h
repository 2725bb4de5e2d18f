#pragma once
// Light, dark and high contrast as the desktop's own switch says, at the start and while running.
// The shell keeps one, next to the application object and not longer.
//
// Asked are, and the first that states a preference counts:
// - the settings portal, on every desktop where it runs;
// - Plasma: its colour scheme, whose colours are used as they are;
// - Cinnamon: its own settings, then the theme of its X11 programs (XSETTINGS);
// - Xfce, MATE and LXDE: the theme of X11 programs;
// - elsewhere, on GNOME for one: GNOME's settings, which others share, then the theme of X11
//   programs.
// High contrast is on when any of them says so.
//
// Without any preference the toolkit's palette stays. It stays as well where it is the user's own
// choice (see user_style.h), but for placeholders that nobody can read, which platform themes
// without a colour for them leave behind; what the desktop wants is told all the same.

#include "shells/linux/desktop/appearance/appearance_settings.h"

#include <QDBusConnection>
#include <QObject>
#include <QPalette>

#include <memory>
#include <optional>
#include <vector>

namespace kestrel::linux_shell {

class KdeColors;

/// Main thread only. Waits for nobody: an answer that comes late is applied when it comes.
class Appearance final : public QObject {
    Q_OBJECT

  public:
    /// To be made while the application's palette is still as the toolkit has made it.
    explicit Appearance(const QDBusConnection& bus);
    ~Appearance() override;
    Appearance(const Appearance&) = delete;
    Appearance& operator=(const Appearance&) = delete;

    /// What the desktop wants of programs, be it applied or not; none where that is not known. A
    /// desktop's panel need not follow it.
    std::optional<ColorScheme> colorScheme() const { return settings_.scheme; }

    /// True where the user has chosen how widgets look (see user_style.h).
    bool isStyleUsersOwn() const { return isUsersOwn_; }

    bool eventFilter(QObject* watched, QEvent* event) override;

  Q_SIGNALS:
    void colorSchemeChanged();

  private:
    void add(std::unique_ptr<AppearanceSource> source);
    void addThoseOfTheDesktop(const QDBusConnection& bus);
    void update();
    std::optional<QPalette> wantedPalette() const;
    static void mendPlaceholders();
    void apply(const std::optional<QPalette>& palette);

    std::vector<std::unique_ptr<AppearanceSource>> sources_; ///< in the order in which they count
    const KdeColors* kdeColors_ = nullptr;
    const bool isUsersOwn_;
    AppearanceSettings settings_;
    std::optional<QPalette> applied_; ///< none while the palette is the toolkit's
};

} // namespace kestrel::linux_shell
