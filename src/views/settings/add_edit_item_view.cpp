#include "views/settings/add_edit_item_view.h"

#include "model/text.h"
#include "views/settings/add_edit_item_style.h"

#include <string_view>
#include <utility>

namespace kestrel {

namespace {

/// The last component of a path without its extension. A name that begins with its only dot, or
/// ends in it, has no extension.
std::string nameWithoutExtension(std::string_view path) {
    while (path.size() > 1 && path.ends_with('/'))
        path.remove_suffix(1);
    std::string_view name = path.substr(path.rfind('/') + 1);
    const std::size_t dot = name.rfind('.');
    if (dot != std::string_view::npos && dot != 0 && dot + 1 != name.size())
        name = name.substr(0, dot);
    return std::string(name);
}

std::optional<std::string> absentWhenEmpty(const std::string& text) {
    if (text.empty())
        return std::nullopt;
    return text;
}

} // namespace

AddEditItemView::AddEditItemView(std::optional<LauncherItem> item,
                                 std::function<void(LauncherItem)> onSave, OpenPanel& openPanel)
    : existingItem_(std::move(item)),
      onSave_(std::move(onSave)),
      openPanel_(openPanel),
      title_(existingItem_ ? existingItem_->title : std::string()),
      type_(existingItem_ ? existingItem_->type : ItemType::app),
      path_(existingItem_ ? existingItem_->path.value_or("") : std::string()),
      command_(existingItem_ ? existingItem_->command.value_or("") : std::string()) {}

template <class Value>
void AddEditItemView::set(Value& field, Value value) {
    objectWillChange.fire();
    field = std::move(value);
}

void AddEditItemView::setTitle(std::string title) { set(title_, std::move(title)); }
void AddEditItemView::setType(ItemType type) { set(type_, type); }
void AddEditItemView::setPath(std::string path) { set(path_, std::move(path)); }
void AddEditItemView::setCommand(std::string command) { set(command_, std::move(command)); }

bool AddEditItemView::canSave() const { return !text::trimmedOfSpaces(title_).empty(); }

style::Text AddEditItemView::header() const {
    return isEditing() ? add_edit_item_style::editHeader : add_edit_item_style::addHeader;
}

style::Text AddEditItemView::confirmTitle() const {
    return isEditing() ? add_edit_item_style::save : add_edit_item_style::add;
}

void AddEditItemView::browse() {
    if (type_ == ItemType::app)
        browseForApp();
    else
        browseForCommandFile();
}

void AddEditItemView::browseForApp() {
    pick({.content = OpenPanelOptions::Content::applications,
          .startFolder = OpenPanelOptions::StartFolder::applications});
}

void AddEditItemView::browseForCommandFile() {
    pick({.content = OpenPanelOptions::Content::anyFile,
          .startFolder = OpenPanelOptions::StartFolder::desktop});
}

void AddEditItemView::pick(const OpenPanelOptions& options) {
    // The event loop runs while the panel shows, and the sheet may be taken away meanwhile.
    const auto weak = anchor_.weak();
    auto chosen = openPanel_.runModal(options);
    if (!chosen || weak.expired())
        return;
    std::string name = chosen->name ? *chosen->name : nameWithoutExtension(chosen->path);
    setPath(std::move(chosen->path));
    // Nothing is trimmed here: a title of spaces is the user's and stays.
    if (title_.empty())
        setTitle(std::move(name));
}

void AddEditItemView::commitSave() {
    const std::string_view trimmedTitle = text::trimmedOfSpaces(title_);
    if (trimmedTitle.empty())
        return;
    LauncherItem item = existingItem_ ? *existingItem_ : LauncherItem{};
    item.title = std::string(trimmedTitle);
    item.type = type_;
    item.path = usesCommand(type_) ? std::nullopt : absentWhenEmpty(path_);
    item.command = usesCommand(type_) ? absentWhenEmpty(command_) : std::nullopt;
    onSave_(std::move(item));
    close();
}

void AddEditItemView::cancel() { close(); }

void AddEditItemView::close() {
    // A copy, because the action may destroy the form and itself with it.
    const auto action = dismiss;
    if (action)
        action();
}

} // namespace kestrel
