#include "shells/linux/views/kit/announcer.h"

#include "shells/linux/desktop/appearance/texts.h"
#include "shells/linux/desktop/accessible_role.h"

#include <QAccessible>
#include <QLocale>

namespace kestrel::linux_shell {

namespace {

QString textFor(const Announcement::Argument& argument) {
    if (const auto* number = std::get_if<std::size_t>(&argument))
        return QLocale().toString(static_cast<qulonglong>(*number));
    return toQString(std::get<std::string>(argument));
}

} // namespace

QString textFor(const Announcement& announcement) {
    const QString text = textFor(announcement.text);
    const QString first = textFor(announcement.arguments.front());
    return announcement.arguments.size() == 1
               ? text.arg(first)
               : text.arg(first, textFor(announcement.arguments.back()));
}

Announcer::Announcer(QWidget& window) : QWidget(&window) {
    setAccessibleRole(*this, QAccessible::Notification);
    hide();
}

// A screen reader says a notification when it comes into sight.
void Announcer::announce(const Announcement& announcement) {
    if (!QAccessible::isActive())
        return;
    setAccessibleName(textFor(announcement));
    QAccessibleEvent shown(this, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&shown);
}

} // namespace kestrel::linux_shell
