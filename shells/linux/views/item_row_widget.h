#pragma once
// One row of the settings list: icon, title over detail line, actions button, type badge.

#include "shells/linux/views/kit/list_row.h"
#include "views/settings/item_row.h"

#include <QPixmap>

#include <utility>

namespace kestrel::linux_shell {

class ActionsMenu;
class EllipsisButton;

class ItemRowWidget : public ListRow {
    Q_OBJECT

  public:
    /// Where the parts of a row lie.
    struct Layout {
        QRect icon;
        QRect title;
        QRect detail;
        QRect actions; ///< the symbol's square
        QRect badge;
    };

    explicit ItemRowWidget(QWidget* parent = nullptr);

    /// The icons have the size and the pixel ratio in which they are drawn; `selectedIcon` is the
    /// selected row's, in the colours that paletteOnSelection gives.
    void bind(ItemRow row, const QPixmap& icon, const QPixmap& selectedIcon);
    void bind(ItemRow row, const QPixmap& icon) { bind(std::move(row), icon, icon); }

    const ItemRow& item() const { return item_; }
    EllipsisButton& actionsButton() const { return *actions_; }
    Layout layoutOfParts() const;

    /// The same menu as the actions button's, at a point of the screen.
    void popUpMenu(QPoint globalPosition);

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void stateChanged() override;
    void changeEvent(QEvent* event) override;

  private:
    void placeActions();
    void updateActions();
    QString shownDetail(int width) const;

    ItemRow item_;
    ItemRow menuItem_; ///< what the open menu is about; the row may be bound anew meanwhile
    QString title_;
    QString badge_;
    QPixmap icon_;
    QPixmap selectedIcon_;
    EllipsisButton* actions_;
    ActionsMenu* menu_;
};

} // namespace kestrel::linux_shell
