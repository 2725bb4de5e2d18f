#include "shells/linux/desktop/accessible_role.h"

#include <QAccessibleWidget>
#include <QVariant>
#include <QWidget>

namespace kestrel::linux_shell {

namespace {

constexpr const char* roleProperty = "kestrelAccessibleRole";
constexpr const char* modalProperty = "kestrelAccessibleModal";

class WidgetWithRole final : public QAccessibleWidget {
  public:
    using QAccessibleWidget::QAccessibleWidget;

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        // The toolkit says so of a widget that passes the focus on as well.
        state.focused = state.focused && widget()->focusProxy() == nullptr;
        state.modal = widget()->property(modalProperty).toBool();
        return state;
    }
};

QAccessibleInterface* makeInterface(const QString& /*className*/, QObject* object) {
    const QVariant role = object == nullptr ? QVariant() : object->property(roleProperty);
    auto* widget = qobject_cast<QWidget*>(object);
    if (widget == nullptr || !role.isValid())
        return nullptr;
    return new WidgetWithRole(widget, static_cast<QAccessible::Role>(role.toInt()));
}

} // namespace

void setAccessibleRole(QWidget& widget, QAccessible::Role role, Modality modality) {
    QAccessible::installFactory(makeInterface);
    widget.setProperty(roleProperty, static_cast<int>(role));
    widget.setProperty(modalProperty, modality == Modality::modal);
}

} // namespace kestrel::linux_shell
