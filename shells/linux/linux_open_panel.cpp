#include "shells/linux/linux_open_panel.h"

#include "shells/linux/views/application_chooser.h"

#include <QApplication>
#include <QPointer>

#include <utility>

namespace kestrel::linux_shell {

LinuxOpenPanel::LinuxOpenPanel(MainQueue& mainQueue, const FileIconSource& fileIcons)
    : fileIcons_(fileIcons), applications_(mainQueue) {}

std::optional<ChosenFile> LinuxOpenPanel::runModal(const OpenPanelOptions& options) {
    return options.content == OpenPanelOptions::Content::applications
               ? chooseApplication(options)
               : fileDialog_.runModal(options);
}

std::optional<ChosenFile> LinuxOpenPanel::chooseApplication(const OpenPanelOptions& options) {
    // The window, and the dialog with it, may be closed while the dialog shows.
    const QPointer<ApplicationChooser> chooser(
        new ApplicationChooser(fileIcons_, QApplication::activeWindow()));
    std::optional<ChosenFile> other;
    QObject::connect(chooser, &ApplicationChooser::otherRequested, chooser, [&] {
        other = fileDialog_.runModal(options);
        if (other && chooser != nullptr)
            chooser->accept();
    });
    applications_.list([chooser](InstalledApplications::Applications applications) {
        if (chooser != nullptr)
            chooser->setApplications(std::move(applications));
    });
    const bool accepted = chooser->exec() == QDialog::Accepted;
    if (chooser == nullptr)
        return std::nullopt;
    const InstalledApplication* const selected = chooser->selected();
    if (accepted && !other && selected != nullptr)
        other = ChosenFile{selected->path, selected->name};
    delete chooser;
    return accepted ? other : std::nullopt;
}

} // namespace kestrel::linux_shell
