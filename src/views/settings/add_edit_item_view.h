#pragma once
// The form in which the user makes a new item or changes one. It builds one item from what was
// typed, hands it to `onSave` and closes; it touches no list and no store. One object lives for one
// presentation of the sheet and is owned by the shell's sheet.

#include "model/launcher_item.h"
#include "platform/open_panel.h"
#include "store/weak_anchor.h"
#include "store/will_change_signal.h"
#include "views/style.h"

#include <functional>
#include <optional>
#include <string>

namespace kestrel {

/// Main thread only.
class AddEditItemView {
  public:
    /// `item` is the one to edit, or nothing to add one. `onSave` receives the finished item once.
    AddEditItemView(std::optional<LauncherItem> item, std::function<void(LauncherItem)> onSave,
                    OpenPanel& openPanel);

    /// Fires before every change of the four editable values.
    WillChangeSignal objectWillChange;

    /// Closes the sheet; set by the presenter of the form. May destroy the form.
    std::function<void()> dismiss;

    const std::string& title() const { return title_; }
    ItemType type() const { return type_; }
    const std::string& path() const { return path_; }
    const std::string& command() const { return command_; }
    void setTitle(std::string title);
    void setType(ItemType type);
    void setPath(std::string path);
    void setCommand(std::string command);

    bool isEditing() const { return existingItem_.has_value(); }

    /// The title is more than white space; line breaks count as content.
    bool canSave() const;

    style::Text header() const;
    style::Text confirmTitle() const;

    /// Lets the user pick a file of the selected type for `path`; an empty title takes the name
    /// that comes with it, or else the file's name without its extension. Nothing changes when the
    /// panel is cancelled.
    void browse();
    void browseForApp();
    void browseForCommandFile();

    /// Hands the item to `onSave`, then dismisses the form; nothing while `canSave` is false.
    void commitSave();

    /// Dismisses the form without saving.
    void cancel();

  private:
    void pick(const OpenPanelOptions& options);
    void close();
    template <class Value>
    void set(Value& field, Value value);

    std::optional<LauncherItem> existingItem_;
    std::function<void(LauncherItem)> onSave_;
    OpenPanel& openPanel_;
    std::string title_;
    ItemType type_;
    std::string path_;
    std::string command_;
    WeakAnchor<AddEditItemView> anchor_{*this};
};

} // namespace kestrel
