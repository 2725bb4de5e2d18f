#pragma once
// The content of the settings window: a strip of three buttons, the list of items, and the sheets
// in which an item is added or edited. Every change goes straight into the item store and is saved
// at once. Made for each window and owned by the controller that hosts it; the store outlives
// it.

#include "platform/clock.h"
#include "platform/open_panel.h"
#include "store/items_manager.h"
#include "views/row_step.h"
#include "views/settings/add_edit_item_view.h"
#include "views/settings/item_row.h"
#include "views/type_select.h"

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>

namespace kestrel {

/// One button of the toolbar strip.
struct ToolbarButton {
    std::string_view label; ///< also the tooltip; never translated
    std::string_view icon;  ///< a symbol name
    bool enabled = true;
    std::function<void()> action = {};
};

/// Main thread only.
class SettingsView {
  public:
    SettingsView(ItemsManager& manager, Clock& clock, OpenPanel& openPanel);

    /// Fires before every change of this view's state or of the list.
    WillChangeSignal objectWillChange;

    const ItemList& items() const { return manager_.items; }
    ItemsManager& manager() { return manager_; }

    /// "Add", "Edit" and "Delete", from left to right.
    std::array<ToolbarButton, 3> toolbarButtons();

    /// The row at `position`, which must be in the list.
    ItemRow row(std::size_t position);

    /// The list's own selection. The list sets it, also to nothing when it is cleared.
    const std::optional<Uuid>& selectedID() const { return selectedID_; }
    void setSelectedID(std::optional<Uuid> id);

    /// The item that the toolbar acts on. Follows the selection to an item, never to nothing; only
    /// a deletion clears it.
    const std::optional<Uuid>& committedID() const { return committedID_; }

    /// The first item with the committed id, looked up at each call; null when there is none.
    const LauncherItem* committedItem() const;

    void addClicked();
    void editCommitted();
    void deleteCommitted();

    /// Opens the edit sheet for a copy of the item: the row menu's "Edit", a double click.
    void editItem(const LauncherItem& item);
    void deleteItem(const LauncherItem& item);

    /// The list control's delete and move commands, by the positions that it reports. The
    /// destination is a position in the list before the move.
    void deleteRows(const Positions& positions);
    void moveRows(const Positions& positions, std::size_t destination);

    /// Moves a row one place; nothing when it stands at that end already.
    using Direction = RowDirection;
    void moveRow(std::size_t position, Direction direction);

    /// The delete and move commands from the keyboard, for the selected row; nothing without one.
    void deleteSelectedRow();
    void moveSelectedRow(Direction direction);

    /// Moves the selection from the keyboard; `page` is the number of rows of a page. After the
    /// selected row was deleted it goes on from that place, until the list changes again.
    using Step = RowStep;
    void moveSelection(Step step, std::size_t page);

    /// Opens the edit sheet for the selected row.
    void editSelectedRow();

    /// Selects the row that the letters typed so far name; see TypeSelect.
    void typed(std::string_view text);

    /// The row that was added in this window and is to be scrolled to now, once; nothing when none
    /// was.
    std::optional<std::size_t> nextRowToShow();

    /// The sheets that are asked for. Both may be; each has its own state.
    bool showAddSheet() const { return showAddSheet_; }
    const std::optional<LauncherItem>& itemToEdit() const { return itemToEdit_; }

    /// The form of the sheet that is to be shown now, once; its `dismiss` is the presenter's to
    /// set. Null while a sheet shows, so the second that is asked for waits, and when none is.
    std::unique_ptr<AddEditItemView> nextSheet();

    /// The sheet of the last form that `nextSheet` gave has closed.
    void sheetClosed();

  private:
    enum class Sheet { none, add, edit };

    ToolbarButton toolbarBtn(std::string_view label, std::string_view icon, bool enabled,
                             std::function<void()> action) const;
    std::unique_ptr<AddEditItemView> makeAddSheet();
    std::unique_ptr<AddEditItemView> makeEditSheet();
    void removeAndSave(const Positions& positions);
    std::optional<std::size_t> selectedRow() const;
    std::optional<std::size_t> positionOf(const std::optional<Uuid>& id) const;
    template <class Value>
    void set(Value& field, Value value);

    ItemsManager& manager_;
    OpenPanel& openPanel_;
    std::optional<Uuid> selectedID_;
    std::optional<Uuid> committedID_;
    std::optional<std::size_t> deletedRow_; ///< where the selected row stood before it was deleted
    std::optional<Uuid> addedID_;           ///< not scrolled to yet
    bool showAddSheet_ = false;
    std::optional<LauncherItem> itemToEdit_;
    Sheet shownSheet_ = Sheet::none;
    TypeSelect typeSelect_;
    Subscription itemsWillChange_;
    WeakAnchor<SettingsView> anchor_{*this};
};

} // namespace kestrel
