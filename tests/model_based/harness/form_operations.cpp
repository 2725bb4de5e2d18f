// The part of ModelHarness that works on the sheets of the settings window.

#include "tests/model_based/harness/model_harness.h"

#include <array>
#include <utility>

namespace kestrel::tests {

/// One sheet at a time, the add sheet first.
void ModelHarness::presentSheet(const Operation& operation) {
    if (!settings_ || (form_ && referenceForm_->isOrphan))
        return;
    auto next = settings_->nextSheet();
    const bool adds = referenceSettings_->showsAddSheet;
    const bool isDue = !form_ && (adds || referenceSettings_->edited);
    if ((next != nullptr) != isDue)
        fault_ = isDue ? "no sheet for what was asked for" : "a sheet that is not to be shown now";
    if (!next || !isDue)
        return;
    recordStep(adds ? "the add sheet" : "the edit sheet");
    form_ = std::move(next);
    formSignal_ = form_->objectWillChange.subscribe([this] { ++formSignals_; });
    referenceForm_.emplace(adds ? ReferenceForm::Sheet::add : ReferenceForm::Sheet::edit,
                           adds ? std::nullopt : referenceSettings_->edited);
    form_->dismiss = [this, destroys = operation.a % 2 == 0] {
        dismissed_ = true;
        if (settings_ && !referenceForm_->isOrphan)
            settings_->sheetClosed();
        if (destroys)
            form_.reset();
    };
}

void ModelHarness::dropForm() {
    form_.reset();
    referenceForm_.reset();
    dismissed_ = false;
}

void ModelHarness::setField(const Operation& operation) {
    if (!form_)
        return;
    const std::string text = generateText(operation.b).value_or("");
    switch (operation.a % 4) {
    case 0:
        referenceForm_->title = generateTitle(operation.b);
        recordStep("title " + referenceForm_->title);
        form_->setTitle(referenceForm_->title);
        break;
    case 1:
        referenceForm_->type = generateType(operation.b);
        recordStep("type " + referenceForm_->type);
        form_->setType(*itemTypeFromRawValue(referenceForm_->type));
        break;
    case 2:
        recordStep("path " + text);
        referenceForm_->path = text;
        form_->setPath(text);
        break;
    default:
        recordStep("command " + text);
        referenceForm_->command = text;
        form_->setCommand(text);
        break;
    }
}

void ModelHarness::browse(const Operation& operation) {
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
    const bool closes = operation.b % 5 == 0 && settings_ && !referenceForm_->isOrphan;
    recordStep("browse: " + choice.path.value_or("cancelled") +
               (closes ? ", the window closes" : ""));
    openPanel_.result = choice.path;
    openPanel_.whileShown = [this, operation, closes] {
        setCloud(generateList(operation.c, operation.b), operation.b % 2 == 0);
        mainQueue_.runAll();
        reference_.runAll();
        if (closes)
            closeWindow({.a = 0});
    };
    if (operation.c % 2 == 0)
        form_->browseForApp();
    else
        form_->browseForCommandFile();
    if (referenceForm_ && choice.path)
        referenceForm_->chose(*choice.path, choice.name);
}

void ModelHarness::commit(const Operation& /*operation*/) {
    if (!form_)
        return;
    recordStep("commit the form");
    const std::size_t before = manager_->items.size();
    form_->commitSave();
    if (referenceForm_->trimmedTitle().empty()) {
        if (dismissed_)
            fault_ = "a form without a title closed";
        return;
    }
    ReferenceItem item = referenceForm_->record();
    if (referenceForm_->isOrphan) {
        formClosed();
        return;
    }
    if (referenceForm_->sheet == ReferenceForm::Sheet::edit) {
        reference_.update(item);
    } else if (manager_->items.size() == before + 1) {
        item.id = manager_->items[before].id.toString();
        if (reference_.positionOf(item.id) || item.id[14] != '4')
            fault_ = "the id of the new item is not a fresh one: " + item.id;
        reference_.willChange();
        reference_.items.push_back(item);
        reference_.save();
    } else {
        fault_ = "not one item was appended";
    }
    formClosed();
}

void ModelHarness::cancel(const Operation& /*operation*/) {
    if (!form_)
        return;
    recordStep("cancel the form");
    form_->cancel();
    formClosed();
}

void ModelHarness::formClosed() {
    if (!dismissed_)
        fault_ = "the form did not close";
    if (!referenceForm_->isOrphan) {
        if (referenceForm_->sheet == ReferenceForm::Sheet::add)
            referenceSettings_->showsAddSheet = false;
        else
            referenceSettings_->edited.reset();
    }
    dropForm();
}

} // namespace kestrel::tests
