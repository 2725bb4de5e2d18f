#include "shells/linux/views/kit/divider.h"

#include "shells/linux/desktop/accessible_role.h"
#include "shells/linux/views/kit/style_bridge.h"

#include <QPainter>

namespace kestrel::linux_shell {

Divider::Divider(QWidget* parent) : QWidget(parent) {
    setAccessibleRole(*this, QAccessible::Separator);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setFixedHeight(1);
}

void Divider::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), separatorColor(palette()));
}

} // namespace kestrel::linux_shell
