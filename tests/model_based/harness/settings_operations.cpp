// The part of World that works on the settings window.

#include "tests/views/random/world.h"

#include <set>

namespace kestrel::tests {

namespace {

std::optional<Uuid> realId(const std::optional<std::string>& id) {
    return id ? Uuid::parse(*id) : std::nullopt;
}

} // namespace

void World::openWindow(const Operation& /*operation*/) {
    if (settings_)
        return;
    say("open the window");
    settings_ = std::make_unique<SettingsView>(*manager_, clock_, openPanel_);
    settingsSignal_ = settings_->objectWillChange.subscribe([this] { ++settingsSignals_; });
    plainSettings_.emplace();
    keptRowIsOfThisWindow_ = false;
}

void World::closeWindow(const Operation& operation) {
    if (!settings_)
        return;
    say("close the window");
    // The form goes with its window, or is left behind for a moment.
    if (operation.a % 2 == 0)
        dropForm();
    else if (plainForm_)
        plainForm_->isOrphan = true;
    settings_.reset();
    plainSettings_.reset();
    keptRowIsOfThisWindow_ = false;
}

void World::selectRow(const Operation& operation) {
    if (!settings_ || plain_.items.empty())
        return;
    const std::string id = plain_.items[operation.a % plain_.items.size()].id;
    say("select " + id);
    settings_->setSelectedID(realId(id));
    plainSettings_->select(id);
}

void World::clearSelection(const Operation& /*operation*/) {
    if (!settings_)
        return;
    say("clear the selection");
    settings_->setSelectedID(std::nullopt);
    plainSettings_->select(std::nullopt);
}

void World::selectUnknown(const Operation& operation) {
    if (!settings_)
        return;
    const std::string id = madeUpId(operation.a);
    say("select, perhaps unknown, " + id);
    settings_->setSelectedID(realId(id));
    plainSettings_->select(id);
}

void World::choose(std::size_t button) {
    if (button == 0)
        plainSettings_->showsAddSheet = true;
    else if (button == 1)
        plainSettings_->editCommitted(plain_);
    else
        plainSettings_->deleteCommitted(plain_);
}

void World::pressToolbar(const Operation& operation) {
    if (!settings_)
        return;
    const auto buttons = settings_->toolbarButtons();
    const ToolbarButton& button = buttons.at(operation.a % 3);
    say("toolbar " + std::string(button.label) + (button.enabled ? "" : ", disabled"));
    // The comparison has said that it is enabled when it has to be.
    if (!button.enabled)
        return;
    button.action();
    choose(operation.a % 3);
}

/// What a button would do, also while it is disabled.
void World::intent(const Operation& operation) {
    if (!settings_)
        return;
    say("intent " + std::to_string(operation.a % 3));
    if (operation.a % 3 == 0)
        settings_->addClicked();
    else if (operation.a % 3 == 1)
        settings_->editCommitted();
    else
        settings_->deleteCommitted();
    choose(operation.a % 3);
}

void World::rowMenu(const Operation& operation) {
    if (!settings_ || plain_.items.empty())
        return;
    const std::size_t position = operation.a % plain_.items.size();
    const PlainItem item = plain_.items[position];
    const ItemRow row = settings_->row(position);
    if (operation.b % 2 == 0) {
        say("the row menu's Edit on " + std::to_string(position));
        row.onEdit();
        plainSettings_->edited = item;
    } else {
        say("the row menu's Delete on " + std::to_string(position));
        row.onDelete();
        plainSettings_->deleteItem(plain_, item.id);
    }
}

void World::keepRow(const Operation& operation) {
    if (!settings_ || plain_.items.empty())
        return;
    const std::size_t position = operation.a % plain_.items.size();
    say("open the menu of row " + std::to_string(position));
    keptRow_ = settings_->row(position);
    plainKeptRow_ = plain_.items[position];
    keptRowIsOfThisWindow_ = true;
}

/// The menu of a row that may have moved or gone, even with its window.
void World::keptRowMenu(const Operation& operation) {
    if (!keptRow_)
        return;
    say(operation.a % 2 == 0 ? "Edit in that menu" : "Delete in that menu");
    (operation.a % 2 == 0 ? keptRow_->onEdit : keptRow_->onDelete)();
    if (!keptRowIsOfThisWindow_)
        return;
    if (operation.a % 2 == 0)
        plainSettings_->edited = plainKeptRow_;
    else
        plainSettings_->deleteItem(plain_, plainKeptRow_->id);
}

void World::doubleClick(const Operation& operation) {
    if (!settings_ || plain_.items.empty())
        return;
    const std::size_t position = operation.a % plain_.items.size();
    say("double click on " + std::to_string(position));
    settings_->editItem(LauncherItem(settings_->items()[position]));
    plainSettings_->edited = plain_.items[position];
}

void World::deleteRows(const Operation& operation) {
    if (!settings_)
        return;
    std::set<std::size_t> rows;
    for (std::size_t i = 0; i < plain_.items.size(); ++i) {
        if (((operation.a & operation.b) >> (i % 32)) % 2 == 1)
            rows.insert(i);
    }
    say("delete " + std::to_string(rows.size()) + " rows");
    settings_->deleteRows(rows);
    plainSettings_->deleteRows(plain_, rows);
}

void World::moveRows(const Operation& operation) {
    if (!settings_)
        return;
    std::set<std::size_t> rows;
    for (std::size_t i = 0; i < plain_.items.size(); ++i) {
        if ((operation.a >> (i % 32)) % 2 == 1)
            rows.insert(i);
    }
    const std::size_t destination = operation.b % (plain_.items.size() + 1);
    std::string list;
    for (const std::size_t row : rows)
        list += std::to_string(row) + " ";
    say("move rows " + list + "to " + std::to_string(destination));
    settings_->moveRows(rows, destination);
    PlainSettings::moveRows(plain_, rows, destination);
}

void World::key(const Operation& operation) {
    if (!settings_)
        return;
    say("key " + std::to_string(operation.a % 4));
    const auto row = plainSettings_->selectedRow(plain_);
    switch (operation.a % 4) {
    case 0:
        settings_->deleteSelectedRow();
        if (row)
            plainSettings_->deleteRows(plain_, {*row});
        break;
    case 1:
        settings_->editSelectedRow();
        if (row)
            plainSettings_->edited = plain_.items[*row];
        break;
    case 2:
        settings_->moveSelectedRow(SettingsView::Direction::up);
        plainSettings_->moveSelected(plain_, true);
        break;
    default:
        settings_->moveSelectedRow(SettingsView::Direction::down);
        plainSettings_->moveSelected(plain_, false);
        break;
    }
}

void World::typeInSettings(const Operation& operation) {
    if (!settings_)
        return;
    const std::string letters = madeUpLetters(operation.a);
    say("type in the window: " + letters);
    settings_->typed(letters);
    const auto row = plainSettings_->typeSelect.typed(
        letters, plain_.items, plainSettings_->selectedRow(plain_), plain_.now);
    if (row)
        plainSettings_->select(plain_.items[*row].id);
}

} // namespace kestrel::tests
