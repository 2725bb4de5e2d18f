#pragma once
// What the user sees under the status icon: the list of items, one click to launch one, and a
// footer with "Settings" and "Quit". Made once by AppDelegate, owned by the controller that hosts
// it; the item store outlives it.

#include "platform/clock.h"
#include "platform/main_queue.h"
#include "store/items_manager.h"
#include "views/popover/item_row_view.h"
#include "views/row_step.h"
#include "views/type_select.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string_view>

namespace kestrel {

/// Main thread only. Rows are named by position, as the list control reports them; positions that
/// are not in the list are ignored.
class MenuPopoverView {
  public:
    /// Absent callbacks are not called.
    struct Callbacks {
        std::function<void()> onOpenSettings; ///< "Settings" was clicked
        std::function<void()> onQuit;         ///< "Quit" was clicked
        std::function<void()> onClose;        ///< an item was launched, or Escape pressed
    };

    MenuPopoverView(ItemsManager& manager, MainQueue& mainQueue, Clock& clock, Callbacks callbacks);

    /// Fires before every change of the highlight or of the list.
    WillChangeSignal objectWillChange;

    const ItemList& items() const { return manager_.items; }
    ItemsManager& manager() { return manager_; }

    /// The row at `position`, which must be in the list.
    ItemRowView row(std::size_t position) const;

    void settingsClicked() const;
    void quitClicked() const;

    /// Escape: the popover closes, at once.
    void cancelled() const;

    /// The highlighted row: under the pointer, or reached from the keyboard. None while the footer
    /// has the keyboard focus, whose mark is the only one then.
    std::optional<std::size_t> hoveredRow() const {
        return footerHasFocus_ ? std::nullopt : hoveredRow_;
    }
    void pointerEntered(std::size_t position);
    void pointerLeft(std::size_t position);

    /// Whether a button of the footer has the keyboard focus. A highlight that has yielded to it
    /// comes back.
    void setFooterHasFocus(bool has);

    /// Moves the highlight from the keyboard. Without one, the steps forward start at the first
    /// row and the steps backward at the last; at an end the highlight stays.
    using Step = RowStep;
    void moveHighlight(Step step);

    /// Launches the highlighted row, as a click on it does; nothing without one.
    void activateHighlighted() const;

    /// Highlights the row that the letters typed so far name; see TypeSelect. A space that is not
    /// part of a name launches the highlighted row.
    void typed(std::string_view text);

    /// The popover opens or closes: no row is highlighted any more, and typed letters start over.
    void resetHighlight();

  private:
    void setHoveredRow(std::optional<std::size_t> position);

    ItemsManager& manager_;
    MainQueue& mainQueue_;
    Callbacks callbacks_;
    std::optional<std::size_t> hoveredRow_;
    bool footerHasFocus_ = false;
    TypeSelect typeSelect_;
    Subscription itemsWillChange_;
    WeakAnchor<MenuPopoverView> anchor_{*this};
};

} // namespace kestrel
