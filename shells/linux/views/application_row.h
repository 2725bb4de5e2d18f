#pragma once
// One row of the list of installed applications: its icon and its name.

#include "shells/linux/launching/installed_applications.h"
#include "shells/linux/views/file_icon_source.h"
#include "shells/linux/views/kit/list_row.h"

#include <QPixmap>
#include <QString>

namespace kestrel::linux_shell {

class ApplicationRow final : public ListRow {
    Q_OBJECT

  public:
    /// `fileIcons` outlives the row.
    ApplicationRow(const FileIconSource& fileIcons, QWidget* parent);

    void show(const InstalledApplication& application);

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void updatePixmap();

    const FileIconSource& fileIcons_;
    std::string path_;
    QString name_;
    QPixmap pixmap_;
    qreal pixmapRatio_ = 0; ///< the device pixel ratio it was drawn for
};

} // namespace kestrel::linux_shell
