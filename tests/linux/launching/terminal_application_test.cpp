#include "shells/linux/launching/terminal_application.h"

#include "tests/linux/launching/launching_fixture.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <future>
#include <memory>

namespace kestrel::linux_shell {
namespace {

class TerminalApplicationTest : public LaunchingTest {
  protected:
    /// Waits until `path` is known of `application`.
    static bool becomes(TerminalApplication& application, const std::string& path) {
        return waitUntil([&] { return application.path() == path; });
    }
};

TEST_F(TerminalApplicationTest, IsTheProgramWhenNoEntryStartsIt) {
    installTerminal("terminal-without-entry");
    EXPECT_EQ(TerminalApplication::findTerminalApplication(),
              (programs() / "terminal-without-entry").string());
}

TEST_F(TerminalApplicationTest, IsNothingWithoutATerminal) {
    ::setenv("PATH", programs().c_str(), 1);
    EXPECT_EQ(TerminalApplication::findTerminalApplication(), std::nullopt);
}

TEST_F(TerminalApplicationTest, IsSoughtOnceForAllWhoAsk) {
    auto searches = std::make_shared<std::atomic<int>>(0);
    std::atomic<int> changes = 0;
    TerminalApplication application([&changes] { ++changes; },
                                    [searches] {
                                        ++*searches;
                                        return std::optional<std::string>("/found");
                                    });
    EXPECT_EQ(*searches, 0) << "before anybody asks";
    EXPECT_TRUE(becomes(application, "/found"));
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(application.path(), "/found");
    EXPECT_EQ(*searches, 1);
    EXPECT_EQ(changes, 1);
}

TEST_F(TerminalApplicationTest, NobodyWaitsForASearchThatHangs) {
    auto release = std::make_shared<std::promise<void>>();
    const auto released = std::make_shared<std::shared_future<void>>(release->get_future());
    const auto search = [released]() -> std::optional<std::string> {
        released->wait();
        return "/found";
    };
    TerminalApplication application({}, search);
    {
        TerminalApplication ended({}, search);
        EXPECT_EQ(ended.path(), std::nullopt);
    }
    EXPECT_EQ(application.path(), std::nullopt);
    EXPECT_EQ(application.path(), std::nullopt);
    release->set_value();
    EXPECT_TRUE(becomes(application, "/found"));
}

TEST_F(TerminalApplicationTest, IsSoughtAgainWhenAnApplicationIsInstalled) {
    installTerminal("new-terminal");
    const std::filesystem::path entry = terminalEntry().parent_path() / "new.desktop";
    std::atomic<int> changes = 0;
    TerminalApplication application([&changes] { ++changes; });
    ASSERT_TRUE(becomes(application, (programs() / "new-terminal").string()));
    writeFile(entry, "[Desktop Entry]\nType=Application\nName=New\n"
                     "Exec=new-terminal\nCategories=TerminalEmulator;\n");
    EXPECT_TRUE(becomes(application, entry.string()));
    std::filesystem::remove(entry);
    EXPECT_TRUE(becomes(application, (programs() / "new-terminal").string()));
    EXPECT_EQ(changes, 3);
}

} // namespace
} // namespace kestrel::linux_shell
