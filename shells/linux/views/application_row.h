#pragma once
// One row of the list of installed applications: its icon and its name.

#include "shells/linux/launching/installed_applications.h"
#include "shells/linux/views/icon_title_row.h"

#include <QString>

namespace kestrel::linux_shell {

class ApplicationRow final : public IconTitleRow {
    Q_OBJECT

  public:
    /// `fileIcons` outlives the row.
    ApplicationRow(const FileIconSource& fileIcons, QWidget* parent);

    void show(const InstalledApplication& application);

  protected:
    QString tooltip() const override;

  private:
    QString path_;
};

} // namespace kestrel::linux_shell
