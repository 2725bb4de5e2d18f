// The icons that come with the program, where the toolkit has no plugin for icons of SVG files and
// the theme has no icon of that name.

#include "shells/linux/launching/file_icons.h"
#include "shells/linux/views/item_icon_pixmap.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <utility>

// The macro wants to stand outside any namespace.
static void initDrawings() { Q_INIT_RESOURCE(kestrel); }

namespace kestrel::linux_shell {
namespace {

/// Leaves the toolkit an empty folder of plugins, from before it first seeks one for icons.
class WithoutPlugins {
  public:
    explicit WithoutPlugins(const QString& folder) {
        EXPECT_TRUE(QDir(folder).mkpath(QStringLiteral("iconengines")));
        QCoreApplication::setLibraryPaths({folder});
    }
    ~WithoutPlugins() { QCoreApplication::setLibraryPaths(paths_); }
    WithoutPlugins(const WithoutPlugins&) = delete;
    WithoutPlugins& operator=(const WithoutPlugins&) = delete;

  private:
    QStringList paths_ = QCoreApplication::libraryPaths();
};

class BuiltInIconsTest : public testing::Test {
  protected:
    void SetUp() override {
        initDrawings();
        QPixmapCache::clear();
        QIcon::setThemeSearchPaths({folder.path()});
        QIcon::setThemeName(QStringLiteral("no-theme"));
    }
    void TearDown() override {
        QIcon::setThemeSearchPaths(themes);
        QIcon::setThemeName(theme);
    }

    std::string make(const char* name, const QByteArray& bytes) const {
        QFile file(folder.filePath(QLatin1String(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        return file.fileName().toStdString();
    }
    QImage shown(const std::string& path, QSize size, qreal ratio) const {
        return itemIconPixmap(FileIcon{path}, source, size, ratio, Qt::black).toImage();
    }
    static QImage drawn(const QString& drawing, QSize size) {
        QImage image(size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        QSvgRenderer(drawing).render(&painter);
        return image;
    }

    const QTemporaryDir folder;
    const WithoutPlugins plugins{folder.filePath(QStringLiteral("plugins"))};
    const QStringList themes = QIcon::themeSearchPaths();
    const QString theme = QIcon::themeName();
    FileIcons icons{{}, std::chrono::seconds(20)};
    const FileIconSource source{
        [this](const std::string& path) { return icons.iconForFile(path); }};
};

/// So many pixels are not transparent.
int paintedPixels(const QImage& image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += image.pixelColor(x, y).alpha() > 0 ? 1 : 0;
    return count;
}

TEST_F(BuiltInIconsTest, AreDrawnSharpAtEveryScale) {
    const std::pair<std::string, QString> samples[] = {
        {folder.path().toStdString(), QStringLiteral(":/kestrel/fallback/folder.svg")},
        {make("letter.txt", "Dear Sir\n"), QStringLiteral(":/kestrel/fallback/document.svg")},
        {make("a.desktop", "[Desktop Entry]\nType=Application\nExec=true\n"),
         QStringLiteral(":/kestrel/fallback/executable.svg")},
        {make("b.desktop", "[Desktop Entry]\nCategories=TerminalEmulator;\n"),
         QStringLiteral(":/kestrel/fallback/terminal.svg")}};
    for (const auto& [path, drawing] : samples)
        for (const qreal ratio : {1.0, 1.5, 2.0}) {
            const QImage image = shown(path, {20, 20}, ratio);
            const QImage expected = drawn(drawing, (QSizeF(20, 20) * ratio).toSize());
            EXPECT_EQ(image.convertToFormat(expected.format()), expected) << path << ' ' << ratio;
            EXPECT_GT(paintedPixels(image), image.width() * image.height() / 4) << path;
        }
}

TEST_F(BuiltInIconsTest, SoAreTheDrawingsThatEntriesName) {
    const std::string drawing =
        make("red.svg", R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 2 1">
                           <path fill="#f00" d="M0 0h2v1H0z"/></svg>)");
    const std::string entry =
        make("c.desktop", "[Desktop Entry]\nIcon=" + QByteArray::fromStdString(drawing) + '\n');
    const QImage image = shown(entry, {16, 16}, 1);
    ASSERT_EQ(image.size(), QSize(16, 16));
    EXPECT_EQ(image.pixelColor(8, 8), QColor(255, 0, 0));
    EXPECT_EQ(paintedPixels(image), 16 * 16) << "not stretched";
}

TEST_F(BuiltInIconsTest, AFileThatIsNoDrawingShowsNothingAndHarmsNobody) {
    const std::string drawing = make("broken.svg", "<svg");
    const std::string entry =
        make("d.desktop", "[Desktop Entry]\nIcon=" + QByteArray::fromStdString(drawing) + '\n');
    EXPECT_EQ(paintedPixels(shown(entry, {16, 16}, 1)), 0);
}

} // namespace
} // namespace kestrel::linux_shell
