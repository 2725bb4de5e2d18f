#include "shells/linux/desktop/appearance/gio_appearance.h"

#include "tests/linux/desktop/waiting.h"

#include <gmock/gmock.h>

#include <optional>

namespace kestrel::linux_shell {
namespace {

constexpr const char* gnomeInterface = "org.gnome.desktop.interface";
constexpr const char* gnomeAccessibility = "org.gnome.desktop.a11y.interface";
constexpr const char* cinnamonInterface = "org.cinnamon.desktop.interface";

class GioAppearanceTest : public testing::Test {
  protected:
    ~GioAppearanceTest() override {
        source.reset();
        reset(gnomeInterface, "color-scheme");
        reset(gnomeInterface, "gtk-theme");
        reset(gnomeAccessibility, "high-contrast");
        reset(cinnamonInterface, "gtk-theme");
    }

    static ObjectPtr<GSettings> settings(const char* schema) {
        return ObjectPtr<GSettings>(g_settings_new(schema));
    }

    static void set(const char* schema, const char* key, const char* value) {
        ASSERT_TRUE(g_settings_set_string(settings(schema).get(), key, value));
    }

    static void reset(const char* schema, const char* key) {
        g_settings_reset(settings(schema).get(), key);
    }

    bool becomes(const AppearanceSettings& settings) {
        return waitUntil([&] { return source->settings() == settings; });
    }

    std::optional<GioAppearance> source;
};

TEST_F(GioAppearanceTest, DefaultsStateNoPreference) {
    source.emplace(GioAppearance::Desktop::gnome);
    EXPECT_EQ(source->settings(), AppearanceSettings());
}

TEST_F(GioAppearanceTest, PreferenceIsKnownAtOnceAndFollowedWhileRunning) {
    set(gnomeInterface, "color-scheme", "prefer-dark");
    source.emplace(GioAppearance::Desktop::gnome);
    EXPECT_EQ(source->settings().scheme, ColorScheme::dark);
    set(gnomeInterface, "color-scheme", "prefer-light");
    EXPECT_TRUE(becomes({.scheme = ColorScheme::light}));
    reset(gnomeInterface, "color-scheme");
    EXPECT_TRUE(becomes({}));
}

TEST_F(GioAppearanceTest, PreferenceComesBeforeTheTheme) {
    set(gnomeInterface, "gtk-theme", "Adwaita-dark");
    source.emplace(GioAppearance::Desktop::gnome);
    EXPECT_EQ(source->settings().scheme, ColorScheme::dark);
    set(gnomeInterface, "color-scheme", "prefer-light");
    EXPECT_TRUE(becomes({.scheme = ColorScheme::light}));
}

TEST_F(GioAppearanceTest, HighContrastIsFollowed) {
    source.emplace(GioAppearance::Desktop::gnome);
    ASSERT_TRUE(g_settings_set_boolean(settings(gnomeAccessibility).get(), "high-contrast", TRUE));
    EXPECT_TRUE(becomes({.scheme = std::nullopt, .contrast = Contrast::high}));
    reset(gnomeAccessibility, "high-contrast");
    EXPECT_TRUE(becomes({}));
}

TEST_F(GioAppearanceTest, CinnamonWithoutAPortalSchemaIsReadByItsTheme) {
    set(cinnamonInterface, "gtk-theme", "Mint-Y-Dark");
    source.emplace(GioAppearance::Desktop::cinnamon);
    EXPECT_EQ(source->settings().scheme, ColorScheme::dark);
    set(cinnamonInterface, "gtk-theme", "Mint-Y");
    EXPECT_TRUE(becomes({}));
}

TEST_F(GioAppearanceTest, DesktopsDoNotHearEachOther) {
    set(gnomeInterface, "color-scheme", "prefer-dark");
    source.emplace(GioAppearance::Desktop::cinnamon);
    EXPECT_EQ(source->settings(), AppearanceSettings());
}

} // namespace
} // namespace kestrel::linux_shell
