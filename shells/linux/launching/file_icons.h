#pragma once
// The icon that the desktop shows for a file, from the session's icon theme.

#include <QIcon>

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace kestrel::linux_shell {

/// Main thread only, after the application object has been built. Asked for every visible row at
/// each redraw: a file that has not changed costs one stat() and a look-up.
///
/// The file system is asked on another thread: one that does not answer, such as a dead network
/// mount, must not stop the popover.
class FileIcons {
  public:
    /// How long a redraw waits for the file system; a tenth of it while an earlier question is
    /// still unanswered.
    static constexpr std::chrono::milliseconds defaultTimeout{50};

    /// Gives Qt a fallback theme when the session has none worth the name: hicolor, the theme of a
    /// bare session, has no folder, no document and no terminal.
    ///
    /// `changed` is called on another thread when an answer has come too late for the redraw that
    /// asked; the next one shows it.
    explicit FileIcons(std::function<void()> changed = {},
                       std::chrono::milliseconds timeout = defaultTimeout);
    ~FileIcons();
    FileIcons(const FileIcons&) = delete;
    FileIcons& operator=(const FileIcons&) = delete;

    /// The icon of the file at `path`, taken as it is: the Icon of a desktop entry, otherwise that
    /// of the file's type. A path that names nothing, or nothing readable, has the icon of a
    /// document of unknown type. Where the theme has none of an icon's names, one of
    /// :/kestrel/fallback/{terminal,executable,document,folder}.svg; a null icon only when the
    /// program was built without these.
    ///
    /// While the file system does not answer: the icon that the file had last, or that of a path
    /// that names nothing.
    QIcon iconForFile(const std::string& path);

  private:
    struct LateAnswers;
    struct Cache;

    void ask(const std::string& path);
    void takeLateAnswers();

    std::chrono::milliseconds timeout_;
    std::shared_ptr<LateAnswers> late_;
    std::unique_ptr<Cache> cache_;
};

} // namespace kestrel::linux_shell
