#pragma once
// One row of the popover's list: the item's icon and its title, on the highlight when it is the
// highlighted one.

#include "shells/linux/views/icon_title_row.h"

namespace kestrel::linux_shell {

class PopoverRow final : public IconTitleRow {
    Q_OBJECT

  public:
    /// `fileIcons` outlives the row.
    PopoverRow(const FileIconSource& fileIcons, QWidget* parent);

  protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace kestrel::linux_shell
