#pragma once
// A list whose rows can be dragged to another place, moved and deleted; the owner does that to the
// items, and decides where the arrow keys lead. A click beside the rows selects none.

#include "shells/linux/views/kit/pick_list.h"
#include "shells/linux/views/kit/row_drag.h"

namespace kestrel::linux_shell {

class SelectionList : public PickList {
    Q_OBJECT

  public:
    SelectionList(RowSource& source, const QMargins& padding, QWidget* parent = nullptr);

    std::vector<RowAction> rowActions() override;

  Q_SIGNALS:
    /// A key asks for another current row; the owner answers at once with setCurrentRow. `page` is
    /// the number of rows that a page key leads on.
    void stepRequested(RowStep step, int page);

    /// A row was dropped in front of `destination`, a position in the list before the move.
    void moveRequested(int row, int destination);

    /// An assistive program moves a row by one place.
    void moveByOneRequested(int row, RowDirection direction);

    /// A key moves or deletes the current row.
    void moveCurrentRequested(RowDirection direction);
    void deleteCurrentRequested();
    void contextMenuRequested(int row, QPoint globalPosition);

  protected:
    void takeStep(RowStep step) override;
    bool takeKey(const QKeyEvent& event) override;
    void cancelGesture() override;
    int carriedRow() const override { return drag_.row(); }
    int shiftOf(int row) const override { return drag_.shiftOf(row); }
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    RowDrag drag_{*this};
};

} // namespace kestrel::linux_shell
