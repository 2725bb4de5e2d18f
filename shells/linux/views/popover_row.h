#pragma once
// One row of the popover's list: the item's icon and its title, on the highlight when it is the
// highlighted one.

#include "actions/item_icon.h"
#include "shells/linux/views/item_icon_pixmap.h"
#include "shells/linux/views/kit/list_row.h"

#include <QPixmap>
#include <QRect>
#include <QString>

namespace kestrel::linux_shell {

class PopoverRow final : public ListRow {
    Q_OBJECT

  public:
    /// `fileIcons` outlives the row.
    PopoverRow(const FileIconSource& fileIcons, QWidget* parent);

    void show(const QString& title, const ItemIcon& icon);

    /// Where the parts of the row lie.
    QRect iconRect() const;
    QRect titleRect() const;

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void stateChanged() override;

  private:
    void updatePixmap();
    QPalette colors() const;

    const FileIconSource& fileIcons_;
    QString title_;
    ItemIcon icon_;
    QPixmap pixmap_;
    qreal pixmapRatio_ = 0; ///< the device pixel ratio it was drawn for
};

} // namespace kestrel::linux_shell
