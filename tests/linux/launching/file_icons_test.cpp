#include "shells/linux/launching/file_icons.h"

#include "tests/linux/launching/launching_fixture.h"

#include <QGuiApplication>
#include <QPixmap>
#include <sys/stat.h>

#include <atomic>
#include <cstdlib>

namespace kestrel::linux_shell {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;
using std::chrono::seconds;

/// One for all tests of this program, as in any Qt program.
class ApplicationEnvironment : public testing::Environment {
  public:
    void SetUp() override { application_ = std::make_unique<QGuiApplication>(count_, arguments_); }
    void TearDown() override { application_.reset(); }

  private:
    int count_ = 1;
    char name_[5] = "test";
    char* arguments_[2] = {name_, nullptr};
    std::unique_ptr<QGuiApplication> application_;
};

const auto* const environment = testing::AddGlobalTestEnvironment(new ApplicationEnvironment);

/// The smallest image: one pixel.
constexpr std::string_view image = "P3 1 1 255 255 0 0\n";

/// A theme of the test's own, with the icons that it names.
class FileIconsTest : public LaunchingTest {
  protected:
    FileIconsTest() {
        themes_ = files() / "themes";
        useThemesOfTheTest();
        QIcon::setFallbackThemeName(QString());
    }

    void useThemesOfTheTest() { QIcon::setThemeSearchPaths({QString::fromStdString(themes_)}); }
    /// `theme` has `icons` and no others.
    void makeTheme(const std::string& theme, const std::vector<std::string>& icons) {
        const fs::path folder = themes_ / theme;
        fs::create_directories(folder / "all");
        writeFile(folder / "index.theme",
                  "[Icon Theme]\nName=Test\nDirectories=all\n\n"
                  "[all]\nSize=16\nType=Scalable\nMinSize=1\nMaxSize=512\n");
        for (const std::string& icon : icons)
            writeFile(folder / "all" / (icon + ".png"), image);
    }
    void useTheme(const std::vector<std::string>& icons) {
        // Qt keeps what it knows of a theme by its name.
        static int count = 0;
        const std::string name = "test-theme-" + std::to_string(++count);
        makeTheme(name, icons);
        QIcon::setThemeName(QString::fromStdString(name));
    }
    std::string nameFor(const std::string& path) {
        return icons_.iconForFile(path).name().toStdString();
    }
    std::string make(const std::string& name, std::string_view bytes, unsigned mode = 0644) {
        writeFile(files() / name, bytes, mode);
        return files() / name;
    }

    FileIcons icons_{{}, seconds(20)};

  private:
    fs::path themes_;
};

TEST_F(FileIconsTest, TheFirstNameThatTheThemeHasIsTaken) {
    const std::string script = make("tool.sh", "#!/bin/sh\n");
    useTheme({"text-x-generic", "text-x-script", "unknown"});
    EXPECT_EQ(nameFor(script), "text-x-script");
    useTheme({"text-x-script", "application-x-shellscript"});
    EXPECT_EQ(nameFor(script), "application-x-shellscript");
    EXPECT_EQ(nameFor(make("photo.jpg", "\xff\xd8\xff")), "");
    useTheme({"image-x-generic"});
    EXPECT_EQ(nameFor(make("photo2.jpg", "\xff\xd8\xff")), "image-x-generic");
}

TEST_F(FileIconsTest, SymbolicVariantsAreNotTaken) {
    useTheme({"application-x-shellscript-symbolic", "text-x-script-symbolic", "text-x-generic"});
    EXPECT_EQ(nameFor(make("tool.sh", "#!/bin/sh\n")), "text-x-generic");
}

TEST_F(FileIconsTest, FoldersProgramsAndDocumentsHaveTheirOwn) {
    useTheme({"folder", "application-x-executable", "text-x-generic"});
    EXPECT_EQ(nameFor(files()), "folder");
    EXPECT_EQ(nameFor(recorder()), "application-x-executable");
    EXPECT_EQ(nameFor(make("notes.txt", "text\n")), "text-x-generic");
    EXPECT_EQ(nameFor(make("tool", std::string_view("\0\1\2\3", 4), 0755)),
              "application-x-executable");
}

TEST_F(FileIconsTest, ADesktopEntryShowsItsOwnIcon) {
    useTheme({"my-app", "application-x-executable", "utilities-terminal", "text-x-generic"});
    EXPECT_EQ(nameFor(makeEntry("a.desktop", "Exec=true\nIcon=my-app\n")), "my-app");
    EXPECT_EQ(nameFor(makeEntry("b.desktop", "Exec=/nowhere\nIcon=my-app.png\n")), "my-app");
    EXPECT_EQ(nameFor(makeEntry("c.desktop", "Exec=true\nIcon=unknown-app\n")),
              "application-x-executable");
    EXPECT_EQ(nameFor(makeEntry("d.desktop", "Exec=true\n")), "application-x-executable");
    EXPECT_EQ(nameFor(makeEntry("e.desktop", "Categories=System;TerminalEmulator;\n")),
              "utilities-terminal");
    EXPECT_EQ(nameFor(make("noise.desktop", "\xff\xfe")), "text-x-generic");
}

TEST_F(FileIconsTest, ADesktopEntryMayNameAnImageFile) {
    useTheme({"application-x-executable"});
    const std::string file = make("image.ppm", image);
    const QIcon icon = icons_.iconForFile(makeEntry("a.desktop", "Exec=true\nIcon=" + file + "\n"));
    const QPixmap pixmap = icon.pixmap(1, 1);
    ASSERT_FALSE(pixmap.isNull());
    EXPECT_EQ(pixmap.toImage().pixelColor(0, 0), QColor(255, 0, 0));
    EXPECT_EQ(nameFor(makeEntry("b.desktop", "Exec=true\nIcon=/nowhere.png\n")),
              "application-x-executable");
}

TEST_F(FileIconsTest, WhatDoesNotExistHasTheGenericIcon) {
    useTheme({"text-x-generic", "folder"});
    for (const std::string path : {"/nowhere/at/all", "relative", "~/x", "", "/nowhere/x.desktop"})
        EXPECT_EQ(nameFor(path), "text-x-generic") << path;
    EXPECT_EQ(nameFor(std::string("/usr\0/bin", 9)), "text-x-generic");
    EXPECT_EQ(nameFor('/' + std::string(5000, 'a')), "text-x-generic");
}

TEST_F(FileIconsTest, SpecialFilesDoNotBlock) {
    useTheme({"text-x-generic"});
    for (const char* name : {"pipe", "pipe.desktop", "pipe.txt"}) {
        ASSERT_EQ(::mkfifo((files() / name).c_str(), 0755), 0);
        EXPECT_EQ(nameFor(files() / name), "text-x-generic");
    }
    EXPECT_EQ(nameFor("/dev/zero"), "text-x-generic");
}

TEST_F(FileIconsTest, AChangedFileChangesItsIcon) {
    useTheme({"one", "two", "folder", "text-x-generic"});
    const std::string path = makeEntry("a.desktop", "Icon=one\n");
    EXPECT_EQ(nameFor(path), "one");
    EXPECT_EQ(nameFor(path), "one");
    fs::remove(path);
    EXPECT_EQ(nameFor(path), "text-x-generic");
    makeEntry("a.desktop", "Icon=two\nComment=longer\n");
    EXPECT_EQ(nameFor(path), "two");
    fs::remove(path);
    fs::create_directory(path);
    EXPECT_EQ(nameFor(path), "folder");
}

TEST_F(FileIconsTest, AnotherThemeChangesTheIcon) {
    const std::string path = make("notes.txt", "text\n");
    useTheme({"text-plain"});
    EXPECT_EQ(nameFor(path), "text-plain");
    useTheme({"text-x-generic"});
    EXPECT_EQ(nameFor(path), "text-x-generic");
}

TEST_F(FileIconsTest, ManyFilesAreRemembered) {
    useTheme({"text-x-generic"});
    for (int i = 0; i < 1200; ++i)
        ASSERT_EQ(nameFor("/nowhere/" + std::to_string(i)), "text-x-generic");
}

TEST_F(FileIconsTest, AnAnswerThatComesLateIsShownNextTime) {
    useTheme({"folder", "text-x-generic", "application-x-executable"});
    std::atomic<int> changes = 0;
    FileIcons icons([&changes] { ++changes; }, milliseconds(0));
    const auto name = [&icons, this] { return icons.iconForFile(files()).name().toStdString(); };
    const std::string first = name();
    EXPECT_TRUE(first == "folder" || first == "text-x-generic") << first;
    if (first != "folder") {
        EXPECT_TRUE(waitUntil([&changes] { return changes > 0; }));
        EXPECT_EQ(name(), "folder");
    }
    // What is known is shown while the file system is asked whether it still is so.
    for (int i = 0; i < 50; ++i)
        EXPECT_EQ(name(), "folder");
    EXPECT_LE(changes, 1);
}

TEST_F(FileIconsTest, AnEntryOfASizeThatFillsTheMemoryIsNotRead) {
    useTheme({"bird", "text-x-generic", "unknown"});
    const std::string entry = make("huge.desktop", "[Desktop Entry]\nIcon=bird\n");
    fs::resize_file(entry, std::uintmax_t{1} << 40);
    EXPECT_NE(nameFor(entry), "bird");
    fs::resize_file(entry, 26);
    EXPECT_EQ(nameFor(entry), "bird");
}

TEST_F(FileIconsTest, ABareSessionFallsBackToAFullTheme) {
    makeTheme("Adwaita", {"folder"});
    for (const char* bare : {"", "hicolor"}) {
        QIcon::setThemeName(QString::fromLatin1(bare));
        useThemesOfTheTest(); // Qt 6.8 forgets them with the theme's name
        QIcon::setFallbackThemeName(QString());
        FileIcons fresh;
        EXPECT_EQ(fresh.iconForFile(files()).name(), QStringLiteral("folder")) << bare;
    }
}

TEST_F(FileIconsTest, AThemeThatTheUserChoseGetsNoOtherFallback) {
    useTheme({"text-x-generic"});
    QIcon::setFallbackThemeName(QStringLiteral("chosen"));
    const FileIcons fresh;
    EXPECT_EQ(QIcon::fallbackThemeName(), QStringLiteral("chosen"));
}

} // namespace
} // namespace kestrel::linux_shell
