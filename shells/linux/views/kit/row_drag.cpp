#include "shells/linux/views/kit/row_drag.h"

#include "shells/linux/views/kit/selection_list.h"

#include <QApplication>
#include <QPainter>
#include <QScrollBar>
#include <QTimerEvent>

#include <utility>

namespace kestrel::linux_shell {

namespace {

constexpr int edge = 24;           // pixels from the viewport's edge where the list scrolls
constexpr int scrollStep = 6;      // pixels
constexpr int scrollInterval = 16; // milliseconds
constexpr int targetHeight = 8;    // pixels; the line with its ring

class Ghost : public QWidget {
  public:
    Ghost(const QPixmap& image, QWidget* parent) : QWidget(parent), image_(image) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        resize(image.deviceIndependentSize().toSize());
    }

  protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        QColor outline = palette().color(QPalette::WindowText);
        outline.setAlphaF(0.15F);
        painter.setPen(outline);
        painter.setBrush(palette().color(QPalette::Base));
        painter.setOpacity(0.95);
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 6, 6);
        painter.drawPixmap(0, 0, image_);
    }

  private:
    QPixmap image_;
};

class Target : public QWidget {
  public:
    explicit Target(QWidget* parent) : QWidget(parent) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

  protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const double middle = height() / 2.0;
        if (isRightToLeft()) { // the ring stands where a row begins
            painter.translate(width(), 0);
            painter.scale(-1, 1);
        }
        painter.setPen(QPen(palette().color(QPalette::Active, QPalette::Highlight), 2));
        painter.drawEllipse(QPointF(middle, middle), middle - 1.5, middle - 1.5);
        painter.drawLine(QPointF(2 * middle - 0.5, middle), QPointF(width() - 1.0, middle));
    }
};

} // namespace

RowDrag::RowDrag(SelectionList& list) : list_(list) {
    connect(list.verticalScrollBar(), &QScrollBar::valueChanged, this, [this] {
        if (row_ >= 0)
            showTarget();
    });
}

void RowDrag::press(int row, QPoint position) {
    cancel();
    pressedRow_ = row;
    pressed_ = position;
    pointer_ = position;
}

void RowDrag::move(QPoint position) {
    pointer_ = position;
    if (row_ < 0) {
        const int distance = (position - pressed_).manhattanLength();
        if (pressedRow_ < 0 || distance < QApplication::startDragDistance())
            return;
        begin();
    }
    if (row_ < 0)
        return;
    const bool nearEdge = position.y() < edge || position.y() > list_.viewport()->height() - edge;
    if (!nearEdge)
        scrolling_.stop();
    else if (!scrolling_.isActive())
        scrolling_.start(scrollInterval, this);
    showTarget();
}

void RowDrag::begin() {
    ListRow* row = list_.realisedRow(pressedRow_);
    if (row == nullptr)
        return;
    row_ = std::exchange(pressedRow_, -1);
    grip_ = pressed_.y() - row->y();
    QPixmap image(row->size() * row->devicePixelRatio());
    image.setDevicePixelRatio(row->devicePixelRatio());
    image.fill(Qt::transparent);
    row->render(&image, {}, {}, QWidget::DrawChildren);
    ghost_ = new Ghost(image, list_.viewport());
    target_ = new Target(list_.viewport());
    ghost_->show();
    target_->show();
}

int RowDrag::destination() const { return list_.gapAt(pointer_); }

void RowDrag::showTarget() {
    const QRect source = list_.rowRect(row_);
    ghost_->move(source.left(), pointer_.y() - grip_);
    target_->setGeometry(source.left(), list_.gapTop(destination()) - targetHeight / 2,
                         source.width(), targetHeight);
    target_->raise();
}

void RowDrag::timerEvent(QTimerEvent* event) {
    if (event->timerId() != scrolling_.timerId() || row_ < 0)
        return;
    QScrollBar* bar = list_.verticalScrollBar();
    bar->setValue(bar->value() + (pointer_.y() < edge ? -scrollStep : scrollStep));
}

void RowDrag::drop() {
    const int row = row_;
    const int destination = row < 0 ? -1 : this->destination();
    cancel();
    if (row >= 0 && destination != row && destination != row + 1)
        Q_EMIT list_.moveRequested(row, destination);
}

void RowDrag::cancel() {
    scrolling_.stop();
    pressedRow_ = -1;
    row_ = -1;
    delete std::exchange(ghost_, nullptr);
    delete std::exchange(target_, nullptr);
}

} // namespace kestrel::linux_shell
