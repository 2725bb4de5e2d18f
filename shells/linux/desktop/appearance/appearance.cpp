#include "shells/linux/desktop/appearance/appearance.h"

#include "shells/linux/desktop/appearance/gio_appearance.h"
#include "shells/linux/desktop/appearance/kde_colors.h"
#include "shells/linux/desktop/appearance/palettes.h"
#include "shells/linux/desktop/appearance/settings_portal.h"
#include "shells/linux/desktop/appearance/user_style.h"
#include "shells/linux/desktop/appearance/xsettings_appearance.h"
#include "shells/linux/desktop/current_desktop.h"

#include <QApplication>
#include <QEvent>

#include <utility>

namespace kestrel::linux_shell {

Appearance::Appearance(const QDBusConnection& bus) : isUsersOwn_(isUsersOwn(styleSettings())) {
    add(std::make_unique<SettingsPortal>(bus));
    addThoseOfTheDesktop(bus);
    update();
    if (isUsersOwn_) {
        mendPlaceholders();
        qApp->installEventFilter(this);
    }
}

Appearance::~Appearance() = default;

void Appearance::add(std::unique_ptr<AppearanceSource> source) {
    connect(source.get(), &AppearanceSource::changed, this, &Appearance::update);
    sources_.push_back(std::move(source));
}

void Appearance::addThoseOfTheDesktop(const QDBusConnection& bus) {
    if (currentDesktopIs(u"KDE")) {
        auto colors = std::make_unique<KdeColors>(bus);
        kdeColors_ = colors.get();
        add(std::move(colors));
        return;
    }
    if (currentDesktopIs(u"X-Cinnamon") || currentDesktopIs(u"Cinnamon"))
        add(std::make_unique<GioAppearance>(GioAppearance::Desktop::cinnamon));
    else if (!currentDesktopIs(u"XFCE") && !currentDesktopIs(u"MATE") && !currentDesktopIs(u"LXDE"))
        add(std::make_unique<GioAppearance>(GioAppearance::Desktop::gnome));
    add(std::make_unique<XSettingsAppearance>());
}

void Appearance::update() {
    AppearanceSettings settings;
    for (const auto& source : sources_)
        settings = merged(settings, source->settings());
    const bool isOther = settings.scheme != settings_.scheme;
    settings_ = settings;
    if (!isUsersOwn_)
        apply(wantedPalette());
    if (isOther)
        Q_EMIT colorSchemeChanged();
}

// Plasma's colours come before a scheme's: the user may have chosen each of them.
std::optional<QPalette> Appearance::wantedPalette() const {
    if (kdeColors_ != nullptr && kdeColors_->palette())
        return kdeColors_->palette();
    if (!settings_.scheme && settings_.contrast == Contrast::normal)
        return std::nullopt;
    return paletteFor(settings_.scheme.value_or(ColorScheme::light), settings_.contrast);
}

void Appearance::mendPlaceholders() {
    const QPalette used = QApplication::palette();
    if (const QPalette mended = withReadablePlaceholder(used); mended != used)
        QApplication::setPalette(mended);
}

// A platform theme may follow a switch of its own.
bool Appearance::eventFilter(QObject* watched, QEvent* event) {
    if (watched == qApp && event->type() == QEvent::ApplicationPaletteChange)
        mendPlaceholders();
    return QObject::eventFilter(watched, event);
}

void Appearance::apply(const std::optional<QPalette>& palette) {
    if (palette != applied_) {
        applied_ = palette;
        QApplication::setPalette(palette.value_or(QPalette()));
    }
}

} // namespace kestrel::linux_shell
