#pragma once
// Dragging a row of a SelectionList to another place: an image of the row follows the pointer, a
// line shows the gap where it would land, and the list scrolls when the pointer rests near an edge.

#include <QBasicTimer>
#include <QObject>
#include <QPoint>

class QWidget;

namespace kestrel::linux_shell {

class SelectionList;

class RowDrag : public QObject {
    Q_OBJECT

  public:
    /// A member of `list`.
    explicit RowDrag(SelectionList& list);

    /// A press on `row`, which becomes a drag once the pointer has moved far enough. Points are
    /// the viewport's.
    void press(int row, QPoint position);
    void move(QPoint position);

    /// Ends the drag and asks the list to move the row, unless it lands where it was.
    void drop();
    void cancel();

    /// The row that is being dragged; -1 before the drag has begun and after its end.
    int row() const { return row_; }

    /// The gap where the row would land, a position in the list before the move.
    int destination() const;

  protected:
    void timerEvent(QTimerEvent* event) override;

  private:
    void begin();
    void showTarget();

    SelectionList& list_;
    QWidget* ghost_ = nullptr;  ///< the image of the row; exists during a drag
    QWidget* target_ = nullptr; ///< the line; exists during a drag
    QBasicTimer scrolling_;
    int pressedRow_ = -1;
    int row_ = -1;
    int grip_ = 0; ///< pixels from the row's top to where it was taken
    QPoint pressed_;
    QPoint pointer_;
};

} // namespace kestrel::linux_shell
