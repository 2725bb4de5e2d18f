#pragma once
// A vertical list of any length, worked by pointer and keyboard. Only the rows in sight exist:
// those that scroll out are bound again to the items that scroll in, so a list of a hundred
// thousand equal rows costs what a list of ten does. Knows positions, nothing of the items.
//
// A `menu` acts on a click, and its owner decides which row is highlighted: it hears of the
// pointer and of the keys and answers with setCurrentRow. A `selection` list picks a row on a
// press or with the arrow keys and acts on a double click; its rows can be moved and deleted.

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
    /// for each row whenever the rows, the width or the font change, so it has to be quick.
    /// `prepareHeights` comes once before that.
    virtual std::optional<int> uniformHeight() const = 0;
    virtual void prepareHeights(int /*width*/) {}
    virtual int heightOf(int row, int width) const = 0;

    /// What a screen reader says.
    virtual QString titleOf(int row) const = 0;

    virtual ListRow* makeRow(QWidget* parent) = 0;

    /// Shows item `index` in `row`, which may have shown another before.
    virtual void bindRow(ListRow& row, int index) = 0;
};

class RowList : public QAbstractScrollArea {
    Q_OBJECT

  public:
    static constexpr int pixelsPerScrollLine = 20;

    enum class Kind { menu, selection };
    enum class ScrollBar { never, asNeeded };
    enum class Step { previous, next, pageUp, pageDown, first, last };
    enum class Direction { up, down };

    struct Options {
        Kind kind = Kind::menu;
        ScrollBar scrollBar = ScrollBar::never;
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

    /// -1 for none. Emits nothing; scrolls to the row when it was a key that led there.
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
    /// There are other rows, or they look different.
    void rowsChanged();

    /// A click on a row of a menu, a double click in a selection list, Return in both.
    void activated(int row);

    /// Letters typed to find a row by its title.
    void typed(const QString& text);

    /// Of a menu: the pointer is over another row, or a key asks for another highlight.
    void pointerEntered(int row);
    void pointerLeft(int row);
    void stepRequested(Step step);

    /// Of a selection list: the user made another row current, or none (-1) with a click beside
    /// the rows.
    void rowPicked(int row);

    /// Of a selection list: a row was dropped in front of `destination`, a position in the list
    /// before the move; or a key moves or deletes the current row.
    void moveRequested(int row, int destination);
    void moveCurrentRequested(Direction direction);
    void deleteCurrentRequested();
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
    enum class Binding { keep, anew }; ///< of rows that are in sight already

    bool isMenu() const { return options_.kind == Kind::menu; }
    int scrollOffset() const;
    int rowsWidth() const;
    void rebuildGeometry();
    void layoutRows(Binding binding = Binding::keep);
    void realise(int row);
    void park(ListRow* row);
    void updateStates();
    void pointerAt(std::optional<QPoint> position);
    void reportPointer();
    void pick(int row, LastInput input);
    int rowAfter(Step step) const;
    bool takeKey(const QKeyEvent& event);
    bool moveOrDelete(const QKeyEvent& event);
    bool typeLetter(const QKeyEvent& event);

    RowSource& source_;
    const Options options_;
    RowGeometry geometry_;
    std::map<int, ListRow*> rows_; ///< those in sight, by position
    std::vector<ListRow*> spare_;
    RowDrag* drag_ = nullptr; ///< null in a menu

    int currentRow_ = -1;
    int pressedRow_ = -1;
    bool pressedSinceReload_ = false;
    int reportedRow_ = -1; ///< the row over which the owner knows the pointer to be
    LastInput lastInput_ = LastInput::pointer;
    std::optional<QPoint> pointer_; ///< where the pointer is in the viewport
    double wheelRemainder_ = 0;
    bool hasWidth_ = false;     ///< the layout has given the rows theirs
    qreal boundPixelRatio_ = 1; ///< for which the rows in sight were bound
};

} // namespace kestrel::linux_shell
