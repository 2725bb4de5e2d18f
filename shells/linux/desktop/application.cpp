#include "shells/linux/desktop/application.h"

#include "shells/linux/desktop/accessible_application.h"

#include <QIcon>
#include <QStringList>
#include <QWidget>

namespace kestrel::linux_shell {
namespace {

// The toolkit reads a theme's whole index for its first icon. Of a theme that is in several folders
// the first folder's index counts, and the icons of all: this has the short index for applications'
// icons.
void putIconIndexFirst() {
    QIcon::setThemeSearchPaths(QStringList{QStringLiteral(":/kestrel/themes")} +
                               QIcon::themeSearchPaths());
}

} // namespace

ToolkitArguments::ToolkitArguments(const char* programPath) : texts_{programPath} {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") &&
        !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") && !qEnvironmentVariableIsEmpty("DISPLAY"))
        texts_.insert(texts_.end(), {"-platform", "xcb;wayland"});
    for (auto& text : texts_)
        pointers_.push_back(text.data());
    count_ = static_cast<int>(pointers_.size());
    pointers_.push_back(nullptr);
}

QtApplication::QtApplication(QApplication& application) {
    application.setApplicationName(QStringLiteral("kestrel"));
    application.setApplicationDisplayName(QStringLiteral("Kestrel"));
    application.setDesktopFileName(QStringLiteral("app.kestrel.Kestrel"));
    application.setQuitOnLastWindowClosed(false);
    installAccessibleApplication();
    putIconIndexFirst();
}

void QtApplication::activate() {
    const auto windows = QApplication::topLevelWidgets();
    for (auto* window : windows) {
        if (window->isVisible() && window->windowType() == Qt::Window) {
            window->raise();
            window->activateWindow();
        }
    }
}

// exit() asks no window whether it agrees, as quit() does.
void QtApplication::terminate() {
    while (auto* popup = QApplication::activePopupWidget())
        popup->hide();
    QCoreApplication::exit(0);
}

} // namespace kestrel::linux_shell
