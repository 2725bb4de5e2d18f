#pragma once
// The user's hands: pointer, wheel and key events for a widget, delivered as the window system
// does, and a log of what they caused.

#include <QString>
#include <QWidget>

#include <string>
#include <utility>
#include <vector>

namespace kestrel::linux_shell {

/// A text per entry, in order.
class EventLog {
  public:
    EventLog& operator<<(const char* text) { return add(text); }
    EventLog& operator<<(int number) { return add(std::to_string(number)); }
    EventLog& operator<<(const QString& text) { return add(text.toStdString()); }
    EventLog& operator<<(const std::string& text) { return add(text); }

    /// What was logged since the last call.
    std::vector<std::string> take() { return std::exchange(entries_, {}); }

  private:
    EventLog& add(std::string entry) {
        entries_.push_back(std::move(entry));
        return *this;
    }

    std::vector<std::string> entries_;
};

/// `held` are the buttons that are down already.
void press(QWidget& widget, QPoint position, Qt::MouseButton button = Qt::LeftButton,
           Qt::MouseButtons held = Qt::NoButton);
void release(QWidget& widget, QPoint position, Qt::MouseButton button = Qt::LeftButton);
void click(QWidget& widget, QPoint position);
void doubleClick(QWidget& widget, QPoint position);

/// The pointer moves to `position`: with no button down, with the left one down.
void move(QWidget& widget, QPoint position);
void drag(QWidget& widget, QPoint position);
void leave(QWidget& widget);

/// `angle` in eighths of a degree; a notch of a wheel has 120.
void wheel(QWidget& widget, QPoint position, int angle);

void keyClick(QWidget& widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
              const QString& text = {});

/// The same for the whole window of `widget`: shortcuts come first, then the widget that has the
/// focus.
void sendWindowKey(QWidget& widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
                   const QString& text = {});

/// The same in the queue of the window system: the events of several calls are delivered with the
/// next turn of the event loop, one right after the other.
void queueWindowKey(QWidget& widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
                    const QString& text = {});

} // namespace kestrel::linux_shell
