#include "shells/linux/views/kit/row_ghost.h"

#include "shells/linux/desktop/appearance/palettes.h"
#include "shells/linux/views/kit/painting.h"
#include "shells/linux/views/kit/style_bridge.h"

#include <QPainter>

namespace kestrel::linux_shell {

namespace {

constexpr double cardRadius = 6;
constexpr int cardShadowReach = 8;                   // pixels around the card
constexpr int cardShadowDrop = 2;                    // pixels by which the shadow lies lower
constexpr float cardShadowOpacity = 0.028F;          // of each of its layers
constexpr double cardShare = 0.14;                   // of the accent colour in the card
constexpr double cardOutlineOpacity = 0.2;           // of the text colour
constexpr double homelessOpacity = 0.5;              // of the image where it would not land
constexpr double highContrastHomelessOpacity = 0.75; // which is to be read there too
constexpr double slotOpacity = 0.05;                 // of the text colour

void drawCardShadow(QPainter& painter, const QRectF& card) {
    QColor shade = Qt::black;
    shade.setAlphaF(cardShadowOpacity);
    for (int reach = 1; reach <= cardShadowReach - cardShadowDrop; ++reach) {
        const QRectF layer = card.adjusted(-reach, -reach, reach, reach);
        fillRounded(painter, layer.translated(0, cardShadowDrop), cardRadius + reach, shade);
    }
}

} // namespace

RowGhost::RowGhost(const QPixmap& image, QWidget* parent) : QWidget(parent), image_(image) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    resize(image.deviceIndependentSize().toSize() + 2 * QSize(cardShadowReach, cardShadowReach));
}

void RowGhost::moveImage(QPoint topLeft) {
    move(topLeft - QPoint(cardShadowReach, cardShadowReach));
}

void RowGhost::setLands(bool lands) {
    if (lands != lands_) {
        lands_ = lands;
        update();
    }
}

void RowGhost::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QRectF card = QRectF(rect()).adjusted(cardShadowReach, cardShadowReach, -cardShadowReach,
                                                -cardShadowReach);
    drawCardShadow(painter, card);
    fillRounded(painter, card, cardRadius,
                mixed(palette().color(QPalette::Active, QPalette::Base),
                      colorFor(style::ColorLevel::accent, palette()), lands_ ? cardShare : 0));
    strokeRounded(painter, card, cardRadius, outlineColor(palette(), cardOutlineOpacity), 1);
    if (!lands_)
        painter.setOpacity(isHighContrast(palette()) ? highContrastHomelessOpacity
                                                     : homelessOpacity);
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
