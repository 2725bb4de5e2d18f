// The part of ModelHarness that compares both sides.

#include "tests/model_based/harness/model_harness.h"

#include <algorithm>
#include <string_view>

namespace kestrel::tests {

namespace {

std::string shown(const std::string& text) { return text; }
std::string shown(bool value) { return value ? "yes" : "no"; }
std::string shown(int value) { return std::to_string(value); }
std::string shown(std::size_t value) { return std::to_string(value); }
std::string shown(const ReferenceItem& item) { return referenceBytes({item}); }

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
std::optional<std::string> unequal(const char* what, const Value& real, const Value& expected) {
    if (real == expected)
        return std::nullopt;
    return std::string(what) + ":\n    is        " + shown(real) + "\n    should be " +
           shown(expected);
}

std::optional<std::string> textOf(const std::optional<Uuid>& id) {
    return id ? std::optional(id->toString()) : std::nullopt;
}

std::optional<ReferenceItem> referenceItem(const std::optional<LauncherItem>& item) {
    return item ? std::optional(tests::referenceItem(*item)) : std::nullopt;
}

/// Asking changes nothing, so what is asked is not compared.
bool isQuestion(std::string_view call) {
    return call.ends_with(".hasIdentityToken") || call.ends_with(".defaultStore") ||
           call.ends_with(".addExternalChangeObserver") ||
           call.find(".dataForKey") != std::string_view::npos;
}

} // namespace

ModelHarness::Difference ModelHarness::differenceOfStore() {
    const auto& real = manager_->items.values();
    if (auto found = unequal("number of items", real.size(), reference_.items.size()))
        return found;
    for (std::size_t i = 0; i < real.size(); ++i)
        if (auto found = unequal("item", tests::referenceItem(real[i]), reference_.items[i]))
            return found;
    const auto bytes = [](const auto& data) {
        const auto found = data.find("launcherItems");
        return found == data.end() ? std::optional<std::string>() : found->second;
    };
    const auto referenceBytesOf = [](const std::optional<StoredValue>& value) {
        return value ? std::optional(value->bytes) : std::nullopt;
    };
    if (auto found =
            unequal("local bytes", bytes(defaults_.data), referenceBytesOf(reference_.local)))
        return found;
    if (auto found =
            unequal("cloud bytes", bytes(cloud_.store.data), referenceBytesOf(reference_.cloud)))
        return found;
    if (defaults_.data.size() + cloud_.store.data.size() > 2)
        return "a value under another key";
    const auto date = defaults_.dates.find("lastLocalSync");
    const bool dated = date != defaults_.dates.end();
    if (dated != reference_.date.has_value() || (dated && date->second != *reference_.date))
        return dated ? "the date is another one" : "the date was not written";
    return unequal("waiting tasks", mainQueue_.tasks.size(), reference_.queue.size());
}

ModelHarness::Difference ModelHarness::differenceOfCalls() {
    std::vector<std::string> calls;
    for (const std::string& call : log_.calls)
        if (!isQuestion(call))
            calls.push_back(call);
    if (auto found = unequal("calls", calls, reference_.calls))
        return found;
    return unequal("lists when the signal fired", listBefore_, reference_.listBefore);
}

ModelHarness::Difference ModelHarness::differenceOfSettings() {
    if (!settings_)
        return std::nullopt;
    const ReferenceSettings& expected = *referenceSettings_;
    if (auto found = unequal("selection", textOf(settings_->selectedID()), expected.selected))
        return found;
    if (auto found = unequal("committed id", textOf(settings_->committedID()), expected.committed))
        return found;
    const auto row = expected.committedRow(reference_);
    const LauncherItem* const committed = settings_->committedItem();
    if (auto found =
            unequal("committed item",
                    committed ? std::optional(tests::referenceItem(*committed)) : std::nullopt,
                    row ? std::optional(reference_.items[*row]) : std::nullopt))
        return found;
    const auto buttons = settings_->toolbarButtons();
    for (const std::size_t button : {0U, 1U, 2U})
        if (auto found = unequal("enabled button", buttons.at(button).enabled,
                                 button == 0 || row.has_value()))
            return found;
    if (auto found = unequal("add sheet", settings_->showAddSheet(), expected.showsAddSheet))
        return found;
    return unequal("item to edit", referenceItem(settings_->itemToEdit()), expected.edited);
}

ModelHarness::Difference ModelHarness::differenceOfRows() {
    if (!settings_)
        return std::nullopt;
    for (std::size_t i = 0; i < reference_.items.size(); ++i) {
        const ReferenceItem& expected = reference_.items[i];
        const ItemRow row = settings_->row(i);
        const bool typed = expected.type == "Inline Command";
        const std::string detail =
            typed ? expected.command.value_or("(no command)") : expected.path.value_or("(no path)");
        if (auto found = unequal("detail of a row", std::string(row.detail()), detail))
            return found;
        if (auto found = unequal("badge of a row", std::string(row.badge()), expected.type))
            return found;
        if (auto found = unequal("actions of a row", row.actionsOpacity() == 1,
                                 referenceSettings_->committed == expected.id))
            return found;
    }
    return std::nullopt;
}

ModelHarness::Difference ModelHarness::differenceOfForm() {
    if (auto found = unequal("a form is open", form_ != nullptr, referenceForm_.has_value()))
        return found;
    if (!form_)
        return std::nullopt;
    const bool edits = referenceForm_->existing.has_value();
    const std::vector<std::string> real{form_->title(),
                                        std::string(rawValue(form_->type())),
                                        form_->path(),
                                        form_->command(),
                                        std::string(form_->header().english),
                                        std::string(form_->confirmTitle().english),
                                        form_->canSave() ? "can save" : "cannot save"};
    return unequal("form", real,
                   {referenceForm_->title, referenceForm_->type, referenceForm_->path,
                    referenceForm_->command, edits ? "Edit Item" : "Add Item",
                    edits ? "Save" : "Add",
                    referenceForm_->trimmedTitle().empty() ? "cannot save" : "can save"});
}

ModelHarness::Difference ModelHarness::differenceOfPopover() {
    if (auto found = unequal("highlight", popover_->hoveredRow(), referencePopover_.shown()))
        return found;
    if (auto found = unequal("closes of the popover", closes_, referencePopover_.closes))
        return found;
    if (auto found = unequal("clicks on Settings", settingsClicks_, referenceSettingsClicks_))
        return found;
    return unequal("clicks on Quit", quitClicks_, referenceQuitClicks_);
}

/// Who draws a view hears of every change of it.
ModelHarness::Difference ModelHarness::missingSignal() {
    const bool wroteItems = !reference_.listBefore.empty();
    if (settings_ && settingsBefore_) {
        const ReferenceSettings& now = *referenceSettings_;
        const ReferenceSettings& before = *settingsBefore_;
        const bool changed = now.selected != before.selected || now.committed != before.committed ||
                             now.showsAddSheet != before.showsAddSheet ||
                             now.edited != before.edited;
        if ((changed || wroteItems) && settingsSignals_ == 0)
            return "the window's signal did not fire";
    }
    if (form_ && formBefore_) {
        const bool changed = referenceForm_->title != formBefore_->title ||
                             referenceForm_->type != formBefore_->type ||
                             referenceForm_->path != formBefore_->path ||
                             referenceForm_->command != formBefore_->command;
        if (changed && formSignals_ == 0)
            return "the form's signal did not fire";
    }
    if ((wroteItems || referencePopover_.shown() != hoveredBefore_) && popoverSignals_ == 0)
        return "the popover's signal did not fire";
    return std::nullopt;
}

} // namespace kestrel::tests
