#pragma once
// The base of every button that draws itself: knows when the pointer is over it and when its
// keyboard focus is worth a ring. Space presses it; Return is left to others.

#include "shells/linux/views/kit/keyboard_focus.h"

#include <QAbstractButton>

namespace kestrel::linux_shell {

class ControlButton : public QAbstractButton {
    Q_OBJECT

  public:
    explicit ControlButton(QWidget* parent = nullptr);

  protected:
    bool showsHover() const { return isEnabled() && underMouse(); }

    /// The focus came from the keyboard; a click on a button needs no mark.
    bool showsFocus() const { return hasFocus() && keyboardFocus_.isFromKeyboard(); }

    /// What a button without a border shows behind its face: that it is hovered, pressed, focused.
    void drawBackground(QPainter& painter, const QRectF& area) const;

    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    KeyboardFocus keyboardFocus_;
};

} // namespace kestrel::linux_shell
