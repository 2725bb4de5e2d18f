#include "shells/linux/desktop/open_panel.h"

#include <QApplication>
#include <QFileDialog>
#include <QPointer>
#include <QStandardPaths>

namespace kestrel::linux_shell {
namespace {

// The folder with the system's desktop entries; the root where there is none.
QString applicationsFolder() {
    const auto folders = QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation);
    for (const auto& folder : folders) {
        if (folder.startsWith(QLatin1String("/usr/")) && QFileInfo(folder).isDir()) {
            return folder;
        }
    }
    return QStringLiteral("/");
}

QString startFolder(const OpenPanelOptions& options) {
    return options.startFolder == OpenPanelOptions::StartFolder::applications
               ? applicationsFolder()
               : QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
}

} // namespace

std::optional<std::string> QtOpenPanel::runModal(const OpenPanelOptions& options) {
    const QPointer<QFileDialog> dialog = new QFileDialog(QApplication::activeWindow());
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setDirectory(startFolder(options));
    const bool isAccepted = dialog->exec() == QDialog::Accepted;
    if (dialog == nullptr) {
        return std::nullopt;
    }
    const QStringList files = dialog->selectedFiles();
    dialog->deleteLater();
    if (!isAccepted || files.isEmpty()) {
        return std::nullopt;
    }
    return files.first().toStdString();
}

} // namespace kestrel::linux_shell
