#include "shells/linux/desktop/file_dialog_open_panel.h"

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>

#include <gtest/gtest.h>

namespace kestrel::linux_shell {
namespace {

class FileDialogOpenPanelTest : public testing::Test {
  protected:
    QTemporaryDir folder;
    FileDialogOpenPanel panel;
    QStringList nameFilters;
    QString startedIn;
    Qt::WindowModality modality = Qt::NonModal;

    void SetUp() override {
        ASSERT_TRUE(folder.isValid());
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    }

    std::string file(const char* name, QFile::Permissions more = {}, const char* bytes = "") {
        QFile created(folder.filePath(QString::fromUtf8(name)));
        EXPECT_TRUE(created.open(QIODevice::WriteOnly));
        created.write(bytes);
        EXPECT_TRUE(created.setPermissions(QFile::ReadOwner | QFile::WriteOwner | more));
        return created.fileName().toStdString();
    }

    /// Shows the panel and, once it is up, picks `path`, or cancels without one.
    std::optional<ChosenFile> run(const OpenPanelOptions& options,
                                  const std::optional<std::string>& path) {
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, [this, &poll, &path] {
            auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (dialog != nullptr && dialog->isVisible()) {
                poll.stop();
                answer(*dialog, path);
            }
        });
        poll.start(1);
        return panel.runModal(options);
    }

    void answer(QFileDialog& dialog, const std::optional<std::string>& path) {
        nameFilters = dialog.nameFilters();
        startedIn = dialog.directory().absolutePath();
        modality = dialog.windowModality();
        if (path)
            dialog.selectFile(QString::fromStdString(*path));
        static_cast<QDialog&>(dialog).done(path ? QDialog::Accepted : QDialog::Rejected);
    }
};

ChosenFile withoutName(const std::string& path) { return {path, std::nullopt}; }

constexpr OpenPanelOptions applications{.content = OpenPanelOptions::Content::applications,
                                        .startFolder = OpenPanelOptions::StartFolder::applications};

TEST_F(FileDialogOpenPanelTest, ACancelledPanelYieldsNothing) {
    EXPECT_EQ(run({}, std::nullopt), std::nullopt);
    EXPECT_EQ(modality, Qt::WindowModal);
}

TEST_F(FileDialogOpenPanelTest, AnyFileCanBePickedByItsAbsolutePath) {
    const std::string script = file("deploy.command");
    EXPECT_EQ(run({}, script), withoutName(script));
    EXPECT_TRUE(nameFilters.isEmpty() ||
                nameFilters == QStringList{QFileDialog::tr("All Files (*)")});
}

TEST_F(FileDialogOpenPanelTest, AnApplicationIsADesktopEntryOrAnExecutable) {
    const std::string entry = file("editor.desktop");
    const std::string image = file("Editor.AppImage", QFile::ExeOwner);
    const std::string text = file("notes.txt");
    EXPECT_EQ(run(applications, entry), withoutName(entry));
    EXPECT_EQ(run(applications, image), withoutName(image));
    EXPECT_EQ(run(applications, text), std::nullopt);
    ASSERT_FALSE(nameFilters.isEmpty());
    EXPECT_TRUE(nameFilters[0].contains(QStringLiteral("*.desktop")));
    EXPECT_TRUE(nameFilters[0].contains(QStringLiteral("*.AppImage")));
}

TEST_F(FileDialogOpenPanelTest, AnEntryThatIsPickedAsAnApplicationHasTheNameInIt) {
    const std::string entry =
        file("org.example.Editor.desktop", {}, "[Desktop Entry]\nName=Text Editor\n");
    EXPECT_EQ(run(applications, entry), (ChosenFile{entry, "Text Editor"}));
    EXPECT_EQ(run({}, entry), withoutName(entry));
}

TEST_F(FileDialogOpenPanelTest, FoldersAreNoApplications) {
    EXPECT_FALSE(isApplicationFile(folder.path().toStdString()));
    EXPECT_FALSE(isApplicationFile(folder.filePath(QStringLiteral("gone.desktop")).toStdString()));
}

TEST_F(FileDialogOpenPanelTest, StartsInTheFolderForWhatIsPicked) {
    EXPECT_EQ(startFolderPath(OpenPanelOptions::StartFolder::applications),
              "/usr/share/applications");
    EXPECT_EQ(startFolderPath(OpenPanelOptions::StartFolder::desktop),
              QStandardPaths::writableLocation(QStandardPaths::DesktopLocation).toStdString());
    run(applications, std::nullopt);
    EXPECT_EQ(startedIn, QStringLiteral("/usr/share/applications"));
}

} // namespace
} // namespace kestrel::linux_shell
