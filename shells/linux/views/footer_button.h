#pragma once
// A button of the popover's footer: a symbol and a text without a border.

#include "shells/linux/views/kit/control_button.h"
#include "views/popover/menu_popover_style.h"

namespace kestrel::linux_shell {

class FooterButton final : public ControlButton {
    Q_OBJECT

  public:
    /// Pixels between the button's edges and its symbol and text.
    static constexpr int margin = 5;

    /// The texts of `look` outlive the button.
    explicit FooterButton(const menu_popover_style::footer::Button& look,
                          QWidget* parent = nullptr);

    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    menu_popover_style::footer::Button look_;
};

} // namespace kestrel::linux_shell
