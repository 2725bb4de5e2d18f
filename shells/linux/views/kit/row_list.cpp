#include "shells/linux/views/kit/row_list.h"

#include "shells/linux/views/kit/row_list_accessible.h"

#include <QAccessible>
#include <QEvent>
#include <QScrollBar>

#include <algorithm>

namespace kestrel::linux_shell {
namespace {

constexpr int provisionalHeight = 40; // pixels
constexpr int pixelsPerScrollLine = 20;

} // namespace

RowList::RowList(RowSource& source, Qt::ScrollBarPolicy scrollBar, const QMargins& padding,
                 QWidget* parent)
    : QAbstractScrollArea(parent), source_(source), padding_(padding) {
    installRowListAccessibility();
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(scrollBar);
    viewport()->setAutoFillBackground(false);
    viewport()->setMouseTracking(true);
    verticalScrollBar()->setSingleStep(pixelsPerScrollLine);
    boundPixelRatio_ = devicePixelRatioF();
    rebuildGeometry();
}

int RowList::count() const { return std::min(geometry_.count(), source_.count()); }

int RowList::scrollOffset() const { return verticalScrollBar()->value(); }

int RowList::rowsWidth() const {
    return std::max(viewport()->width() - padding_.left() - padding_.right(), 0);
}

void RowList::rebuildGeometry() {
    const RowGeometry::Padding padding{padding_.top(), padding_.bottom()};
    if (const std::optional<int> height = source_.uniformHeight()) {
        geometry_ = RowGeometry::uniform(source_.count(), *height, padding);
    } else if (!hasWidth_) {
        // The heights follow with the width, before the list is shown.
        geometry_ = RowGeometry::uniform(source_.count(), provisionalHeight, padding);
    } else {
        geometry_ = RowGeometry::varying(source_.heights(rowsWidth()), padding);
    }
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setRange(0, std::max(geometry_.contentHeight() - viewport()->height(), 0));
}

void RowList::reload() {
    cancelGesture();
    currentRow_ = std::min(currentRow_, source_.count() - 1);
    rebuildGeometry();
    refresh();
    announceRowsChanged(*this);
}

void RowList::refresh() {
    layoutRows(Binding::anew);
    Q_EMIT rowsChanged();
}

RowGeometry::Range RowList::shownRange() const {
    const int carried = carriedRow();
    const int reach = carried < 0 ? 0 : geometry_.height(carried);
    RowGeometry::Range range =
        geometry_.visible(scrollOffset() - reach, viewport()->height() + 2 * reach);
    // The owner may not have told yet that rows have gone.
    range.last = std::min(range.last, count() - 1);
    return range;
}

// Rows in sight keep their widgets, so that hover, focus and an open menu stay where they are.
void RowList::layoutRows(Binding binding) {
    const RowGeometry::Range range = shownRange();
    const int count = this->count();
    const int kept = carriedRow();
    for (auto it = rows_.begin(); it != rows_.end();) {
        const auto [index, row] = *it;
        const bool needed = (index >= range.first && index <= range.last) || index == kept;
        if (!needed || index >= count) {
            park(row);
            it = rows_.erase(it);
            continue;
        }
        if (binding == Binding::anew)
            source_.bindRow(*row, index);
        ++it;
    }
    for (int index = range.first; index <= range.last; ++index)
        realise(index);
    for (const auto& [index, row] : rows_)
        row->setGeometry(shownRect(index));
    updateStates();
}

void RowList::realise(int row) {
    if (rows_.contains(row))
        return;
    ListRow* widget = nullptr;
    if (spare_.empty()) {
        widget = source_.makeRow(viewport());
    } else {
        widget = spare_.back();
        spare_.pop_back();
    }
    widget->setRow(row);
    widget->setGeometry(shownRect(row));
    source_.bindRow(*widget, row);
    rows_.emplace(row, widget);
    widget->show();
}

void RowList::park(ListRow* row) {
    row->giveFocusToList();
    row->hide();
    row->setRow(-1);
    row->setState({});
    spare_.push_back(row);
}

ListRow* RowList::realisedRow(int row) const {
    const auto found = rows_.find(row);
    return found == rows_.end() ? nullptr : found->second;
}

int RowList::rowAt(QPoint position) const { return geometry_.rowAt(position.y() + scrollOffset()); }

QRect RowList::rowRect(int row) const {
    return {padding_.left(), geometry_.top(row) - scrollOffset(), rowsWidth(),
            geometry_.height(row)};
}

int RowList::gapAt(QPoint position) const { return geometry_.gapAt(position.y() + scrollOffset()); }

int RowList::gapTop(int gap) const { return geometry_.top(gap) - scrollOffset(); }

void RowList::updateStates() {
    const bool reacts = pointer_ && carriedRow() < 0 && viewport()->rect().contains(*pointer_);
    const int hovered = reacts ? rowAt(*pointer_) : -1;
    const int selected = currentRow_ == carriedRow() ? -1 : currentRow_;
    for (const auto& [index, row] : rows_)
        row->setState({.hovered = index == hovered, .current = index == selected});
    viewport()->update();
    reportPointer(hovered);
}

void RowList::setCurrentRow(int row) {
    const int valid = row < geometry_.count() ? std::max(row, -1) : -1;
    if (valid == currentRow_)
        return;
    currentRow_ = valid;
    if (lastInput_ == LastInput::keyboard)
        ensureVisible(valid);
    updateStates();
    currentRowChanged();
}

void RowList::currentRowChanged() {
    if (hasFocus() && currentRow_ >= 0)
        announceFocusedRow(*this);
}

std::vector<RowAction> RowList::rowActions() {
    const auto focus = [this](int row) {
        setFocus(Qt::OtherFocusReason);
        setCurrentRow(row);
    };
    return {{QAccessibleActionInterface::pressAction(), {}, {}, [this](int row) { pressRow(row); }},
            {QAccessibleActionInterface::setFocusAction(), {}, {}, focus}};
}

void RowList::ensureVisible(int row) {
    if (row < 0 || row >= geometry_.count())
        return;
    // The padding belongs to the outermost rows, so that going to an end scrolls all the way.
    const int top = row == 0 ? 0 : geometry_.top(row);
    const int bottom =
        row == geometry_.count() - 1 ? geometry_.contentHeight() : geometry_.top(row + 1);
    if (top < scrollOffset())
        verticalScrollBar()->setValue(top);
    else if (bottom > scrollOffset() + viewport()->height())
        verticalScrollBar()->setValue(bottom - viewport()->height());
}

bool RowList::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::Leave) {
        pointerAt(std::nullopt);
    } else if (event->type() == QEvent::Paint && boundPixelRatio_ != devicePixelRatioF()) {
        // On a screen of another scale the rows need other images, after this drawing.
        boundPixelRatio_ = devicePixelRatioF();
        QMetaObject::invokeMethod(this, &RowList::refresh, Qt::QueuedConnection);
    }
    return QAbstractScrollArea::viewportEvent(event);
}

void RowList::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    hasWidth_ = true;
    rebuildGeometry();
    layoutRows();
}

void RowList::scrollContentsBy(int /*dx*/, int /*dy*/) { layoutRows(); }

void RowList::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    updateStates();
    if (currentRow_ >= 0)
        announceFocusedRow(*this);
}

void RowList::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    updateStates();
}

void RowList::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        rebuildGeometry();
        refresh();
    } else if (event->type() == QEvent::PaletteChange) {
        refresh();
    }
}

void RowList::hideEvent(QHideEvent* event) {
    QAbstractScrollArea::hideEvent(event);
    pointerAt(std::nullopt);
    cancelGesture();
}

} // namespace kestrel::linux_shell
