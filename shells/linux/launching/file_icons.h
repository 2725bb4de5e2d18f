#pragma once
// The picture that the desktop shows for a file, from the session's icon theme.

#include <QIcon>

#include <memory>
#include <string>

namespace kestrel::linux_shell {

/// Main thread only, after the application object has been built. Asked for every visible row at
/// each redraw: a file that has not changed costs one stat() and a look-up.
class FileIcons {
  public:
    /// Gives Qt a fallback theme when the session has none worth the name: hicolor, the theme of a
    /// bare session, has no folder, no document and no terminal.
    FileIcons();
    ~FileIcons();
    FileIcons(const FileIcons&) = delete;
    FileIcons& operator=(const FileIcons&) = delete;

    /// The icon of the file at `path`, taken as it is: the Icon of a desktop entry, otherwise that
    /// of the file's type. A path that names nothing, or nothing readable, has the icon of a
    /// document of unknown type. Where the theme has none of an icon's names, one of
    /// :/kestrel/fallback/{terminal,executable,document,folder}.svg; a null icon only when the
    /// program was built without these.
    QIcon iconForFile(const std::string& path);

  private:
    struct Cache;
    std::unique_ptr<Cache> cache_;
};

} // namespace kestrel::linux_shell
