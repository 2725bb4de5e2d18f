// The part of World that compares both sides.

#include "tests/views/random/world.h"

#include <algorithm>
#include <string_view>

namespace kestrel::tests {

namespace {

std::string shown(const std::string& text) { return text; }
std::string shown(bool value) { return value ? "yes" : "no"; }
std::string shown(int value) { return std::to_string(value); }
std::string shown(std::size_t value) { return std::to_string(value); }
std::string shown(const PlainItem& item) { return plainBytes({item}); }

template <class Value>
std::string shown(const std::optional<Value>& value) {
    return value ? shown(*value) : std::string("none");
}

std::string shown(const std::vector<std::string>& texts) {
    std::string result;
    for (const std::string& text : texts)
        result += "\n      " + text;
    return result;
}

template <class Value>
std::optional<std::string> unequal(const char* what, const Value& real, const Value& plain) {
    if (real == plain)
        return std::nullopt;
    return std::string(what) + ":\n    is        " + shown(real) + "\n    should be " +
           shown(plain);
}

std::optional<std::string> textOf(const std::optional<Uuid>& id) {
    return id ? std::optional(id->toString()) : std::nullopt;
}

std::optional<PlainItem> plainItem(const std::optional<LauncherItem>& item) {
    return item ? std::optional(tests::plainItem(*item)) : std::nullopt;
}

/// Asking changes nothing, so what is asked is not compared.
bool isQuestion(std::string_view call) {
    return call.ends_with(".hasIdentityToken") || call.ends_with(".defaultStore") ||
           call.ends_with(".addExternalChangeObserver") ||
           call.find(".dataForKey") != std::string_view::npos;
}

} // namespace

World::Difference World::differenceOfStore() {
    const auto& real = manager_->items.values();
    if (auto found = unequal("number of items", real.size(), plain_.items.size()))
        return found;
    for (std::size_t i = 0; i < real.size(); ++i) {
        if (auto found = unequal("item", tests::plainItem(real[i]), plain_.items[i]))
            return found;
    }
    const auto bytes = [](const auto& data) {
        const auto found = data.find("launcherItems");
        return found == data.end() ? std::optional<std::string>() : found->second;
    };
    const auto plainValue = [](const std::optional<PlainValue>& value) {
        return value ? std::optional(value->bytes) : std::nullopt;
    };
    if (auto found = unequal("local bytes", bytes(defaults_.data), plainValue(plain_.local)))
        return found;
    if (auto found = unequal("cloud bytes", bytes(cloud_.store.data), plainValue(plain_.cloud)))
        return found;
    if (defaults_.data.size() + cloud_.store.data.size() > 2)
        return "a value under another key";
    const auto date = defaults_.dates.find("lastLocalSync");
    const bool dated = date != defaults_.dates.end();
    if (dated != plain_.date.has_value() || (dated && date->second != *plain_.date))
        return dated ? "the date is another one" : "the date was not written";
    return unequal("waiting tasks", mainQueue_.tasks.size(), plain_.queue.size());
}

World::Difference World::differenceOfCalls() {
    std::vector<std::string> calls;
    for (const std::string& call : log_.calls) {
        if (!isQuestion(call))
            calls.push_back(call);
    }
    if (auto found = unequal("calls", calls, plain_.calls))
        return found;
    return unequal("lists when the signal fired", listBefore_, plain_.listBefore);
}

World::Difference World::differenceOfSettings() {
    if (!settings_)
        return std::nullopt;
    const PlainSettings& plain = *plainSettings_;
    if (auto found = unequal("selection", textOf(settings_->selectedID()), plain.selected))
        return found;
    if (auto found = unequal("committed id", textOf(settings_->committedID()), plain.committed))
        return found;
    const auto row = plain.committedRow(plain_);
    const LauncherItem* const committed = settings_->committedItem();
    if (auto found = unequal("committed item",
                             committed ? std::optional(tests::plainItem(*committed)) : std::nullopt,
                             row ? std::optional(plain_.items[*row]) : std::nullopt))
        return found;
    const auto buttons = settings_->toolbarButtons();
    for (const std::size_t button : {0U, 1U, 2U}) {
        if (auto found = unequal("enabled button", buttons.at(button).enabled,
                                 button == 0 || row.has_value()))
            return found;
    }
    if (auto found = unequal("add sheet", settings_->showAddSheet(), plain.showsAddSheet))
        return found;
    return unequal("item to edit", plainItem(settings_->itemToEdit()), plain.edited);
}

World::Difference World::differenceOfRows() {
    if (!settings_)
        return std::nullopt;
    for (std::size_t i = 0; i < plain_.items.size(); ++i) {
        const PlainItem& plain = plain_.items[i];
        const ItemRow row = settings_->row(i);
        const bool typed = plain.type == "Inline Command";
        const std::string detail =
            typed ? plain.command.value_or("(no command)") : plain.path.value_or("(no path)");
        if (auto found = unequal("detail of a row", std::string(row.detail()), detail))
            return found;
        if (auto found = unequal("badge of a row", std::string(row.badge()), plain.type))
            return found;
        if (auto found = unequal("actions of a row", row.actionsOpacity() == 1,
                                 plainSettings_->committed == plain.id))
            return found;
    }
    return std::nullopt;
}

World::Difference World::differenceOfForm() {
    if (auto found = unequal("a form is open", form_ != nullptr, plainForm_.has_value()))
        return found;
    if (!form_)
        return std::nullopt;
    const bool edits = plainForm_->existing.has_value();
    const std::vector<std::string> real{form_->title(),
                                        std::string(rawValue(form_->type())),
                                        form_->path(),
                                        form_->command(),
                                        std::string(form_->header().english),
                                        std::string(form_->confirmTitle().english),
                                        form_->canSave() ? "can save" : "cannot save"};
    return unequal("form", real,
                   {plainForm_->title, plainForm_->type, plainForm_->path, plainForm_->command,
                    edits ? "Edit Item" : "Add Item", edits ? "Save" : "Add",
                    plainForm_->trimmedTitle().empty() ? "cannot save" : "can save"});
}

World::Difference World::differenceOfPopover() {
    if (auto found = unequal("highlight", popover_->hoveredRow(), plainPopover_.hovered))
        return found;
    if (auto found = unequal("closes of the popover", closes_, plainPopover_.closes))
        return found;
    if (auto found = unequal("clicks on Settings", settingsClicks_, plainSettingsClicks_))
        return found;
    return unequal("clicks on Quit", quitClicks_, plainQuitClicks_);
}

/// Who draws a view hears of every change of it.
World::Difference World::missingSignal() {
    const bool wroteItems = !plain_.listBefore.empty();
    if (settings_ && settingsBefore_) {
        const PlainSettings& now = *plainSettings_;
        const PlainSettings& before = *settingsBefore_;
        const bool changed = now.selected != before.selected || now.committed != before.committed ||
                             now.showsAddSheet != before.showsAddSheet ||
                             now.edited != before.edited;
        if ((changed || wroteItems) && settingsSignals_ == 0)
            return "the window's signal did not fire";
    }
    if (form_ && formBefore_) {
        const bool changed =
            plainForm_->title != formBefore_->title || plainForm_->type != formBefore_->type ||
            plainForm_->path != formBefore_->path || plainForm_->command != formBefore_->command;
        if (changed && formSignals_ == 0)
            return "the form's signal did not fire";
    }
    if ((wroteItems || plainPopover_.hovered != hoveredBefore_) && popoverSignals_ == 0)
        return "the popover's signal did not fire";
    return std::nullopt;
}

} // namespace kestrel::tests
