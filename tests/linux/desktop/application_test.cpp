#include "shells/linux/desktop/application.h"

#include "shells/linux/desktop/toolkit_start.h"
#include "tests/linux/desktop/waiting.h"

#include <QAccessible>
#include <QCloseEvent>
#include <QTimer>
#include <QWidget>

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

namespace kestrel::linux_shell {
namespace {

/// Sets variables of the environment, or removes them (null), until the end of the test.
class Environment {
  public:
    explicit Environment(const std::vector<std::pair<const char*, const char*>>& variables) {
        for (const auto& [name, value] : variables) {
            old_.emplace_back(name, qgetenv(name));
            value != nullptr ? qputenv(name, value) : qunsetenv(name);
        }
    }
    ~Environment() {
        for (const auto& [name, value] : old_)
            value.isNull() ? qunsetenv(name.c_str()) : qputenv(name.c_str(), value);
    }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

  private:
    std::vector<std::pair<std::string, QByteArray>> old_;
};

std::vector<std::string> argumentsOf(ToolkitArguments& arguments) {
    return {arguments.values(), arguments.values() + arguments.count()};
}

TEST(ToolkitArgumentsTest, XWaylandComesFirstWhereBothAreOffered) {
    const Environment environment(
        {{"QT_QPA_PLATFORM", nullptr}, {"WAYLAND_DISPLAY", "wayland-0"}, {"DISPLAY", ":0"}});
    ToolkitArguments arguments("kestrel");
    EXPECT_EQ(argumentsOf(arguments),
              (std::vector<std::string>{"kestrel", "-platform", "xcb;wayland"}));
    EXPECT_EQ(arguments.values()[arguments.count()], nullptr);
}

TEST(ToolkitArgumentsTest, UsersChoiceOfAPlatformStands) {
    const Environment environment(
        {{"QT_QPA_PLATFORM", "wayland"}, {"WAYLAND_DISPLAY", "wayland-0"}, {"DISPLAY", ":0"}});
    ToolkitArguments arguments("kestrel");
    EXPECT_EQ(argumentsOf(arguments), std::vector<std::string>{"kestrel"});
}

TEST(ToolkitArgumentsTest, OneDisplayLeavesNoChoice) {
    for (const bool isWayland : {true, false}) {
        const Environment environment({{"QT_QPA_PLATFORM", nullptr},
                                       {"WAYLAND_DISPLAY", isWayland ? "wayland-0" : nullptr},
                                       {"DISPLAY", isWayland ? nullptr : ":0"}});
        ToolkitArguments arguments("kestrel");
        EXPECT_EQ(argumentsOf(arguments), std::vector<std::string>{"kestrel"});
    }
}

TEST(MissingDisplayTest, IsTheToolkitsPluginWhereThatIsNotInstalled) {
    const Environment environment(
        {{"QT_QPA_PLATFORM", nullptr}, {"WAYLAND_DISPLAY", "wayland-0"}, {"DISPLAY", nullptr}});
    const QStringList folders = QCoreApplication::libraryPaths();
    QCoreApplication::setLibraryPaths({});
    EXPECT_EQ(missingDisplay(),
              QStringLiteral("there is no display: Qt's plugin for Wayland is not installed "
                             "(qt6-wayland)"));
    QCoreApplication::setLibraryPaths(folders);
}

TEST(ToolkitStartTest, MessagesWaitUntilItIsOver) {
    static QStringList said;
    const auto before = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& text) { said.append(text); });
    {
        const ToolkitStart start;
        qWarning("Later");
        EXPECT_EQ(said, QStringList());
    }
    EXPECT_EQ(said, QStringList{QStringLiteral("Later")});
    qInstallMessageHandler(before);
}

TEST(QtApplicationTest, TerminateEndsTheEventLoopAlthoughAPopupRefusesToClose) {
    class StubbornPopup : public QWidget {
      public:
        StubbornPopup() : QWidget(nullptr, Qt::Popup) {}

      protected:
        void closeEvent(QCloseEvent* event) override { event->ignore(); }
    };
    QtApplication application(*qApp);
    StubbornPopup popup;
    popup.show();
    QTimer::singleShot(0, qApp, [&] { application.terminate(); });
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_FALSE(popup.isVisible());
}

TEST(QtApplicationTest, AccessibleTreeListsPopups) {
    const QtApplication application(*qApp);
    QWidget popup(nullptr, Qt::Popup);
    popup.setAccessibleName(QStringLiteral("The popup"));
    popup.show();
    auto* root = QAccessible::queryAccessibleInterface(qApp);
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(root->text(QAccessible::Name), QStringLiteral("kestrel"));
    QStringList names;
    for (int i = 0; i < root->childCount(); ++i) {
        names.append(root->child(i)->text(QAccessible::Name));
        EXPECT_EQ(root->indexOfChild(root->child(i)), i);
    }
    EXPECT_TRUE(names.contains(QStringLiteral("The popup")));
    EXPECT_EQ(root->child(root->childCount()), nullptr);
}

} // namespace
} // namespace kestrel::linux_shell
