#include "shells/linux/views/kit/push_button.h"

#include "shells/linux/views/kit/mnemonics.h"
#include "shells/linux/views/kit/painting.h"
#include "shells/linux/views/kit/style_bridge.h"
#include "shells/linux/views/kit/text_line.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

namespace kestrel::linux_shell {

namespace {

constexpr int titlePadding = 14;      // pixels beside the title
constexpr int minimumTitleWidth = 76; // pixels, so that short titles line up
constexpr style::Font plainFont = style::body;
constexpr style::Font prominentFont = style::body.withWeight(FontWeight::medium);

} // namespace

PushButton::PushButton(const QString& title, Look look, QWidget* parent)
    : ControlButton(parent), look_(look) {
    setText(title);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize PushButton::sizeHint() const {
    // Measured in the heavier font, so that both looks of a title are as wide.
    const int title = QFontMetrics(fontFor(prominentFont)).horizontalAdvance(text());
    return {std::max(title + 2 * titlePadding, minimumTitleWidth), controlHeight};
}

void PushButton::setMark(int mark) {
    mark_ = mark;
    update();
}

QColor PushButton::fill() const {
    const QPalette& colors = palette();
    const QColor text = colorFor(style::ColorLevel::primary, colors);
    if (look_ == Look::prominent && isEnabled()) {
        const QColor accent = colorFor(style::ColorLevel::accent, colors);
        const QColor shade = isDown() ? Qt::black : Qt::white;
        return mixed(accent, shade, isDown() ? 0.15 : showsHover() ? 0.1 : 0);
    }
    const QColor background = isDark(colors)
                                  ? mixed(colors.color(QPalette::Window), text, 0.12)
                                  : mixed(colors.color(QPalette::Window), Qt::white, 0.75);
    if (!isEnabled())
        return mixed(colors.color(QPalette::Window), text, 0.06);
    return mixed(background, text, isDown() ? 0.12 : showsHover() ? 0.05 : 0);
}

QColor PushButton::titleColor() const {
    if (!isEnabled())
        return colorFor(style::ColorLevel::tertiaryLabel, palette());
    return look_ == Look::prominent ? palette().color(QPalette::Active, QPalette::HighlightedText)
                                    : colorFor(style::ColorLevel::primary, palette());
}

void PushButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    fillRounded(painter, rect(), controlRadius, fill());
    if (look_ == Look::bordered || !isEnabled()) {
        strokeRounded(painter, rect(), controlRadius,
                      outlineColor(palette(), isEnabled() ? 0.2 : 0.1));
    }
    if (showsFocus()) {
        // On the accent colour the ring stands off the edge to be seen.
        const double inset = look_ == Look::prominent ? 2 : 0;
        const QRectF ring = QRectF(rect()).adjusted(inset, inset, -inset, -inset);
        const QColor color = look_ == Look::prominent
                                 ? titleColor()
                                 : colorFor(style::ColorLevel::accent, palette());
        strokeRounded(painter, ring, controlRadius - inset, color,
                      look_ == Look::prominent ? 1.5 : 2);
    }
    painter.setFont(fontFor(look_ == Look::prominent ? prominentFont : plainFont));
    painter.setPen(titleColor());
    drawMarked(painter, rect(), lineFlags(layoutDirection(), Qt::AlignHCenter, directionOf(text())),
               text(), mark_);
}

} // namespace kestrel::linux_shell
