#pragma once
// A button of the toolbar strip: a symbol above its label, no border; the whole rectangle reacts.
// No QToolButton: the desktop's style would choose the gaps, the font and the colours.

#include "shells/linux/views/kit/control_button.h"

#include <string>

namespace kestrel::linux_shell {

class ToolbarButton : public ControlButton {
    Q_OBJECT

  public:
    /// `label` is also the tooltip and the accessible name.
    ToolbarButton(const QString& label, std::string symbol, QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    std::string symbol_;
};

} // namespace kestrel::linux_shell
