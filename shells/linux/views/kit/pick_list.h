#pragma once
// A list of which one row is selected: a press selects it, a double click or Return takes it. What
// SelectionList and ChoiceList have in common.

#include "shells/linux/views/kit/row_list.h"

namespace kestrel::linux_shell {

class PickList : public RowList {
    Q_OBJECT

  Q_SIGNALS:
    /// The user made another row current, or none (-1).
    void rowPicked(int row);

  protected:
    static constexpr double highlightRadius = 6; ///< of the selection's corners, pixels

    PickList(RowSource& source, const QMargins& padding, QWidget* parent)
        : RowList(source, Qt::ScrollBarAsNeeded, padding, parent) {}

    /// Selects a row, or none (-1).
    void pick(int row, LastInput input);

    /// The number of whole rows in sight but one, so that a page shows where it came from; at
    /// least one. For a list with rows.
    int pageLength() const;

    /// Whether the selection looks as where the keys go.
    virtual bool hasKeys() const { return isActiveWindow(); }

    void pressRow(int row) override { pick(row, LastInput::pointer); }
    void cancelGesture() override { pressedSinceReload_ = false; }
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

    /// Picks what is under the pointer, none beside the rows.
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

  private:
    bool pressedSinceReload_ = false;
};

} // namespace kestrel::linux_shell
