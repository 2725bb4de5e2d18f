#pragma once
// The base of every button that draws itself: knows when the pointer is over it and when its
// keyboard focus is worth a ring. Space presses it, and so does Return unless it is left to others.

#include "shells/linux/views/kit/keyboard_focus.h"

#include <QAbstractButton>

namespace kestrel::linux_shell {

class ControlButton : public QAbstractButton {
    Q_OBJECT

  public:
    /// What Return and the keypad's Enter do while the button has the focus.
    enum class ReturnKey { presses, leftToOthers };

    explicit ControlButton(QWidget* parent = nullptr);

    /// For a form that must not be submitted by Return.
    void setReturnKey(ReturnKey returnKey) { returnKey_ = returnKey; }

  protected:
    bool showsHover() const { return isEnabled() && underMouse(); }

    /// The focus came from the keyboard; a click on a button needs no mark.
    bool showsFocus() const { return hasFocus() && keyboardFocus_.isFromKeyboard(); }

    /// What a button without a border shows behind its face: that it is hovered, pressed, focused.
    void drawBackground(QPainter& painter, const QRectF& area) const;

    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    ReturnKey returnKey_ = ReturnKey::presses;
    KeyboardFocus keyboardFocus_;
};

} // namespace kestrel::linux_shell
