#pragma once
// A bordered button with a title, plain or filled with the accent colour.

#include "shells/linux/views/kit/control_button.h"

namespace kestrel::linux_shell {

class PushButton : public ControlButton {
    Q_OBJECT

  public:
    enum class Look { bordered, prominent };

    PushButton(const QString& title, Look look, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

    /// Underlines the character of the title at `mark`; -1 for none.
    void setMark(int mark);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QColor fill() const;
    QColor titleColor() const;

    Look look_;
    int mark_ = -1;
};

} // namespace kestrel::linux_shell
