#pragma once
// How the user wants programs to look, as a desktop says it, and what every place that says it has
// in common.

#include <QObject>
#include <QString>

#include <optional>

namespace kestrel::linux_shell {

enum class ColorScheme { light, dark };
enum class Contrast { normal, high };

struct AppearanceSettings {
    std::optional<ColorScheme> scheme; ///< none where the user has no preference, or none is known
    Contrast contrast = Contrast::normal;

    bool operator==(const AppearanceSettings&) const = default;
};

/// The first one's scheme, else the second one's; high contrast where either asks for it.
AppearanceSettings merged(const AppearanceSettings& first, const AppearanceSettings& second);

/// What the name of a GTK theme tells: "Mint-Y-Dark-Aqua" is dark, "HighContrastInverse" is dark
/// and of high contrast. A theme whose name says nothing states no preference.
AppearanceSettings settingsOfTheme(const QString& name);

/// A place where a desktop keeps its user's wishes. Main thread only. What it does not know yet,
/// or cannot read, it states no preference on.
class AppearanceSource : public QObject {
    Q_OBJECT

  public:
    const AppearanceSettings& settings() const { return settings_; }

  Q_SIGNALS:
    void changed();

  protected:
    /// Says so where it is another one.
    void setSettings(const AppearanceSettings& settings);

  private:
    AppearanceSettings settings_;
};

} // namespace kestrel::linux_shell
