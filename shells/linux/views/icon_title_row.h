#pragma once
// A row of one line: an icon and a title, which is cut where it does not fit. What the rows of the
// popover and of the list of installed applications have in common.

#include "actions/item_icon.h"
#include "platform/geometry.h"
#include "shells/linux/views/item_icon_pixmap.h"
#include "shells/linux/views/kit/list_row.h"
#include "views/style.h"

#include <QPalette>
#include <QPixmap>
#include <QRect>
#include <QString>

namespace kestrel::linux_shell {

class IconTitleRow : public ListRow {
    Q_OBJECT

  public:
    /// In points; the icon stands in the middle of the height.
    struct Style {
        style::Insets padding;
        Size iconSize;
        double spacing = 0; ///< between the icon and the title
        style::TextStyle title;
    };

    void show(const QString& title, const ItemIcon& icon);

    /// Where the parts of the row lie.
    QRect iconRect() const;
    QRect titleRect() const;

  protected:
    /// `fileIcons` outlives the row.
    IconTitleRow(const Style& style, const FileIconSource& fileIcons, QWidget* parent);

    /// Those of what stands on the row: others where it is current under high contrast.
    QPalette colors() const;

    /// What the pointer that rests over the row is told: the title where it is cut.
    virtual QString tooltip() const;

    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void stateChanged() override;

  private:
    void updatePixmap();

    const Style style_;
    const FileIconSource& fileIcons_;
    QString title_;
    ItemIcon icon_;
    QPixmap pixmap_;
    qreal pixmapRatio_ = 0; ///< the device pixel ratio it was drawn for
};

} // namespace kestrel::linux_shell
