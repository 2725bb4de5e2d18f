#include "shells/linux/views/kit/announcer.h"

#include "shells/linux/desktop/accessible_role.h"
#include "shells/linux/desktop/appearance/texts.h"

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

// Later, because a row that gets the focus by the same change is reported later too, and what is
// reported last interrupts the rest.
void Announcer::announce(const Announcement& announcement) {
    if (!QAccessible::isActive())
        return;
    const auto say = [this, text = textFor(announcement)] {
        setAccessibleName(text);
        // A screen reader says a notification when it comes into sight.
        QAccessibleEvent shown(this, QAccessible::ObjectShow);
        QAccessible::updateAccessibility(&shown);
    };
    QMetaObject::invokeMethod(this, say, Qt::QueuedConnection);
}

} // namespace kestrel::linux_shell
