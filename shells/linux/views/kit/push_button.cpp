#include "shells/linux/views/kit/push_button.h"

#include "shells/linux/views/kit/control_faces.h"
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

void PushButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const ButtonFace face{.isProminent = look_ == Look::prominent,
                          .isEnabled = isEnabled(),
                          .isHovered = showsHover(),
                          .isDown = isDown(),
                          .showsFocus = showsFocus()};
    drawButtonFace(painter, rect(), palette(), face);
    painter.setFont(fontFor(look_ == Look::prominent ? prominentFont : plainFont));
    painter.setPen(buttonTitleColor(palette(), face));
    drawMarked(painter, rect(), lineFlags(layoutDirection(), Qt::AlignHCenter, directionOf(text())),
               text(), mark_);
}

} // namespace kestrel::linux_shell
