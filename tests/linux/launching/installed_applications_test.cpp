#include "shells/linux/launching/installed_applications.h"

#include "tests/linux/launching/launching_fixture.h"

#include <QLocale>

#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace kestrel::linux_shell {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using Applications = InstalledApplications::Applications;

/// The main thread's queue, to which the reading thread posts.
class LockedMainQueue final : public MainQueue {
  public:
    void async(std::function<void()> task) override {
        const std::lock_guard lock(mutex_);
        tasks_.push_back(std::move(task));
    }

    /// Waits for a task and runs it.
    bool runNext() {
        std::function<void()> task;
        const bool isThere = waitUntil([&] {
            const std::lock_guard lock(mutex_);
            if (!tasks_.empty())
                task = std::exchange(tasks_, {}).front();
            return task != nullptr;
        });
        if (isThere)
            task();
        return isThere;
    }

    bool isEmpty() {
        const std::lock_guard lock(mutex_);
        return tasks_.empty();
    }

  private:
    std::mutex mutex_;
    std::vector<std::function<void()>> tasks_;
};

/// GLib asks for the folders of data once in the life of a process, and so all tests share them:
/// the user's own, the system's, and one as Flatpak exports it.
class InstalledApplicationsTest : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        folder = new TemporaryFolder;
        for (const char* each : {"own", "system", "exports"})
            std::filesystem::create_directories(folder->path() / each / "applications");
        setVariable("XDG_DATA_HOME", (folder->path() / "own").string());
        setVariable("XDG_DATA_DIRS", (folder->path() / "exports").string() + ":" +
                                         (folder->path() / "system").string());
        setVariable("XDG_CURRENT_DESKTOP", "GNOME");
        setVariable("LANGUAGE", "de");
        setVariable("LC_ALL", "de_DE.UTF-8");
        QLocale::setDefault(QLocale(QLocale::German));
        install();
        read = new Applications(readInstalledApplications());
    }

    static void TearDownTestSuite() {
        delete read;
        delete folder;
    }

    static void setVariable(const char* name, const std::string& value) {
        ::setenv(name, value.c_str(), 1);
    }

    static std::string pathOf(const std::string& place) {
        return (folder->path() / place).string();
    }

    static void entry(const std::string& place, const std::string& lines) {
        std::filesystem::create_directories((folder->path() / place).parent_path());
        writeFile(pathOf(place), "[Desktop Entry]\nType=Application\n" + lines);
    }

    static void install() {
        entry("system/applications/org.gnome.TextEditor.desktop",
              "Name=Text Editor\nName[de]=Texteditor\nGenericName[de]=Bearbeitung\n"
              "Keywords[de]=Notizen;Schreiben;\nExec=/bin/sh %U\n");
        entry("system/applications/zebra.desktop", "Name=Zebra\nExec=true\n");
        entry("system/applications/aerger.desktop", "Name=Ärger\nExec=true\n");
        entry("system/applications/kde/two.desktop", "Name=Werkzeug 10\nExec=true\n");
        entry("system/applications/nine.desktop", "Name=werkzeug 9\nExec=true\n");
        entry("exports/applications/org.example.Boxed.desktop", "Name=Boxed\nExec=true\n");
        entry("own/applications/own.desktop", "Name=Own\nExec=true\nOnlyShowIn=GNOME;\n");
        // Of two entries of one name the user's own counts.
        entry("system/applications/twice.desktop", "Name=Of the system\nExec=true\n");
        entry("own/applications/twice.desktop", "Name=Twice\nExec=true\n");
        // What no menu shows.
        entry("system/applications/quiet.desktop", "Name=Quiet\nExec=true\nNoDisplay=true\n");
        entry("system/applications/hidden.desktop", "Name=Hidden\nExec=true\nHidden=true\n");
        entry("system/applications/kde.desktop", "Name=Of KDE\nExec=true\nOnlyShowIn=KDE;\n");
        entry("system/applications/not.desktop", "Name=Not here\nExec=true\nNotShowIn=GNOME;\n");
        entry("system/applications/gone.desktop", "Name=Gone\nExec=true\nTryExec=no-such-one\n");
        entry("system/applications/taken.desktop", "Name=Taken away\nExec=true\n");
        entry("own/applications/taken.desktop", "Name=Taken away\nExec=true\nHidden=true\n");
        writeFile(pathOf("system/applications/link.desktop"),
                  "[Desktop Entry]\nType=Link\nName=Link\nURL=https://example.org\n");
    }

    static std::vector<std::string> names() {
        std::vector<std::string> names;
        for (const InstalledApplication& application : *read)
            names.push_back(application.name);
        return names;
    }

    static const InstalledApplication& named(const std::string& name) {
        static const InstalledApplication none;
        const auto found = std::ranges::find(*read, name, &InstalledApplication::name);
        EXPECT_NE(found, read->end()) << name;
        return found == read->end() ? none : *found;
    }

    static inline TemporaryFolder* folder = nullptr;
    static inline Applications* read = nullptr;
};

TEST_F(InstalledApplicationsTest, AreWhatTheMenusOfThisDesktopShowInTheOrderOfTheLanguage) {
    EXPECT_THAT(names(), ElementsAre("Ärger", "Boxed", "Own", "Texteditor", "Twice", "werkzeug 9",
                                     "Werkzeug 10", "Zebra"));
}

TEST_F(InstalledApplicationsTest, EachHasThePathOfItsEntryWhereverThatIs) {
    EXPECT_EQ(named("Texteditor").path, pathOf("system/applications/org.gnome.TextEditor.desktop"));
    EXPECT_EQ(named("Boxed").path, pathOf("exports/applications/org.example.Boxed.desktop"));
    EXPECT_EQ(named("Twice").path, pathOf("own/applications/twice.desktop"));
    EXPECT_EQ(named("Werkzeug 10").path, pathOf("system/applications/kde/two.desktop"));
}

TEST_F(InstalledApplicationsTest, EachTellsWhatElseItMayBeSoughtBy) {
    EXPECT_EQ(named("Texteditor").otherNames, "Bearbeitung\nNotizen\nSchreiben\nsh");
}

TEST_F(InstalledApplicationsTest, AnEntryElsewhereHasItsNameInTheUsersLanguage) {
    entry("home/Editor.desktop", "Name=Editor\nName[de]=Bearbeiter\nExec=no-such-program\n");
    EXPECT_EQ(nameOfEntry(pathOf("home/Editor.desktop")), "Bearbeiter");
}

TEST_F(InstalledApplicationsTest, AFileThatIsNoEntryOrHasNoNameGivesNone) {
    entry("home/nameless.desktop", "Name=\nExec=true\n");
    entry("home/entry.txt", "Name=Other\nExec=true\n");
    writeFile(pathOf("home/broken.desktop"), "Name=Broken");
    for (const char* file : {"nameless.desktop", "entry.txt", "broken.desktop", "gone.desktop", ""})
        EXPECT_EQ(nameOfEntry(pathOf(std::string("home/") + file)), std::nullopt) << file;
}

TEST_F(InstalledApplicationsTest, TheListComesInALaterTurnOfTheEventLoopFromAnotherThread) {
    LockedMainQueue mainQueue;
    std::thread::id reader;
    InstalledApplications applications(mainQueue, [&reader] {
        reader = std::this_thread::get_id();
        return *read;
    });
    std::vector<Applications> lists;
    applications.list([&](Applications list) { lists.push_back(std::move(list)); });
    EXPECT_THAT(lists, IsEmpty());
    ASSERT_TRUE(mainQueue.runNext());
    ASSERT_THAT(lists, SizeIs(1));
    EXPECT_THAT(lists[0], SizeIs(read->size()));
    EXPECT_NE(reader, std::this_thread::get_id());
}

TEST_F(InstalledApplicationsTest, ADiskThatHoldsTheReadingHoldsNobodyElse) {
    LockedMainQueue mainQueue;
    const auto release = std::make_shared<std::promise<void>>();
    const auto released = std::make_shared<std::shared_future<void>>(release->get_future());
    const auto readings = std::make_shared<std::atomic<int>>(0);
    std::vector<int> called;
    {
        InstalledApplications applications(mainQueue, [released, readings] {
            ++*readings;
            released->wait();
            return Applications();
        });
        // Who asks again while it lasts starts no second one, and is the only one to hear.
        applications.list([&](const Applications&) { called.push_back(1); });
        applications.list([&](const Applications&) { called.push_back(2); });
        release->set_value();
        ASSERT_TRUE(mainQueue.runNext());
        EXPECT_THAT(called, ElementsAre(2));
        EXPECT_EQ(*readings, 1);
        applications.list([&](const Applications&) { called.push_back(3); });
        ASSERT_TRUE(mainQueue.runNext());
        EXPECT_THAT(called, ElementsAre(2, 3));
    }
}

TEST_F(InstalledApplicationsTest, AListThatComesAfterTheEndOfAllIsHandedToNobody) {
    LockedMainQueue mainQueue;
    std::promise<void> release;
    const auto released = std::make_shared<std::shared_future<void>>(release.get_future());
    const auto token = std::make_shared<int>(0);
    bool isCalled = false;
    {
        InstalledApplications applications(mainQueue, [released, token] {
            released->wait();
            return Applications();
        });
        applications.list([&](const Applications&) { isCalled = true; });
    }
    EXPECT_GT(token.use_count(), 1); // the thread is still reading
    release.set_value();
    ASSERT_TRUE(waitUntil([&] { return token.use_count() == 1; }));
    EXPECT_FALSE(isCalled);
    EXPECT_TRUE(mainQueue.isEmpty());
}

} // namespace
} // namespace kestrel::linux_shell
