#include "shells/linux/desktop/appearance/kde_colors.h"

#include "shells/linux/desktop/appearance/palettes.h"

#include <QSettings>
#include <QStandardPaths>
#include <QStringList>

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

namespace kestrel::linux_shell {
namespace {

// The desktop's name for "the colours are others".
constexpr int paletteChanged = 0;

QColor colorOf(const QStringList& channels) {
    if (channels.size() != 3 && channels.size() != 4)
        return {};
    std::vector<int> numbers;
    for (const QString& channel : channels.first(3)) {
        bool isNumber = false;
        numbers.push_back(channel.trimmed().toInt(&isNumber));
        if (!isNumber)
            return {};
    }
    // Invalid where a channel is out of range.
    const bool isInRange =
        std::ranges::all_of(numbers, [](int channel) { return channel >= 0 && channel <= 255; });
    return isInRange ? QColor(numbers[0], numbers[1], numbers[2]) : QColor();
}

/// A setting that the user has not made comes from the files of the session and the system.
class ColorFiles {
  public:
    ColorFiles() {
        add(QStandardPaths::locateAll(QStandardPaths::GenericConfigLocation,
                                      QStringLiteral("kdeglobals")));
        // A scheme that nobody chose may be known by its name only, in the group "General", which
        // the toolkit takes for none.
        const QString scheme = text(QStringLiteral("ColorScheme"));
        if (!scheme.isEmpty()) {
            add({QStandardPaths::locate(QStandardPaths::GenericDataLocation,
                                        QStringLiteral("color-schemes/%1.colors").arg(scheme))});
        }
    }

    QColor color(const char* group, const char* key) const {
        const QString path =
            QStringLiteral("Colors:%1/%2").arg(QLatin1String(group), QLatin1String(key));
        for (const auto& file : files_) {
            const QColor color = colorOf(file->value(path).toStringList());
            if (color.isValid())
                return color;
        }
        return {};
    }

  private:
    void add(const QStringList& paths) {
        for (const QString& path : paths)
            if (!path.isEmpty())
                files_.push_back(std::make_unique<QSettings>(path, QSettings::IniFormat));
    }

    QString text(const QString& path) const {
        for (const auto& file : files_)
            if (file->contains(path))
                return file->value(path).toString();
        return {};
    }

    std::vector<std::unique_ptr<QSettings>> files_;
};

/// Parts that a scheme leaves out look like the window's. None without the window's own colours.
std::optional<PaletteColors> schemeColors(const ColorFiles& files) {
    const auto colorOr = [&files](const char* group, const char* key, const QColor& fallback) {
        const QColor color = files.color(group, key);
        return color.isValid() ? color : fallback;
    };
    PaletteColors colors;
    colors.window = files.color("Window", "BackgroundNormal");
    colors.windowText = files.color("Window", "ForegroundNormal");
    if (!colors.window.isValid() || !colors.windowText.isValid())
        return std::nullopt;
    colors.base = colorOr("View", "BackgroundNormal", colors.window);
    colors.alternateBase = colorOr("View", "BackgroundAlternate", colors.base);
    colors.text = colorOr("View", "ForegroundNormal", colors.windowText);
    colors.button = colorOr("Button", "BackgroundNormal", colors.window);
    colors.buttonText = colorOr("Button", "ForegroundNormal", colors.windowText);
    colors.highlight = colorOr("Selection", "BackgroundNormal", colors.windowText);
    colors.highlightedText = colorOr("Selection", "ForegroundNormal", colors.window);
    colors.toolTip = colorOr("Tooltip", "BackgroundNormal", colors.window);
    colors.toolTipText = colorOr("Tooltip", "ForegroundNormal", colors.windowText);
    colors.link = colorOr("View", "ForegroundLink", colors.text);
    colors.visitedLink = colorOr("View", "ForegroundVisited", colors.text);
    colors.placeholder = files.color("View", "ForegroundInactive");
    return colors;
}

ColorScheme schemeOf(const PaletteColors& colors) {
    return colors.window.lightness() < colors.windowText.lightness() ? ColorScheme::dark
                                                                     : ColorScheme::light;
}

} // namespace

// Any program may send the signal, as the desktop's own do; it only says when to read the files.
KdeColors::KdeColors(const QDBusConnection& bus) {
    if (auto connection = bus; connection.isConnected()) {
        connection.connect(QString(), QStringLiteral("/KGlobalSettings"),
                           QStringLiteral("org.kde.KGlobalSettings"),
                           QStringLiteral("notifyChange"), this,
                           SLOT(globalSettingsChanged(int, int)));
    }
    read();
}

void KdeColors::globalSettingsChanged(int what, int detail) {
    static_cast<void>(detail);
    if (what == paletteChanged)
        read();
}

void KdeColors::read() {
    const auto colors = schemeColors(ColorFiles());
    auto palette = colors ? std::optional(paletteOf(*colors)) : std::nullopt;
    const bool isOther = palette != palette_;
    palette_ = std::move(palette);
    const auto scheme = colors ? std::optional(schemeOf(*colors)) : std::nullopt;
    if (scheme != settings().scheme)
        setSettings({.scheme = scheme});
    else if (isOther)
        Q_EMIT changed();
}

} // namespace kestrel::linux_shell
