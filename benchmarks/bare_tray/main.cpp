// What Kestrel is measured against: the least that a Qt program can be that shows a tray icon, and
// with the argument "popup" the least that opens a list of 20 rows with icons at a click on it.

#include <QApplication>
#include <QColor>
#include <QCursor>
#include <QIcon>
#include <QListWidget>
#include <QPixmap>
#include <QSystemTrayIcon>
#include <QVBoxLayout>
#include <QWidget>

#include <array>

namespace {

constexpr int rowCount = 20;
constexpr std::array names{"utilities-terminal",       "system-file-manager", "web-browser",
                           "accessories-text-editor",  "help-browser",        "text-x-generic",
                           "application-x-executable", "text-x-script",       "folder",
                           "accessories-calculator"};

void addPopup(QSystemTrayIcon& icon, QWidget& popup) {
    // Where the desktop names no theme the toolkit would find none of the icons.
    QIcon::setFallbackThemeName(QStringLiteral("Adwaita"));
    auto* list = new QListWidget;
    for (int row = 0; row < rowCount; ++row) {
        const auto name = QString::fromLatin1(names[static_cast<std::size_t>(row) % names.size()]);
        list->addItem(
            new QListWidgetItem(QIcon::fromTheme(name), QStringLiteral("Item %1").arg(row)));
    }
    auto* layout = new QVBoxLayout(&popup);
    layout->setContentsMargins({});
    layout->addWidget(list);
    popup.resize(240, 361);
    QObject::connect(&icon, &QSystemTrayIcon::activated, &popup, [&popup] {
        popup.move(QCursor::pos());
        popup.show();
    });
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QPixmap pixmap(22, 22);
    pixmap.fill(QColor(220, 0, 90));
    QSystemTrayIcon icon{QIcon(pixmap)};
    QWidget popup(nullptr, Qt::Popup);
    if (QApplication::arguments().value(1) == QLatin1String("popup"))
        addPopup(icon, popup);
    icon.show();
    return QApplication::exec();
}
