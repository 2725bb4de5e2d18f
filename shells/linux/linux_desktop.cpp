#include "shells/linux/linux_desktop.h"

#include "shells/linux/desktop/appearance/symbol.h"
#include "shells/linux/desktop/appearance/texts.h"
#include "shells/linux/desktop/settings_window.h"
#include "shells/linux/launching/svg_icon.h"
#include "shells/linux/views/menu_popover_widget.h"
#include "shells/linux/views/settings_widget.h"

#include <string>
#include <utility>

namespace kestrel::linux_shell {
namespace {

/// The program's icon, as installed or as it comes with the program.
QIcon applicationIcon() {
    return QIcon::fromTheme(QStringLiteral("app.kestrel.Kestrel"),
                            svgIcon(QStringLiteral(":/kestrel/icons/app.kestrel.Kestrel.svg")));
}

} // namespace

LinuxDesktop::LinuxDesktop(const QDBusConnection& bus, const FileIconSource& fileIcons)
    : bus_(bus), fileIcons_(fileIcons) {}

std::unique_ptr<StatusItem> LinuxDesktop::makeStatusItem(std::string_view symbol,
                                                         std::string_view description,
                                                         std::function<void()> onClick) {
    const auto draw = [symbol = std::string(symbol)](int pixels) {
        return symbolPixmap(symbol, pixels, Qt::black, 1).toImage();
    };
    auto item =
        std::make_unique<LinuxStatusItem>(bus_, toQString(description), draw, std::move(onClick));
    statusItem_ = item.get();
    return item;
}

std::unique_ptr<Popover> LinuxDesktop::makePopover(std::unique_ptr<MenuPopoverView> view) {
    auto content = std::make_unique<MenuPopoverWidget>(std::move(view), fileIcons_);
    const auto* widget = content.get();
    auto popover = std::make_unique<PopoverWindow>(std::move(content), *statusItem_);
    popover_ = popover.get();
    QObject::connect(widget, &MenuPopoverWidget::contentChanged, popover_,
                     &PopoverWindow::prepareSoon);
    return popover;
}

// The icon is looked up for the first window: that would take a great part of the start.
std::unique_ptr<Window> LinuxDesktop::makeSettingsWindow(std::unique_ptr<SettingsView> view,
                                                         Size contentSize,
                                                         std::function<void()> onClosed) {
    if (windowIcon_.isNull())
        windowIcon_ = applicationIcon();
    return std::make_unique<SettingsWindow>(
        std::make_unique<SettingsWidget>(std::move(view), fileIcons_),
        QSizeF(contentSize.width, contentSize.height).toSize(), windowIcon_, std::move(onClosed));
}

} // namespace kestrel::linux_shell
