#include "shells/linux/views/kit/actions_menu.h"

#include "shells/linux/views/kit/style_bridge.h"

#include <QEvent>
#include <QGuiApplication>
#include <QStyleHints>
#include <QStyleOptionMenuItem>
#include <QVariant>

#include <algorithm>

namespace kestrel::linux_shell {

namespace {

constexpr const char* destructiveProperty = "kestrelDestructive";
constexpr const char* keysProperty = "kestrelKeys";
constexpr int shownKeysSpacing = 24; // pixels between the longest title and the keys

} // namespace

// Assistive technology triggers an action without the click that closes the menu.
ActionsMenu::ActionsMenu(QWidget* parent) : QMenu(parent) {
    connect(this, &QMenu::triggered, this, &QWidget::hide);
}

QAction* ActionsMenu::addDestructiveAction(const QString& title) {
    QAction* action = addAction(title);
    action->setProperty(destructiveProperty, true);
    return action;
}

void ActionsMenu::showKeys(QAction& action, const QKeySequence& keys) {
    if (QGuiApplication::styleHints()->showShortcutsInContextMenus())
        action.setProperty(keysProperty, keys.toString(QKeySequence::NativeText));
    reserveKeys();
}

QString ActionsMenu::shownKeys(const QAction& action) {
    return action.property(keysProperty).toString();
}

int ActionsMenu::keysWidth() const {
    int width = 0;
    const QList<QAction*> all = actions();
    for (const QAction* action : all)
        width = std::max(width, fontMetrics().horizontalAdvance(shownKeys(*action)));
    return width;
}

// The menu reckons with the keys of shortcuts only.
void ActionsMenu::reserveKeys() {
    const int keys = keysWidth();
    if (keys == 0)
        return;
    setMinimumWidth(0);
    layOutAnew();
    setMinimumWidth(sizeHint().width() + shownKeysSpacing + keys);
    layOutAnew();
}

// Its lines are measured once for each style and font.
void ActionsMenu::layOutAnew() {
    QEvent fontChange(QEvent::FontChange);
    QMenu::changeEvent(&fontChange);
}

bool ActionsMenu::event(QEvent* event) {
    const bool isHandled = QMenu::event(event);
    if (event->type() == QEvent::Polish || event->type() == QEvent::StyleChange ||
        event->type() == QEvent::FontChange)
        reserveKeys();
    return isHandled;
}

void ActionsMenu::initStyleOption(QStyleOptionMenuItem* option, const QAction* action) const {
    QMenu::initStyleOption(option, action);
    if (action == nullptr)
        return;
    if (const QString keys = shownKeys(*action); !keys.isEmpty()) {
        option->text += QLatin1Char('\t') + keys;
        option->reservedShortcutWidth = keysWidth();
    }
    // On the full highlight its colour could not be read.
    const bool isOnHighlight = option->state.testFlag(QStyle::State_Selected) &&
                               paletteOnSelection(palette()) != palette();
    if (isOnHighlight || !action->property(destructiveProperty).toBool())
        return;
    // Styles differ in which of the three they take a menu's text from.
    const QColor color = colorFor(style::ColorLevel::destructive, palette());
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        option->palette.setColor(role, color);
}

} // namespace kestrel::linux_shell
