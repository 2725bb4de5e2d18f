#pragma once
// Has a screen reader say a text once, without the keyboard focus going anywhere. It is a
// notification in the accessible tree of a window, in which nothing of it is drawn.

#include "views/settings/announcement.h"

#include <QWidget>

namespace kestrel::linux_shell {

/// An announcement in the user's language.
QString textFor(const Announcement& announcement);

class Announcer : public QWidget {
    Q_OBJECT

  public:
    explicit Announcer(QWidget& window);

    /// Nothing while no assistive program listens.
    void announce(const Announcement& announcement);
};

} // namespace kestrel::linux_shell
