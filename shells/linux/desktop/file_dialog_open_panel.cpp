#include "shells/linux/desktop/file_dialog_open_panel.h"

#include "shells/linux/desktop/appearance/texts.h"
#include "shells/linux/launching/installed_applications.h"
#include "views/settings/add_edit_item_style.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QPointer>
#include <QStandardPaths>

#include <utility>

namespace kestrel::linux_shell {

namespace {

QString startFolder(OpenPanelOptions::StartFolder folder) {
    if (folder == OpenPanelOptions::StartFolder::applications)
        return QStringLiteral("/usr/share/applications");
    return QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
}

QFileDialog::FileMode fileMode(const OpenPanelOptions& options) {
    if (options.canChooseDirectories && !options.canChooseFiles)
        return QFileDialog::Directory;
    return options.allowsMultipleSelection ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile;
}

void configure(QFileDialog& dialog, const OpenPanelOptions& options) {
    dialog.setWindowModality(Qt::WindowModal);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(fileMode(options));
    dialog.setOption(QFileDialog::DontResolveSymlinks, !options.resolvesAliases);
    dialog.setDirectory(startFolder(options.startFolder));
    if (options.content == OpenPanelOptions::Content::applications) {
        // Executables have no ending to filter by; the second filter shows them.
        const QString name = textFor(add_edit_item_style::appRow.label);
        dialog.setNameFilters({name + QStringLiteral(" (*.desktop *.AppImage *.appimage)"),
                               QCoreApplication::translate("QFileDialog", "All files (*)")});
    }
}

} // namespace

std::string startFolderPath(OpenPanelOptions::StartFolder folder) {
    return startFolder(folder).toStdString();
}

bool isApplicationFile(const std::string& path) {
    const QFileInfo file(QString::fromStdString(path));
    const bool desktopEntry = file.suffix() == u"desktop";
    return file.isFile() && (desktopEntry || file.isExecutable());
}

std::optional<ChosenFile> FileDialogOpenPanel::runModal(const OpenPanelOptions& options) {
    // The window, and the dialog with it, may be closed while the dialog shows.
    const QPointer<QFileDialog> dialog(new QFileDialog(QApplication::activeWindow()));
    configure(*dialog, options);
    const bool accepted = dialog->exec() == QDialog::Accepted;
    if (dialog == nullptr)
        return std::nullopt;
    const QStringList chosen = accepted ? dialog->selectedFiles() : QStringList();
    delete dialog;
    if (chosen.isEmpty() || chosen.first().isEmpty())
        return std::nullopt;
    std::string path = QFileInfo(chosen.first()).absoluteFilePath().toStdString();
    if (options.content != OpenPanelOptions::Content::applications)
        return ChosenFile{std::move(path), std::nullopt};
    if (!isApplicationFile(path))
        return std::nullopt;
    auto name = nameOfEntry(path);
    return ChosenFile{std::move(path), std::move(name)};
}

} // namespace kestrel::linux_shell
