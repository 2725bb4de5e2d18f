#pragma once
// A list of which one row is chosen: a press selects it, a double click takes it. It stands below a
// field that keeps the keys and hands on those that lead to another row.

#include "shells/linux/views/kit/row_list.h"

namespace kestrel::linux_shell {

class ChoiceList final : public RowList {
    Q_OBJECT

  public:
    ChoiceList(RowSource& source, const QMargins& padding, QWidget* parent = nullptr);

    /// Selects the row that a key asks for.
    void step(RowStep step);

    /// Selects the first row, as with a key; none when there is none.
    void selectFirst();

  Q_SIGNALS:
    /// The user selected another row.
    void rowPicked(int row);

  protected:
    void pressRow(int row) override { pick(row, LastInput::pointer); }
    void takeStep(RowStep step) override { pick(rowAfter(step), LastInput::keyboard); }
    void cancelGesture() override { pressedSinceReload_ = false; }
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

  private:
    void pick(int row, LastInput input);
    int rowAfter(RowStep step) const;

    bool pressedSinceReload_ = false;
};

} // namespace kestrel::linux_shell
