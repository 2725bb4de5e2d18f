#pragma once
// The widget behind a window of the program.

#include "shells/linux/desktop/widget_controller.h"

#include <QWidget>

#include <memory>

namespace kestrel::linux_shell {

class SettingsWindowShell;

/// May outlive its shell until the event loop is reached again, because the shell may die while
/// the widget handles an event.
class WindowFrame final : public QWidget {
    Q_OBJECT

  public:
    WindowFrame(SettingsWindowShell& shell, Qt::WindowFlags flags);

    void setContent(std::unique_ptr<WidgetController> controller);

    /// No event reaches the shell from now on.
    void leaveShell() { shell_ = nullptr; }

  protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    SettingsWindowShell* shell_;
    std::unique_ptr<WidgetController> controller_;
};

} // namespace kestrel::linux_shell
