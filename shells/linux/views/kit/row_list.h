#pragma once
// A vertical list of any length, worked by pointer and keyboard: what MenuList and PickList have
// in common. Knows positions, nothing of the items. Only the rows in sight exist: those that
// scroll out are bound again to the items that scroll in.
//
// Not a QListView because of assistive programs: a row offers them actions of its own, such as its
// menu and its moves, and its button is a child of it. The rows that a QListView shows them are
// private to the toolkit and take neither.

#include "shells/linux/views/kit/list_row.h"
#include "shells/linux/views/kit/row_geometry.h"
#include "views/row_step.h"

#include <QAbstractScrollArea>
#include <QKeySequence>
#include <QMargins>

#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace kestrel::linux_shell {

/// What a list shows. It outlives the list.
class RowSource {
  public:
    virtual ~RowSource() = default;
    virtual int count() const = 0;

    /// The height of every row in pixels; nothing when they differ.
    virtual std::optional<int> uniformHeight() const { return std::nullopt; }

    /// The height of each row, where they differ. Asked whenever the rows, the width or the font
    /// change, so it has to be quick.
    virtual std::vector<int> heights(int /*width*/) const { return {}; }

    /// What a screen reader says.
    virtual QString titleOf(int row) const = 0;

    virtual ListRow* makeRow(QWidget* parent) = 0;

    /// Shows item `index` in `row`, which may have shown another before.
    virtual void bindRow(ListRow& row, int index) = 0;
};

/// What assistive programs can do with a row of a list.
struct RowAction {
    QString name;
    QString text; ///< empty where the toolkit knows the name
    QKeySequence keys;
    std::function<void(int row)> perform;
};

class RowList : public QAbstractScrollArea {
    Q_OBJECT

  public:
    /// The source's rows have changed. Keeps the scroll position; a click or drag under way ends
    /// without effect. The current row stays at its number while that exists.
    void reload();

    /// The same rows look different: binds those in sight again and disturbs nothing.
    void refresh();

    /// The rows of the source that are laid out, which those added since the last reload are not.
    int count() const;

    int currentRow() const { return currentRow_; }

    /// -1 for none. Emits nothing; scrolls to the row when it was a key that led there.
    void setCurrentRow(int row);
    void ensureVisible(int row);

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

    /// Offered for each row while the list is enabled.
    virtual std::vector<RowAction> rowActions();

  Q_SIGNALS:
    /// There are other rows, or they look different.
    void rowsChanged();

    /// The user wants what the row stands for; Return does it for the current row.
    void activated(int row);

    /// Letters typed to find a row by its title.
    void typed(const QString& text);

  protected:
    enum class LastInput { pointer, keyboard };

    /// `padding` is in pixels, between the viewport's edges and the rows.
    RowList(RowSource& source, Qt::ScrollBarPolicy scrollBar, const QMargins& padding,
            QWidget* parent);

    /// What a click on `row` does.
    virtual void pressRow(int row) = 0;

    /// A key asks for another row; there is at least one.
    virtual void takeStep(RowStep step) = 0;

    /// False when the key is not the list's, which has at least one row.
    virtual bool takeKey(const QKeyEvent& event);

    /// A click or drag under way ends without effect.
    virtual void cancelGesture() = 0;

    /// Tells assistive programs.
    virtual void currentRowChanged();

    /// The pointer is over `row`, -1 for none; also called when it was there before.
    virtual void reportPointer(int /*row*/) {}

    /// The row that is being dragged, which keeps its widget out of sight too; -1 for none.
    /// Meanwhile no row reacts to the pointer, and that one does not show whether it is current.
    virtual int carriedRow() const { return -1; }

    /// How far a row is shown from its place to make way for the carried one, in pixels: at most
    /// by that one's height.
    virtual int shiftOf(int /*row*/) const { return 0; }

    /// `rowRect`, where the row is shown now.
    QRect shownRect(int row) const { return rowRect(row).translated(0, shiftOf(row)); }

    LastInput lastInput() const { return lastInput_; }
    void setLastInput(LastInput input) { lastInput_ = input; }
    void layoutRows() { layoutRows(Binding::keep); }

    bool viewportEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    friend class ListRow;

    enum class Binding { keep, anew }; ///< of rows that are in sight already

    int scrollOffset() const;
    int rowsWidth() const;
    void rebuildGeometry();
    void layoutRows(Binding binding);
    RowGeometry::Range shownRange() const;
    void realise(int row);
    void park(ListRow* row);
    void updateStates();
    void pointerAt(std::optional<QPoint> position);
    bool typeLetter(const QKeyEvent& event);

    RowSource& source_;
    const QMargins padding_;
    RowGeometry geometry_;
    std::map<int, ListRow*> rows_; ///< those in sight, by position
    std::vector<ListRow*> spare_;

    int currentRow_ = -1;
    LastInput lastInput_ = LastInput::pointer;
    std::optional<QPoint> pointer_; ///< where the pointer is in the viewport
    double wheelRemainder_ = 0;
    bool hasWidth_ = false;     ///< the layout has given the rows theirs
    qreal boundPixelRatio_ = 1; ///< for which the rows in sight were bound
};

} // namespace kestrel::linux_shell
