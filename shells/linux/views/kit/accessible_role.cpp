#include "shells/linux/views/kit/accessible_role.h"

#include <QAccessibleWidget>
#include <QVariant>
#include <QWidget>

namespace kestrel::linux_shell {

namespace {

constexpr const char* roleProperty = "kestrelAccessibleRole";

QAccessibleInterface* makeInterface(const QString& /*className*/, QObject* object) {
    const QVariant role = object == nullptr ? QVariant() : object->property(roleProperty);
    auto* widget = qobject_cast<QWidget*>(object);
    if (widget == nullptr || !role.isValid())
        return nullptr;
    return new QAccessibleWidget(widget, static_cast<QAccessible::Role>(role.toInt()));
}

} // namespace

void setAccessibleRole(QWidget& widget, QAccessible::Role role) {
    QAccessible::installFactory(makeInterface);
    widget.setProperty(roleProperty, static_cast<int>(role));
}

} // namespace kestrel::linux_shell
