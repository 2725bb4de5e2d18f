#pragma once
// A list of which one row is chosen. It stands below a field that keeps the keys and hands on those
// that lead to another row; a click beside the rows leaves the choice as it is.

#include "shells/linux/views/kit/pick_list.h"

namespace kestrel::linux_shell {

class ChoiceList final : public PickList {
    Q_OBJECT

  public:
    ChoiceList(RowSource& source, const QMargins& padding, QWidget* parent = nullptr);

    /// Selects the row that a key asks for.
    void step(RowStep step);

    /// Selects the first row, as with a key; none when there is none.
    void selectFirst();

  protected:
    void takeStep(RowStep step) override;
    void mousePressEvent(QMouseEvent* event) override;
};

} // namespace kestrel::linux_shell
