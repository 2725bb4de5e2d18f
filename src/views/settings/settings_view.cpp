#include "views/settings/settings_view.h"

#include "views/row_place.h"

#include <iterator>
#include <utility>

namespace kestrel {

SettingsView::SettingsView(ItemsManager& manager, Clock& clock, OpenPanel& openPanel)
    : manager_(manager),
      openPanel_(openPanel),
      typeSelect_(clock),
      itemsWillChange_(manager.objectWillChange.subscribe([this] {
          objectWillChange.fire();
          deletedRow_.reset();
      })) {}

template <class Value>
void SettingsView::set(Value& field, Value value) {
    objectWillChange.fire();
    field = std::move(value);
}

ToolbarButton SettingsView::toolbarBtn(std::string_view label, std::string_view icon, bool enabled,
                                       std::function<void()> action) const {
    return {.label = label,
            .icon = icon,
            .enabled = enabled,
            .action = [weak = anchor_.weak(), action = std::move(action)] {
                if (!weak.expired())
                    action();
            }};
}

std::array<ToolbarButton, 3> SettingsView::toolbarButtons() {
    const bool hasCommittedItem = committedItem() != nullptr;
    return {toolbarBtn("Add", "plus", true, [this] { addClicked(); }),
            toolbarBtn("Edit", "pencil", hasCommittedItem, [this] { editCommitted(); }),
            toolbarBtn("Delete", "trash", hasCommittedItem, [this] { deleteCommitted(); })};
}

ItemRow SettingsView::row(std::size_t position) {
    const LauncherItem& item = items()[position];
    const auto weak = anchor_.weak();
    return {
        .item = item,
        .isSelected = committedID_ == item.id,
        .onEdit =
            [weak, item] {
                if (const auto self = weak.lock())
                    self->editItem(item);
            },
        .onDelete =
            [weak, item] {
                if (const auto self = weak.lock())
                    self->deleteItem(item);
            },
    };
}

void SettingsView::setSelectedID(std::optional<Uuid> id) {
    if (selectedID_ == id)
        return;
    set(selectedID_, id);
    deletedRow_.reset();
    if (id)
        set(committedID_, id);
}

const LauncherItem* SettingsView::committedItem() const {
    return committedID_ ? items().find(*committedID_) : nullptr;
}

void SettingsView::addClicked() { set(showAddSheet_, true); }

void SettingsView::editCommitted() {
    if (const LauncherItem* const item = committedItem())
        editItem(*item);
}

void SettingsView::editItem(const LauncherItem& item) {
    set(itemToEdit_, std::optional<LauncherItem>(item));
}

void SettingsView::deleteCommitted() {
    const auto position = positionOf(committedID_);
    if (!position)
        return;
    removeAndSave({*position});
    set(selectedID_, std::optional<Uuid>());
    set(committedID_, std::optional<Uuid>());
}

void SettingsView::deleteItem(const LauncherItem& item) {
    const Uuid id = item.id;
    const auto position = items().positionOf(id);
    if (!position)
        return;
    removeAndSave({*position});
    if (committedID_ == id)
        set(committedID_, std::optional<Uuid>());
    if (selectedID_ == id)
        set(selectedID_, std::optional<Uuid>());
}

void SettingsView::deleteRows(const Positions& positions) {
    removeAndSave(positions);
    set(selectedID_, std::optional<Uuid>());
    set(committedID_, std::optional<Uuid>());
}

void SettingsView::removeAndSave(const Positions& positions) {
    const auto selected = selectedRow();
    manager_.items.remove(positions);
    manager_.save();
    if (selected && positions.contains(*selected)) {
        const auto before = std::distance(positions.begin(), positions.find(*selected));
        deletedRow_ = *selected - static_cast<std::size_t>(before);
    }
}

void SettingsView::moveRows(const Positions& positions, std::size_t destination) {
    manager_.items.move(positions, destination);
    manager_.save();
}

void SettingsView::moveRow(std::size_t position, Direction direction) {
    if (direction == Direction::up && position > 0)
        moveRows({position}, position - 1);
    else if (direction == Direction::down && position + 1 < items().size())
        moveRows({position}, position + 2);
}

std::optional<std::size_t> SettingsView::positionOf(const std::optional<Uuid>& id) const {
    return id ? items().positionOf(*id) : std::nullopt;
}

std::optional<std::size_t> SettingsView::selectedRow() const { return positionOf(selectedID_); }

void SettingsView::deleteSelectedRow() {
    if (const auto position = selectedRow())
        deleteRows({*position});
}

void SettingsView::moveSelectedRow(Direction direction) {
    if (const auto position = selectedRow())
        moveRow(*position, direction);
}

void SettingsView::moveSelection(Step step, std::size_t page) {
    if (items().empty())
        return;
    const RowPlace place{.row = selectedRow(), .gap = deletedRow_};
    setSelectedID(items()[rowAfter(step, place, items().size(), page)].id);
}

void SettingsView::editSelectedRow() {
    if (const auto position = selectedRow())
        editItem(items()[*position]);
}

void SettingsView::typed(std::string_view text) {
    if (const auto match = typeSelect_.typed(text, items(), selectedRow()))
        setSelectedID(items()[*match].id);
}

std::optional<std::size_t> SettingsView::nextRowToShow() {
    return positionOf(std::exchange(addedID_, std::nullopt));
}

std::unique_ptr<AddEditItemView> SettingsView::nextSheet() {
    if (shownSheet_ != Sheet::none)
        return nullptr;
    if (showAddSheet_) {
        shownSheet_ = Sheet::add;
        return makeAddSheet();
    }
    if (itemToEdit_) {
        shownSheet_ = Sheet::edit;
        return makeEditSheet();
    }
    return nullptr;
}

void SettingsView::sheetClosed() {
    const Sheet closed = std::exchange(shownSheet_, Sheet::none);
    if (closed == Sheet::add)
        set(showAddSheet_, false);
    else if (closed == Sheet::edit)
        set(itemToEdit_, std::optional<LauncherItem>());
}

std::unique_ptr<AddEditItemView> SettingsView::makeAddSheet() {
    const auto append = [weak = anchor_.weak()](LauncherItem item) {
        const auto self = weak.lock();
        if (!self)
            return;
        self->addedID_ = item.id;
        self->manager_.items.append(std::move(item));
        self->manager_.save();
    };
    return std::make_unique<AddEditItemView>(std::nullopt, append, openPanel_);
}

std::unique_ptr<AddEditItemView> SettingsView::makeEditSheet() {
    const auto update = [weak = anchor_.weak()](LauncherItem item) {
        if (const auto self = weak.lock())
            self->manager_.update(std::move(item));
    };
    return std::make_unique<AddEditItemView>(itemToEdit_, update, openPanel_);
}

} // namespace kestrel
