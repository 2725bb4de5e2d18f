#pragma once
// What the program shows on the desktop, made by the shell: the status item, and each view in a
// window of its toolkit.

#include "platform/popover.h"
#include "platform/status_item.h"
#include "platform/window.h"
#include "views/popover/menu_popover_view.h"
#include "views/settings/settings_view.h"

#include <functional>
#include <memory>
#include <string_view>

namespace kestrel {

/// Main thread only. Every result is new and never null, and not shown yet except for the status
/// item. What is made owns its view and its callback; the desktop outlives it.
class Desktop {
  public:
    virtual ~Desktop() = default;

    /// An item that shows the system symbol `symbol` in the bar's own colours, and nothing where
    /// the system has no such symbol. Assistive technologies call it `description`. `onClick` is
    /// called at each click of the main button, and at no other.
    virtual std::unique_ptr<StatusItem> makeStatusItem(std::string_view symbol,
                                                       std::string_view description,
                                                       std::function<void()> onClick) = 0;

    /// The popover of the status item, which has been made before and outlives it. Until it is
    /// shown its size is that of the view's list as it is now.
    virtual std::unique_ptr<Popover> makePopover(std::unique_ptr<MenuPopoverView> view) = 0;

    /// A centred window with the program's name whose content is `contentSize` at first and can be
    /// resized, minimised and closed by the user. `onClosed` is called when the user closes it, and
    /// may destroy it.
    virtual std::unique_ptr<Window> makeSettingsWindow(std::unique_ptr<SettingsView> view,
                                                       Size contentSize,
                                                       std::function<void()> onClosed) = 0;
};

} // namespace kestrel
