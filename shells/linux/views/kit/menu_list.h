#pragma once
// A list that acts on a click, as a menu does. Its owner decides which row is highlighted: it hears
// of the pointer and of the keys and answers with setCurrentRow.

#include "shells/linux/views/kit/row_list.h"

namespace kestrel::linux_shell {

class MenuList final : public RowList {
    Q_OBJECT

  public:
    MenuList(RowSource& source, const QMargins& padding, QWidget* parent = nullptr)
        : RowList(source, Qt::ScrollBarAlwaysOff, padding, parent) {}

  Q_SIGNALS:
    /// The pointer is over another row.
    void pointerEntered(int row);
    void pointerLeft(int row);

    /// A key asks for another highlight.
    void stepRequested(RowStep step);

  protected:
    void pressRow(int row) override { Q_EMIT activated(row); }
    void takeStep(RowStep step) override { Q_EMIT stepRequested(step); }
    void cancelGesture() override;
    void currentRowChanged() override;
    void reportPointer(int row) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }

  private:
    int pressedRow_ = -1;
    int reportedRow_ = -1; ///< the row over which the owner knows the pointer to be
};

} // namespace kestrel::linux_shell
