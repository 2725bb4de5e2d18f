#include "shells/linux/desktop/appearance/gio_appearance.h"

#include <string>
#include <utility>

namespace kestrel::linux_shell {
namespace {

struct SchemaRelease {
    void operator()(GSettingsSchema* schema) const { g_settings_schema_unref(schema); }
    void operator()(GVariant* value) const { g_variant_unref(value); }
};
using SchemaPtr = std::unique_ptr<GSettingsSchema, SchemaRelease>;
using VariantPtr = std::unique_ptr<GVariant, SchemaRelease>;

AppearanceSettings settingsOfPreference(const QString& preference) {
    if (preference == QLatin1String("prefer-dark"))
        return {.scheme = ColorScheme::dark};
    if (preference == QLatin1String("prefer-light"))
        return {.scheme = ColorScheme::light};
    return {};
}

/// The schema where it is installed and has the key as `type`; asking GIO for settings without
/// having looked would end the program.
SchemaPtr schemaWith(const char* name, const char* key, const GVariantType* type) {
    auto* source = g_settings_schema_source_get_default();
    SchemaPtr schema(source == nullptr ? nullptr
                                       : g_settings_schema_source_lookup(source, name, TRUE));
    if (!schema || !g_settings_schema_has_key(schema.get(), key))
        return nullptr;
    GSettingsSchemaKey* description = g_settings_schema_get_key(schema.get(), key);
    const bool hasType =
        g_variant_type_equal(g_settings_schema_key_get_value_type(description), type);
    g_settings_schema_key_unref(description);
    return hasType ? std::move(schema) : nullptr;
}

} // namespace

struct GioAppearance::Setting {
    enum class Kind { preference, theme, highContrast };

    const char* schema;
    const char* key;
    Kind kind;
};

// In the order in which they count.
const std::vector<GioAppearance::Setting>& GioAppearance::settingsOf(Desktop desktop) {
    using Kind = Setting::Kind;
    static const std::vector<Setting> gnome{
        {"org.gnome.desktop.interface", "color-scheme", Kind::preference},
        {"org.gnome.desktop.interface", "gtk-theme", Kind::theme},
        {"org.gnome.desktop.a11y.interface", "high-contrast", Kind::highContrast}};
    static const std::vector<Setting> cinnamon{
        {"org.x.apps.portal", "color-scheme", Kind::preference},
        {"org.cinnamon.desktop.interface", "gtk-theme", Kind::theme}};
    return desktop == Desktop::gnome ? gnome : cinnamon;
}

GioAppearance::GioAppearance(Desktop desktop) {
    for (const Setting& setting : settingsOf(desktop))
        watch(setting);
    update();
}

GioAppearance::~GioAppearance() {
    for (const Watched& watched : watched_)
        g_signal_handlers_disconnect_by_data(watched.settings.get(), this);
}

void GioAppearance::watch(const Setting& setting) {
    const auto* type = setting.kind == Setting::Kind::highContrast ? G_VARIANT_TYPE_BOOLEAN
                                                                   : G_VARIANT_TYPE_STRING;
    const SchemaPtr schema = schemaWith(setting.schema, setting.key, type);
    if (!schema)
        return;
    ObjectPtr<GSettings> settings(g_settings_new_full(schema.get(), nullptr, nullptr));
    const auto changed =
        +[](GSettings*, const char*, void* self) { static_cast<GioAppearance*>(self)->update(); };
    const std::string signal = std::string("changed::") + setting.key;
    g_signal_connect(settings.get(), signal.c_str(), G_CALLBACK(changed), this);
    watched_.push_back({std::move(settings), &setting});
}

AppearanceSettings GioAppearance::read(const Watched& watched) {
    const VariantPtr value(g_settings_get_value(watched.settings.get(), watched.setting->key));
    if (watched.setting->kind == Setting::Kind::highContrast) {
        const bool isHigh = g_variant_get_boolean(value.get()) != FALSE;
        return {.scheme = std::nullopt, .contrast = isHigh ? Contrast::high : Contrast::normal};
    }
    const QString text = QString::fromUtf8(g_variant_get_string(value.get(), nullptr));
    return watched.setting->kind == Setting::Kind::preference ? settingsOfPreference(text)
                                                              : settingsOfTheme(text);
}

void GioAppearance::update() {
    AppearanceSettings settings;
    for (const Watched& watched : watched_)
        settings = merged(settings, read(watched));
    setSettings(settings);
}

} // namespace kestrel::linux_shell
