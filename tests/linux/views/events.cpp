#include "tests/linux/views/events.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTest>
#include <QWheelEvent>

namespace kestrel::linux_shell {

namespace {

void send(QWidget& widget, QEvent::Type type, QPoint position, Qt::MouseButton button,
          Qt::MouseButtons buttons) {
    QMouseEvent event(type, position, widget.mapToGlobal(position), button, buttons,
                      Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

} // namespace

void press(QWidget& widget, QPoint position, Qt::MouseButton button, Qt::MouseButtons held) {
    send(widget, QEvent::MouseButtonPress, position, button, held | button);
}

void release(QWidget& widget, QPoint position, Qt::MouseButton button) {
    send(widget, QEvent::MouseButtonRelease, position, button, Qt::NoButton);
}

void click(QWidget& widget, QPoint position) {
    press(widget, position);
    release(widget, position);
}

void doubleClick(QWidget& widget, QPoint position) {
    click(widget, position);
    send(widget, QEvent::MouseButtonDblClick, position, Qt::LeftButton, Qt::LeftButton);
    release(widget, position);
}

void move(QWidget& widget, QPoint position) {
    send(widget, QEvent::MouseMove, position, Qt::NoButton, Qt::NoButton);
}

void drag(QWidget& widget, QPoint position) {
    send(widget, QEvent::MouseMove, position, Qt::NoButton, Qt::LeftButton);
}

void leave(QWidget& widget) {
    QEvent event(QEvent::Leave);
    QApplication::sendEvent(&widget, &event);
}

void wheel(QWidget& widget, QPoint position, int angle) {
    QWheelEvent event(position, widget.mapToGlobal(position), QPoint(), QPoint(0, angle),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget, &event);
}

void keyClick(QWidget& widget, int key, Qt::KeyboardModifiers modifiers, const QString& text) {
    QKeyEvent down(QEvent::KeyPress, key, modifiers, text);
    QApplication::sendEvent(&widget, &down);
    QKeyEvent up(QEvent::KeyRelease, key, modifiers, text);
    QApplication::sendEvent(&widget, &up);
}

void sendWindowKey(QWidget& widget, int key, Qt::KeyboardModifiers modifiers, const QString& text) {
    QWindow* const window = widget.window()->windowHandle();
    QTest::simulateEvent(window, true, key, modifiers, text, false);
    QTest::simulateEvent(window, false, key, modifiers, text, false);
}

void queueWindowKey(QWidget& widget, int key, Qt::KeyboardModifiers modifiers,
                    const QString& text) {
    QWindow* const window = widget.window()->windowHandle();
    qt_handleKeyEvent(window, QEvent::KeyPress, key, modifiers, text, false);
    qt_handleKeyEvent(window, QEvent::KeyRelease, key, modifiers, text, false);
}

} // namespace kestrel::linux_shell
