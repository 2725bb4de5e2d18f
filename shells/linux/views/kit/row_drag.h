#pragma once
// Dragging a row of a SelectionList to another place: a card with the row's image follows the
// pointer, the other rows make way where it would land, and the list scrolls when the pointer comes
// near an edge or goes beyond. Outside the list the rows close again: a drop there changes nothing.

#include <QBasicTimer>
#include <QObject>
#include <QPoint>
#include <QPointer>

#include <optional>

namespace kestrel::linux_shell {

class ListRow;
class RowGhost;
class RowSlot;
class SelectionList;

class RowDrag : public QObject {
    Q_OBJECT

  public:
    /// A member of `list`.
    explicit RowDrag(SelectionList& list);
    ~RowDrag() override;

    /// The left button goes down on `row`, which becomes a drag once the pointer has moved far
    /// enough. Points are the viewport's.
    void press(int row, QPoint position);
    void move(QPoint position);

    /// The left button goes up: ends the drag and asks the list to move the row, unless it lands
    /// where it was or outside.
    void drop(QPoint position);

    /// Ends the drag without effect. The button may still be down.
    void cancel();

    /// The same when the left button turns out to be up: its release went to somebody else.
    void follow(Qt::MouseButtons buttons);

    /// From a press to the release, also after a cancel.
    bool holdsButton() const { return holdsButton_; }

    /// The row that is being dragged; -1 before the drag has begun and after its end.
    int row() const { return row_; }

    /// The gap where the row would land, a position in the list before the move; nothing outside
    /// the list.
    std::optional<int> destination() const;

    /// How far another row goes out of the way, in pixels.
    int shiftOf(int row) const;

  Q_SIGNALS:
    /// Rows go elsewhere out of the way, or back.
    void shiftsChanged();

  protected:
    void timerEvent(QTimerEvent* event) override;

  private:
    void begin();
    void scrollAtEdge();
    void showGhost();
    void showSlot();

    SelectionList& list_;
    RowGhost* ghost_ = nullptr; ///< the card; exists during a drag, as do the next two
    RowSlot* slot_ = nullptr;   ///< where the row would land
    QPointer<ListRow> source_;  ///< the row itself, which shows nothing meanwhile
    QBasicTimer scrolling_;
    bool holdsButton_ = false;
    int pressedRow_ = -1;
    int row_ = -1;
    int grip_ = 0;                        ///< pixels from the row's top to where it was taken
    std::optional<int> shownDestination_; ///< for which the rows have made way
    QPoint pressed_;
    QPoint pointer_;
};

} // namespace kestrel::linux_shell
