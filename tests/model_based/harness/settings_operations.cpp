// The part of ModelHarness that works on the settings window.

#include "tests/model_based/harness/model_harness.h"

#include <set>

namespace kestrel::tests {

namespace {

std::optional<Uuid> realId(const std::optional<std::string>& id) {
    return id ? Uuid::parse(*id) : std::nullopt;
}

} // namespace

void ModelHarness::openWindow(const Operation& /*operation*/) {
    if (settings_)
        return;
    recordStep("open the window");
    settings_ = std::make_unique<SettingsView>(*manager_, clock_, openPanel_);
    settingsSignal_ = settings_->objectWillChange.subscribe([this] { ++settingsSignals_; });
    referenceSettings_.emplace();
    keptRowIsOfThisWindow_ = false;
}

void ModelHarness::closeWindow(const Operation& operation) {
    if (!settings_)
        return;
    recordStep("close the window");
    // The form goes with its window, or is left behind for a moment.
    if (operation.a % 2 == 0)
        dropForm();
    else if (referenceForm_)
        referenceForm_->isOrphan = true;
    settings_.reset();
    referenceSettings_.reset();
    keptRowIsOfThisWindow_ = false;
}

void ModelHarness::selectRow(const Operation& operation) {
    if (!settings_ || reference_.items.empty())
        return;
    const std::string id = reference_.items[operation.a % reference_.items.size()].id;
    recordStep("select " + id);
    settings_->setSelectedID(realId(id));
    referenceSettings_->select(id);
}

void ModelHarness::clearSelection(const Operation& /*operation*/) {
    if (!settings_)
        return;
    recordStep("clear the selection");
    settings_->setSelectedID(std::nullopt);
    referenceSettings_->select(std::nullopt);
}

void ModelHarness::selectUnknown(const Operation& operation) {
    if (!settings_)
        return;
    const std::string id = generateId(operation.a);
    recordStep("select, perhaps unknown, " + id);
    settings_->setSelectedID(realId(id));
    referenceSettings_->select(id);
}

void ModelHarness::choose(std::size_t button) {
    if (button == 0)
        referenceSettings_->showsAddSheet = true;
    else if (button == 1)
        referenceSettings_->editCommitted(reference_);
    else
        referenceSettings_->deleteCommitted(reference_);
}

void ModelHarness::pressToolbar(const Operation& operation) {
    if (!settings_)
        return;
    const auto buttons = settings_->toolbarButtons();
    const ToolbarButton& button = buttons.at(operation.a % 3);
    recordStep("toolbar " + std::string(button.label) + (button.enabled ? "" : ", disabled"));
    // The comparison has said that it is enabled when it has to be.
    if (!button.enabled)
        return;
    button.action();
    choose(operation.a % 3);
}

/// What a button would do, also while it is disabled.
void ModelHarness::intent(const Operation& operation) {
    if (!settings_)
        return;
    recordStep("intent " + std::to_string(operation.a % 3));
    if (operation.a % 3 == 0)
        settings_->addClicked();
    else if (operation.a % 3 == 1)
        settings_->editCommitted();
    else
        settings_->deleteCommitted();
    choose(operation.a % 3);
}

void ModelHarness::rowMenu(const Operation& operation) {
    if (!settings_ || reference_.items.empty())
        return;
    const std::size_t position = operation.a % reference_.items.size();
    const ReferenceItem item = reference_.items[position];
    const ItemRow row = settings_->row(position);
    if (operation.b % 2 == 0) {
        recordStep("the row menu's Edit on " + std::to_string(position));
        row.onEdit();
        referenceSettings_->edited = item;
    } else {
        recordStep("the row menu's Delete on " + std::to_string(position));
        row.onDelete();
        referenceSettings_->deleteItem(reference_, item.id);
    }
}

void ModelHarness::keepRow(const Operation& operation) {
    if (!settings_ || reference_.items.empty())
        return;
    const std::size_t position = operation.a % reference_.items.size();
    recordStep("open the menu of row " + std::to_string(position));
    keptRow_ = settings_->row(position);
    referenceKeptRow_ = reference_.items[position];
    keptRowIsOfThisWindow_ = true;
}

/// The menu of a row that may have moved or gone, even with its window.
void ModelHarness::keptRowMenu(const Operation& operation) {
    if (!keptRow_)
        return;
    recordStep(operation.a % 2 == 0 ? "Edit in that menu" : "Delete in that menu");
    (operation.a % 2 == 0 ? keptRow_->onEdit : keptRow_->onDelete)();
    if (!keptRowIsOfThisWindow_)
        return;
    if (operation.a % 2 == 0)
        referenceSettings_->edited = referenceKeptRow_;
    else
        referenceSettings_->deleteItem(reference_, referenceKeptRow_->id);
}

void ModelHarness::doubleClick(const Operation& operation) {
    if (!settings_ || reference_.items.empty())
        return;
    const std::size_t position = operation.a % reference_.items.size();
    recordStep("double click on " + std::to_string(position));
    settings_->editItem(LauncherItem(settings_->items()[position]));
    referenceSettings_->edited = reference_.items[position];
}

void ModelHarness::deleteRows(const Operation& operation) {
    if (!settings_)
        return;
    std::set<std::size_t> rows;
    for (std::size_t i = 0; i < reference_.items.size(); ++i)
        if (((operation.a & operation.b) >> (i % 32)) % 2 == 1)
            rows.insert(i);
    recordStep("delete " + std::to_string(rows.size()) + " rows");
    settings_->deleteRows(rows);
    referenceSettings_->deleteRows(reference_, rows);
}

void ModelHarness::moveRows(const Operation& operation) {
    if (!settings_)
        return;
    std::set<std::size_t> rows;
    for (std::size_t i = 0; i < reference_.items.size(); ++i)
        if ((operation.a >> (i % 32)) % 2 == 1)
            rows.insert(i);
    const std::size_t destination = operation.b % (reference_.items.size() + 1);
    std::string list;
    for (const std::size_t row : rows)
        list += std::to_string(row) + " ";
    recordStep("move rows " + list + "to " + std::to_string(destination));
    settings_->moveRows(rows, destination);
    ReferenceSettings::moveRows(reference_, rows, destination);
}

void ModelHarness::key(const Operation& operation) {
    if (!settings_)
        return;
    recordStep("key " + std::to_string(operation.a % 4));
    const auto row = referenceSettings_->selectedRow(reference_);
    switch (operation.a % 4) {
    case 0:
        settings_->deleteSelectedRow();
        if (row)
            referenceSettings_->deleteRows(reference_, {*row});
        break;
    case 1:
        settings_->editSelectedRow();
        if (row)
            referenceSettings_->edited = reference_.items[*row];
        break;
    case 2:
        settings_->moveSelectedRow(SettingsView::Direction::up);
        referenceSettings_->moveSelected(reference_, true);
        break;
    default:
        settings_->moveSelectedRow(SettingsView::Direction::down);
        referenceSettings_->moveSelected(reference_, false);
        break;
    }
}

void ModelHarness::stepInSettings(const Operation& operation) {
    if (!settings_)
        return;
    const auto number = static_cast<int>(operation.a % 6);
    const std::size_t page = 1 + operation.b % 4;
    recordStep("step " + std::to_string(number) + " in the window, a page is " +
               std::to_string(page));
    settings_->moveSelection(static_cast<SettingsView::Step>(number), page);
    referenceSettings_->step(static_cast<ReferenceStep>(number), page, reference_);
}

void ModelHarness::typeInSettings(const Operation& operation) {
    if (!settings_)
        return;
    const std::string letters = generateLetters(operation.a);
    recordStep("type in the window: " + letters);
    settings_->typed(letters);
    const auto row = referenceSettings_->typeSelect.typed(
        letters, reference_.items, referenceSettings_->selectedRow(reference_), reference_.now);
    if (row)
        referenceSettings_->select(reference_.items[*row].id);
}

} // namespace kestrel::tests
