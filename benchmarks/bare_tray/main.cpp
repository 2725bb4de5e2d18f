// What Kestrel is measured against: the least that a Qt program can be that shows a tray icon, and
// with the argument "popup" the least that opens a list of 20 rows with icons at a click on it.

#include <QApplication>
#include <QColor>
#include <QCursor>
#include <QIcon>
#include <QListWidget>
#include <QPixmap>
#include <QSystemTrayIcon>

#include <array>
#include <memory>

namespace {

constexpr int rowCount = 20;
constexpr std::array names{"utilities-terminal",       "system-file-manager", "web-browser",
                           "accessories-text-editor",  "help-browser",        "text-x-generic",
                           "application-x-executable", "text-x-script",       "folder",
                           "accessories-calculator"};

void addPopup(QSystemTrayIcon& icon, QListWidget& list) {
    // Where the desktop names no theme the toolkit would find none of the icons.
    QIcon::setFallbackThemeName(QStringLiteral("Adwaita"));
    for (int row = 0; row < rowCount; ++row) {
        const auto name = QString::fromLatin1(names[static_cast<std::size_t>(row) % names.size()]);
        list.addItem(
            new QListWidgetItem(QIcon::fromTheme(name), QStringLiteral("Item %1").arg(row)));
    }
    list.setWindowFlag(Qt::Popup);
    list.resize(240, 361);
    QObject::connect(&icon, &QSystemTrayIcon::activated, &list, [&list] {
        list.move(QCursor::pos());
        list.show();
    });
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QPixmap pixmap(22, 22);
    pixmap.fill(QColor(220, 0, 90));
    QSystemTrayIcon icon{QIcon(pixmap)};
    std::unique_ptr<QListWidget> list;
    if (QApplication::arguments().value(1) == QLatin1String("popup")) {
        list = std::make_unique<QListWidget>();
        addPopup(icon, *list);
    }
    icon.show();
    return QApplication::exec();
}
