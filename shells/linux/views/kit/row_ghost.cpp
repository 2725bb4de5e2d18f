#include "shells/linux/views/kit/row_ghost.h"

#include "shells/linux/views/kit/painting.h"
#include "shells/linux/views/kit/style_bridge.h"

#include <QPainter>

namespace kestrel::linux_shell {

namespace {

constexpr double cardRadius = 6;
constexpr int shadowReach = 8;          // pixels around the card
constexpr int shadowDrop = 2;           // pixels by which the shadow lies lower
constexpr float shadowOpacity = 0.028F; // of each of the layers, one for each pixel of its reach
constexpr double cardShare = 0.14;      // of the accent colour in the card
constexpr double outlineOpacity = 0.2;  // of the text colour
constexpr double homelessOpacity = 0.5; // of the image where it would not land
constexpr double slotOpacity = 0.05;    // of the text colour

void drawShadow(QPainter& painter, const QRectF& card) {
    QColor shade = Qt::black;
    shade.setAlphaF(shadowOpacity);
    for (int reach = 1; reach <= shadowReach - shadowDrop; ++reach) {
        const QRectF layer = card.adjusted(-reach, -reach, reach, reach);
        fillRounded(painter, layer.translated(0, shadowDrop), cardRadius + reach, shade);
    }
}

} // namespace

RowGhost::RowGhost(const QPixmap& image, QWidget* parent) : QWidget(parent), image_(image) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    resize(image.deviceIndependentSize().toSize() + 2 * QSize(shadowReach, shadowReach));
}

void RowGhost::moveImage(QPoint topLeft) { move(topLeft - QPoint(shadowReach, shadowReach)); }

void RowGhost::setLands(bool lands) {
    if (lands != lands_) {
        lands_ = lands;
        update();
    }
}

void RowGhost::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QRectF card =
        QRectF(rect()).adjusted(shadowReach, shadowReach, -shadowReach, -shadowReach);
    drawShadow(painter, card);
    fillRounded(painter, card, cardRadius,
                mixed(palette().color(QPalette::Active, QPalette::Base),
                      colorFor(style::ColorLevel::accent, palette()), lands_ ? cardShare : 0));
    strokeRounded(painter, card, cardRadius, outlineColor(palette(), outlineOpacity), 1);
    painter.setOpacity(lands_ ? 1 : homelessOpacity);
    painter.drawPixmap(card.topLeft(), image_);
}

RowSlot::RowSlot(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void RowSlot::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    fillRounded(painter, rect(), cardRadius, washColor(palette(), slotOpacity));
}

} // namespace kestrel::linux_shell
