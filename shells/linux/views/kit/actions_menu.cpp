#include "shells/linux/views/kit/actions_menu.h"

#include "shells/linux/views/kit/style_bridge.h"

#include <QStyleOptionMenuItem>
#include <QVariant>

namespace kestrel::linux_shell {

namespace {
constexpr const char* destructiveProperty = "kestrelDestructive";
}

// Assistive technology triggers an action without the click that closes the menu.
ActionsMenu::ActionsMenu(QWidget* parent) : QMenu(parent) {
    connect(this, &QMenu::triggered, this, &QWidget::hide);
}

QAction* ActionsMenu::addDestructiveAction(const QString& title) {
    QAction* action = addAction(title);
    action->setProperty(destructiveProperty, true);
    return action;
}

void ActionsMenu::initStyleOption(QStyleOptionMenuItem* option, const QAction* action) const {
    QMenu::initStyleOption(option, action);
    if (action == nullptr || !action->property(destructiveProperty).toBool())
        return;
    // Styles differ in which of the three they take a menu's text from.
    const QColor color = colorFor(style::ColorLevel::destructive, palette());
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        option->palette.setColor(role, color);
}

} // namespace kestrel::linux_shell
