#include "shells/linux/desktop/appearance/gio_look.h"

#include "tests/linux/desktop/waiting.h"

#include <gmock/gmock.h>

#include <optional>

namespace kestrel::linux_shell {
namespace {

constexpr const char* gnomeInterface = "org.gnome.desktop.interface";
constexpr const char* gnomeAccessibility = "org.gnome.desktop.a11y.interface";
constexpr const char* cinnamonInterface = "org.cinnamon.desktop.interface";

class GioLookTest : public testing::Test {
  protected:
    ~GioLookTest() override {
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

    bool looksLike(const DesktopLook& look) {
        return waitUntil([&] { return source->look() == look; });
    }

    std::optional<GioLook> source;
};

TEST_F(GioLookTest, DefaultsStateNoPreference) {
    source.emplace(GioLook::Desktop::gnome);
    EXPECT_EQ(source->look(), DesktopLook());
}

TEST_F(GioLookTest, PreferenceIsKnownAtOnceAndFollowedWhileRunning) {
    set(gnomeInterface, "color-scheme", "prefer-dark");
    source.emplace(GioLook::Desktop::gnome);
    EXPECT_EQ(source->look().scheme, ColorScheme::dark);
    set(gnomeInterface, "color-scheme", "prefer-light");
    EXPECT_TRUE(looksLike({.scheme = ColorScheme::light}));
    reset(gnomeInterface, "color-scheme");
    EXPECT_TRUE(looksLike({}));
}

TEST_F(GioLookTest, PreferenceComesBeforeTheTheme) {
    set(gnomeInterface, "gtk-theme", "Adwaita-dark");
    source.emplace(GioLook::Desktop::gnome);
    EXPECT_EQ(source->look().scheme, ColorScheme::dark);
    set(gnomeInterface, "color-scheme", "prefer-light");
    EXPECT_TRUE(looksLike({.scheme = ColorScheme::light}));
}

TEST_F(GioLookTest, HighContrastIsFollowed) {
    source.emplace(GioLook::Desktop::gnome);
    ASSERT_TRUE(g_settings_set_boolean(settings(gnomeAccessibility).get(), "high-contrast", TRUE));
    EXPECT_TRUE(looksLike({.scheme = std::nullopt, .contrast = Contrast::high}));
    reset(gnomeAccessibility, "high-contrast");
    EXPECT_TRUE(looksLike({}));
}

TEST_F(GioLookTest, CinnamonWithoutAPortalSchemaIsReadByItsTheme) {
    set(cinnamonInterface, "gtk-theme", "Mint-Y-Dark");
    source.emplace(GioLook::Desktop::cinnamon);
    EXPECT_EQ(source->look().scheme, ColorScheme::dark);
    set(cinnamonInterface, "gtk-theme", "Mint-Y");
    EXPECT_TRUE(looksLike({}));
}

TEST_F(GioLookTest, DesktopsDoNotHearEachOther) {
    set(gnomeInterface, "color-scheme", "prefer-dark");
    source.emplace(GioLook::Desktop::cinnamon);
    EXPECT_EQ(source->look(), DesktopLook());
}

} // namespace
} // namespace kestrel::linux_shell
