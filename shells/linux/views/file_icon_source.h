#pragma once
// Where the rows get the desktop's icons for files from, and how the lists hear that others have
// come. The shell keeps one; it outlives every widget.

#include <QIcon>
#include <QObject>

#include <functional>
#include <string>
#include <utility>

namespace kestrel::linux_shell {

/// Main thread only.
class FileIconSource final : public QObject {
    Q_OBJECT

  public:
    using IconForFile = std::function<QIcon(const std::string& path)>;

    explicit FileIconSource(IconForFile iconForFile) : iconForFile_(std::move(iconForFile)) {}

    /// The desktop's icon for the file at `path`, generic when there is no such file.
    QIcon operator()(const std::string& path) const { return iconForFile_(path); }

  Q_SIGNALS:
    /// Files may have other icons than before, or items other files.
    void changed();

  private:
    IconForFile iconForFile_;
};

} // namespace kestrel::linux_shell
