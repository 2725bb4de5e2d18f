#include "shells/linux/linux_open_panel.h"

#include "shells/linux/desktop/main_queue.h"
#include "shells/linux/views/application_chooser.h"
#include "shells/linux/views/kit/push_button.h"
#include "shells/linux/views/kit/text_label.h"
#include "tests/linux/desktop/waiting.h"

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QTemporaryDir>
#include <QTimer>

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kestrel::linux_shell {
namespace {

constexpr OpenPanelOptions applications{.content = OpenPanelOptions::Content::applications,
                                        .startFolder = OpenPanelOptions::StartFolder::applications};

class LinuxOpenPanelTest : public testing::Test {
  protected:
    QtMainQueue mainQueue;
    FileIconSource icons{[](const std::string&) { return QIcon(); }};
    LinuxOpenPanel panel{mainQueue, icons};
    QTemporaryDir folder;
    std::unique_ptr<QWidget> window = std::make_unique<QWidget>();

    void SetUp() override {
        ASSERT_TRUE(folder.isValid());
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        window->show();
        window->activateWindow();
        ASSERT_TRUE(waitUntil([this] { return window->isActiveWindow(); }));
    }

    std::string file(const char* name, const char* bytes) {
        QFile created(folder.filePath(QString::fromUtf8(name)));
        EXPECT_TRUE(created.open(QIODevice::WriteOnly));
        created.write(bytes);
        return created.fileName().toStdString();
    }

    /// Shows the panel; each of `answers` is given to the dialog that is on top, once there is one
    /// of its kind.
    std::optional<ChosenFile> run(const OpenPanelOptions& options,
                                  std::vector<std::function<bool()>> answers) {
        QTimer poll;
        std::size_t next = 0;
        QObject::connect(&poll, &QTimer::timeout, [&] {
            if (next == answers.size())
                return;
            const std::size_t now = next++; // the answer may run an event loop
            if (!answers[now]())
                next = now;
        });
        poll.start(1);
        auto chosen = panel.runModal(options);
        EXPECT_EQ(next, answers.size());
        return chosen;
    }

    /// True once `act` has been done to the dialog.
    template <class Dialog>
    static std::function<bool()> with(std::function<void(Dialog&)> act) {
        return [act = std::move(act)] {
            auto* const dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr || !dialog->isVisible())
                return false;
            act(*dialog);
            return true;
        };
    }

    static std::function<bool()> inChooser(std::function<void(ApplicationChooser&)> act) {
        return with(std::move(act));
    }

    static void fill(ApplicationChooser& chooser) {
        chooser.setApplications({{"/apps/org.example.Editor.desktop", "Text Editor", ""}});
    }

    /// Picks a file in the file dialog, or cancels it without one.
    static std::function<bool()> inFileDialog(const std::optional<std::string>& path) {
        return with<QFileDialog>([path](QFileDialog& dialog) {
            if (path)
                dialog.selectFile(QString::fromStdString(*path));
            static_cast<QDialog&>(dialog).done(path ? QDialog::Accepted : QDialog::Rejected);
        });
    }

    static void pressOther(ApplicationChooser& chooser) { chooser.otherButton().click(); }
};

TEST_F(LinuxOpenPanelTest, TheListKeepsTheUserFromItsWindowAlone) {
    run(applications, {inChooser([this](ApplicationChooser& chooser) {
            EXPECT_EQ(chooser.windowModality(), Qt::WindowModal);
            EXPECT_EQ(chooser.parentWidget(), window.get());
            chooser.reject();
        })});
}

TEST_F(LinuxOpenPanelTest, AnInstalledApplicationIsItsEntryAndItsName) {
    const auto chosen = run(applications, {inChooser([](ApplicationChooser& chooser) {
                                fill(chooser);
                                chooser.list().selectFirst();
                                chooser.accept();
                            })});
    EXPECT_EQ(chosen, (ChosenFile{"/apps/org.example.Editor.desktop", "Text Editor"}));
}

TEST_F(LinuxOpenPanelTest, CancellingTheListGivesNothing) {
    const auto chosen = run(applications, {inChooser([](ApplicationChooser& chooser) {
                                fill(chooser);
                                chooser.list().selectFirst();
                                chooser.reject();
                            })});
    EXPECT_EQ(chosen, std::nullopt);
}

TEST_F(LinuxOpenPanelTest, OtherLeadsToTheFileDialogForApplications) {
    const std::string image = file("Tool.AppImage", "");
    ASSERT_TRUE(
        QFile::setPermissions(QString::fromStdString(image), QFile::ReadOwner | QFile::ExeOwner));
    EXPECT_EQ(run(applications, {inChooser(pressOther), inFileDialog(image)}),
              (ChosenFile{image, std::nullopt}));
}

TEST_F(LinuxOpenPanelTest, FromTheFileDialogOneComesBackToTheList) {
    const std::string notes = file("notes.txt", "");
    const auto cancel = inChooser([](ApplicationChooser& chooser) { chooser.reject(); });
    EXPECT_EQ(run(applications, {inChooser(pressOther), inFileDialog(std::nullopt),
                                 inChooser(pressOther), inFileDialog(notes), cancel}),
              std::nullopt);
}

TEST_F(LinuxOpenPanelTest, AnyOtherFileIsPickedInTheFileDialogAtOnce) {
    const std::string notes = file("notes.txt", "");
    EXPECT_EQ(run({}, {inFileDialog(notes)}), (ChosenFile{notes, std::nullopt}));
}

TEST_F(LinuxOpenPanelTest, TheWindowMayGoWhileTheListShows) {
    const auto chosen = run(applications, {inChooser([this](ApplicationChooser& chooser) {
                                fill(chooser);
                                window.release()->deleteLater();
                            })});
    EXPECT_EQ(chosen, std::nullopt);
}

TEST_F(LinuxOpenPanelTest, TheWindowMayGoWhileTheFileDialogShows) {
    const auto chosen =
        run(applications, {inChooser(pressOther), with<QFileDialog>([this](QFileDialog&) {
                               window.release()->deleteLater();
                           })});
    EXPECT_EQ(chosen, std::nullopt);
}

TEST_F(LinuxOpenPanelTest, TheListFillsByItself) {
    // With what the machine has, or with the word that it has nothing.
    const auto isFilled = [] {
        auto* const chooser = qobject_cast<ApplicationChooser*>(QApplication::activeModalWidget());
        if (chooser == nullptr ||
            (chooser->list().count() == 0 && !chooser->nothingFoundLabel().isVisible()))
            return false;
        chooser->reject();
        return true;
    };
    EXPECT_EQ(run(applications, {isFilled}), std::nullopt);
}

} // namespace
} // namespace kestrel::linux_shell
