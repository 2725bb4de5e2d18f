#include "shells/linux/views/kit/row_drag.h"

#include "shells/linux/views/kit/autoscroll.h"
#include "shells/linux/views/kit/row_ghost.h"
#include "shells/linux/views/kit/selection_list.h"

#include <QApplication>
#include <QGraphicsOpacityEffect>
#include <QScrollBar>
#include <QTimerEvent>

#include <algorithm>
#include <utility>

namespace kestrel::linux_shell {

namespace {

// Without its controls, which do nothing while it is carried.
QPixmap imageOf(ListRow& row) {
    QPixmap image(row.size() * row.devicePixelRatio());
    image.setDevicePixelRatio(row.devicePixelRatio());
    image.fill(Qt::transparent);
    row.render(&image, {}, {}, {});
    return image;
}

// Not hidden: a hidden widget would lose the button that is down on it.
void showNothingOf(ListRow& row) {
    auto* const invisible = new QGraphicsOpacityEffect;
    invisible->setOpacity(0);
    row.setGraphicsEffect(invisible);
}

} // namespace

RowDrag::RowDrag(SelectionList& list) : list_(list) {
    connect(list.verticalScrollBar(), &QScrollBar::valueChanged, this, [this] {
        if (row_ >= 0)
            showSlot();
    });
}

RowDrag::~RowDrag() {
    if (row_ >= 0)
        QGuiApplication::restoreOverrideCursor();
}

void RowDrag::press(int row, QPoint position) {
    cancel();
    holdsButton_ = true;
    pressedRow_ = row;
    pressed_ = position;
    pointer_ = position;
}

void RowDrag::move(QPoint position) {
    pointer_ = position;
    const int distance = (position - pressed_).manhattanLength();
    if (pressedRow_ >= 0 && distance >= QApplication::startDragDistance())
        begin();
    if (row_ < 0)
        return;
    scrollAtEdge();
    showGhost();
    showSlot();
}

void RowDrag::begin() {
    ListRow* row = list_.realisedRow(pressedRow_);
    if (row == nullptr)
        return;
    row_ = std::exchange(pressedRow_, -1);
    grip_ = pressed_.y() - row->y();
    shownDestination_ = row_;
    // The card has a background of its own, whatever the row stood on.
    Q_EMIT shiftsChanged();
    ghost_ = new RowGhost(imageOf(*row), list_.viewport());
    slot_ = new RowSlot(list_.viewport());
    slot_->lower();
    source_ = row;
    showNothingOf(*row);
    ghost_->show();
    slot_->show();
    QGuiApplication::setOverrideCursor(Qt::ClosedHandCursor);
}

std::optional<int> RowDrag::destination() const {
    if (row_ < 0 || !list_.viewport()->rect().contains(pointer_))
        return std::nullopt;
    return list_.gapAt(pointer_);
}

int RowDrag::shiftOf(int row) const {
    if (row_ < 0 || row == row_ || !shownDestination_)
        return 0;
    const int height = list_.rowRect(row_).height();
    if (row > row_ && row < *shownDestination_)
        return -height;
    return row < row_ && row >= *shownDestination_ ? height : 0;
}

void RowDrag::showGhost() {
    const QRect source = list_.rowRect(row_);
    const int lowest = std::max(list_.viewport()->height() - source.height(), 0);
    ghost_->moveImage({source.left(), std::clamp(pointer_.y() - grip_, 0, lowest)});
    ghost_->raise();
}

// Outside the list it is the place from where the row was taken.
void RowDrag::showSlot() {
    const std::optional<int> destination = this->destination();
    ghost_->setLands(destination.has_value());
    QRect place = list_.rowRect(row_);
    if (destination && *destination <= row_)
        place.moveTop(list_.gapTop(*destination));
    else if (destination)
        place.moveTop(list_.gapTop(*destination) - place.height());
    slot_->setGeometry(place);
    if (std::exchange(shownDestination_, destination) != destination)
        Q_EMIT shiftsChanged();
}

void RowDrag::scrollAtEdge() {
    if (autoscrollStep(pointer_.y(), list_.viewport()->height()) == 0)
        scrolling_.stop();
    else if (!scrolling_.isActive())
        scrolling_.start(autoscrollInterval, this);
}

void RowDrag::timerEvent(QTimerEvent* event) {
    if (event->timerId() != scrolling_.timerId() || row_ < 0)
        return;
    QScrollBar* bar = list_.verticalScrollBar();
    bar->setValue(bar->value() + autoscrollStep(pointer_.y(), list_.viewport()->height()));
    ghost_->raise();
}

void RowDrag::drop(QPoint position) {
    holdsButton_ = false;
    pointer_ = position;
    const int row = row_;
    const std::optional<int> destination = this->destination();
    cancel();
    if (destination && *destination != row && *destination != row + 1)
        Q_EMIT list_.moveRequested(row, *destination);
}

void RowDrag::cancel() {
    scrolling_.stop();
    pressedRow_ = -1;
    if (std::exchange(row_, -1) < 0)
        return;
    QGuiApplication::restoreOverrideCursor();
    if (source_ != nullptr)
        source_->setGraphicsEffect(nullptr);
    delete std::exchange(ghost_, nullptr);
    delete std::exchange(slot_, nullptr);
    Q_EMIT shiftsChanged();
}

void RowDrag::follow(Qt::MouseButtons buttons) {
    if (buttons.testFlag(Qt::LeftButton))
        return;
    holdsButton_ = false;
    cancel();
}

} // namespace kestrel::linux_shell
