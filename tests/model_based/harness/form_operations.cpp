// The part of World that works on the sheets of the settings window.

#include "tests/views/random/world.h"

#include <array>

namespace kestrel::tests {

/// As the shell does: one sheet at a time, the add sheet first.
void World::presentSheet(const Operation& operation) {
    if (!settings_ || form_ || !(plainSettings_->showsAddSheet || plainSettings_->edited))
        return;
    const bool adds = plainSettings_->showsAddSheet;
    say(adds ? "the add sheet" : "the edit sheet");
    form_ = adds ? settings_->makeAddSheet() : settings_->makeEditSheet();
    formSignal_ = form_->objectWillChange.subscribe([this] { ++formSignals_; });
    plainForm_.emplace(adds ? PlainForm::Sheet::add : PlainForm::Sheet::edit,
                       adds ? std::nullopt : plainSettings_->edited);
    form_->dismiss = [this, adds, destroys = operation.a % 2 == 0] {
        dismissed_ = true;
        if (settings_ && !plainForm_->isOrphan) {
            if (adds)
                settings_->addSheetClosed();
            else
                settings_->editSheetClosed();
        }
        if (destroys)
            form_.reset();
    };
}

void World::dropForm() {
    form_.reset();
    plainForm_.reset();
    dismissed_ = false;
}

void World::setField(const Operation& operation) {
    if (!form_)
        return;
    const std::string text = madeUpText(operation.b).value_or("");
    switch (operation.a % 4) {
    case 0:
        plainForm_->title = madeUpTitle(operation.b);
        say("title " + plainForm_->title);
        form_->setTitle(plainForm_->title);
        break;
    case 1:
        plainForm_->type = madeUpType(operation.b);
        say("type " + plainForm_->type);
        form_->setType(*itemTypeFromRawValue(plainForm_->type));
        break;
    case 2:
        say("path " + text);
        plainForm_->path = text;
        form_->setPath(text);
        break;
    default:
        say("command " + text);
        plainForm_->command = text;
        form_->setCommand(text);
        break;
    }
}

void World::browse(const Operation& operation) {
    struct Choice {
        std::optional<std::string> path;
        std::string name;
    };
    static const std::array<Choice, 6> choices{{{std::nullopt, ""},
                                                {"/Applications/Safari.app", "Safari"},
                                                {"/opt/deploy.command", "deploy"},
                                                {"/opt/.hidden", ".hidden"},
                                                {"/opt/a.b.c/", "a.b"},
                                                {"/opt/plain", "plain"}}};
    if (!form_)
        return;
    const Choice& choice = choices.at(operation.a % choices.size());
    // Meanwhile the list may change, or the window may go and take the form with it.
    const bool closes = operation.b % 5 == 0 && settings_ && !plainForm_->isOrphan;
    say("browse: " + choice.path.value_or("cancelled") + (closes ? ", the window closes" : ""));
    openPanel_.result = choice.path;
    openPanel_.whileShown = [this, operation, closes] {
        setCloud(madeUpList(operation.c, operation.b), operation.b % 2 == 0);
        mainQueue_.runAll();
        plain_.runAll();
        if (closes)
            closeWindow({.a = 0});
    };
    if (operation.c % 2 == 0)
        form_->browseForApp();
    else
        form_->browseForCommandFile();
    if (plainForm_ && choice.path)
        plainForm_->chose(*choice.path, choice.name);
}

void World::commit(const Operation& /*operation*/) {
    if (!form_)
        return;
    say("commit the form");
    const std::size_t before = manager_->items.size();
    form_->commitSave();
    if (plainForm_->trimmedTitle().empty()) {
        if (dismissed_)
            fault_ = "a form without a title closed";
        return;
    }
    PlainItem item = plainForm_->record();
    if (plainForm_->isOrphan) {
        formClosed();
        return;
    }
    if (plainForm_->sheet == PlainForm::Sheet::edit) {
        plain_.update(item);
    } else if (manager_->items.size() == before + 1) {
        item.id = manager_->items[before].id.toString();
        if (plain_.positionOf(item.id) || item.id[14] != '4')
            fault_ = "the id of the new item is no fresh one: " + item.id;
        plain_.willChange();
        plain_.items.push_back(item);
        plain_.save();
    } else {
        fault_ = "not one item was appended";
    }
    formClosed();
}

void World::cancel(const Operation& /*operation*/) {
    if (!form_)
        return;
    say("cancel the form");
    form_->cancel();
    formClosed();
}

void World::formClosed() {
    if (!dismissed_)
        fault_ = "the form did not close";
    if (!plainForm_->isOrphan) {
        if (plainForm_->sheet == PlainForm::Sheet::add)
            plainSettings_->showsAddSheet = false;
        else
            plainSettings_->edited.reset();
    }
    dropForm();
}

} // namespace kestrel::tests
