#pragma once
// A vertical list of any length, worked by pointer and keyboard. Only the rows in sight exist:
// those that scroll out are bound again to the items that scroll in, so a list of a hundred
// thousand equal rows costs what a list of ten does. Knows positions, nothing of the items.

#include "shells/linux/views/kit/list_row.h"
#include "shells/linux/views/kit/row_geometry.h"

#include <QAbstractScrollArea>
#include <QMargins>

#include <map>
#include <optional>
#include <vector>

namespace kestrel::linux_shell {

class RowDrag;

/// What a list shows. It outlives the list.
class RowSource {
  public:
    virtual ~RowSource() = default;
    virtual int count() const = 0;

    /// The height of every row in pixels; nothing when they differ, and then `heightOf` is asked
    /// for each row whenever the rows or the width change, so it has to be quick.
    virtual std::optional<int> uniformHeight() const = 0;
    virtual int heightOf(int row, int width) const = 0;

    /// What a screen reader says and what typing the first letters finds.
    virtual QString titleOf(int row) const = 0;

    virtual ListRow* makeRow(QWidget* parent) = 0;

    /// Shows item `index` in `row`, which may have shown another before.
    virtual void bindRow(ListRow& row, int index) = 0;
};

class RowList : public QAbstractScrollArea {
    Q_OBJECT

  public:
    struct Options {
        enum class Activation { singleClick, doubleClick };
        enum class ScrollBar { never, asNeeded };
        enum class Editing { off, on }; ///< on: rows can be moved and deleted

        Activation activation = Activation::singleClick;
        ScrollBar scrollBar = ScrollBar::never;
        Editing editing = Editing::off;
        QMargins padding; ///< pixels between the viewport's edges and the rows
    };

    RowList(RowSource& source, const Options& options, QWidget* parent = nullptr);
    ~RowList() override;

    /// The source's rows have changed. Keeps the scroll position; a click or drag under way ends
    /// without effect. The current row stays at its number while that exists.
    void reload();

    /// The same rows look different: binds those in sight again and disturbs nothing.
    void refresh();

    int currentRow() const { return currentRow_; }

    /// -1 for none. Does not scroll and emits nothing.
    void setCurrentRow(int row);
    void ensureVisible(int row);

    /// What a click on `row` does: activates or picks it.
    void pressRow(int row);

    /// The row at a point of the viewport; -1 where there is none.
    int rowAt(QPoint position) const;

    /// In the viewport's coordinates, also for rows out of sight.
    QRect rowRect(int row) const;

    /// The gap between rows nearest to a point of the viewport, 0 to the number of rows, and
    /// where that gap lies.
    int gapAt(QPoint position) const;
    int gapTop(int gap) const;

    /// Null for a row out of sight.
    ListRow* realisedRow(int row) const;
    int realisedCount() const { return static_cast<int>(rows_.size()); }

    RowSource& source() const { return source_; }
    const Options& options() const { return options_; }

  Q_SIGNALS:
    /// A click (or double click) on a row, or Return.
    void activated(int row);

    /// The user has made another row current, or none (-1) with a click beside the rows.
    void rowPicked(int row);

    /// Move `rows` to `destination`, a position in the list as it stands before the move.
    void moveRequested(const std::vector<int>& rows, int destination);
    void deleteRequested(const std::vector<int>& rows);
    void contextMenuRequested(int row, QPoint globalPosition);

  protected:
    bool viewportEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    friend class ListRow;

    enum class LastInput { pointer, keyboard };

    int scrollOffset() const;
    int rowsWidth() const;
    void rebuildGeometry();
    void layoutRows();
    void realise(int row);
    void park(ListRow* row);
    void updateStates();
    void pointerAt(std::optional<QPoint> position);
    void announceCurrentRow();
    void pick(int row, LastInput input);
    bool handleMoveAndDelete(const QKeyEvent& event);
    int destinationOf(const QKeyEvent& event) const;
    bool typeAhead(const QKeyEvent& event);
    int find(const QString& prefix, int from) const;

    RowSource& source_;
    const Options options_;
    RowGeometry geometry_;
    std::map<int, ListRow*> rows_; ///< those in sight, by position
    std::vector<ListRow*> spare_;
    RowDrag* drag_ = nullptr; ///< null unless editing is on

    int currentRow_ = -1;
    int pressedRow_ = -1;
    LastInput lastInput_ = LastInput::pointer;
    std::optional<QPoint> pointer_; ///< where the pointer is in the viewport
    QString typed_;
    quint64 typedAt_ = 0;
    double wheelRemainder_ = 0;
};

} // namespace kestrel::linux_shell
