#pragma once
// A list in which a press or an arrow key selects a row and a double click or Return activates it.
// Its rows can be dragged to another place, moved and deleted; the owner does that to the items.

#include "shells/linux/views/kit/row_drag.h"
#include "shells/linux/views/kit/row_list.h"

namespace kestrel::linux_shell {

class SelectionList : public RowList {
    Q_OBJECT

  public:
    SelectionList(RowSource& source, const QMargins& padding, QWidget* parent = nullptr)
        : RowList(source, Qt::ScrollBarAsNeeded, padding, parent) {}

    std::vector<RowAction> rowActions() override;

  Q_SIGNALS:
    /// The user made another row current, or none (-1) with a click beside the rows.
    void rowPicked(int row);

    /// A row was dropped in front of `destination`, a position in the list before the move.
    void moveRequested(int row, int destination);

    /// A key moves or deletes the current row.
    void moveCurrentRequested(RowDirection direction);
    void deleteCurrentRequested();
    void contextMenuRequested(int row, QPoint globalPosition);

  protected:
    void pressRow(int row) override { pick(row, LastInput::pointer); }
    void takeStep(RowStep step) override { pick(rowAfter(step), LastInput::keyboard); }
    bool takeKey(const QKeyEvent& event) override;
    void cancelGesture() override;
    int keptRow() const override { return drag_.row(); }
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    void pick(int row, LastInput input);
    int rowAfter(RowStep step) const;
    void moveRow(int row, RowDirection direction);

    RowDrag drag_{*this};
    bool pressedSinceReload_ = false;
};

} // namespace kestrel::linux_shell
