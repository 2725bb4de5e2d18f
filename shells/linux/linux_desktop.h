#pragma once
// Makes the status item, the popover and the settings window, with this shell's widgets in them.

#include "app/desktop.h"
#include "shells/linux/desktop/popover_window.h"
#include "shells/linux/desktop/status_item.h"
#include "shells/linux/views/file_icon_source.h"

#include <QDBusConnection>
#include <QIcon>
#include <QPointer>

namespace kestrel::linux_shell {

/// Main thread only.
class LinuxDesktop final : public Desktop {
  public:
    /// The source of the icons outlives it.
    LinuxDesktop(const QDBusConnection& bus, const FileIconSource& fileIcons);

    std::unique_ptr<StatusItem> makeStatusItem(std::string_view symbol,
                                               std::string_view description,
                                               std::function<void()> onClick) override;
    std::unique_ptr<Popover> makePopover(std::unique_ptr<MenuPopoverView> view) override;
    std::unique_ptr<Window> makeSettingsWindow(std::unique_ptr<SettingsView> view, Size contentSize,
                                               std::function<void()> onClosed) override;

    /// The ones made last; null when they are gone.
    LinuxStatusItem* statusItem() const { return statusItem_; }
    PopoverWindow* popover() const { return popover_; }

  private:
    QDBusConnection bus_;
    const FileIconSource& fileIcons_;
    QPointer<LinuxStatusItem> statusItem_;
    QPointer<PopoverWindow> popover_;
    QIcon windowIcon_; ///< kept, because the images of each new icon would stay in Qt's cache
};

} // namespace kestrel::linux_shell
