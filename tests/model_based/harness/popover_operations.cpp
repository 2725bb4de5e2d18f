// The part of ModelHarness that works on the popover.

#include "tests/model_based/harness/model_harness.h"

namespace kestrel::tests {

void ModelHarness::pointer(const Operation& operation) {
    // Now and then a row that is not there any more.
    const std::size_t row = operation.a % (reference_.items.size() + 2);
    if (operation.b % 3 == 0) {
        recordStep("pointer leaves " + std::to_string(row));
        popover_->pointerLeft(row);
        if (referencePopover_.hovered == row)
            referencePopover_.hovered.reset();
        return;
    }
    recordStep("pointer enters " + std::to_string(row));
    popover_->pointerEntered(row);
    if (row < reference_.items.size())
        referencePopover_.hovered = row;
}

void ModelHarness::step(const Operation& operation) {
    const auto number = static_cast<int>(operation.a % 6);
    recordStep("step " + std::to_string(number));
    popover_->moveHighlight(static_cast<MenuPopoverView::Step>(number));
    referencePopover_.step(static_cast<ReferenceStep>(number), reference_.items.size());
}

void ModelHarness::activate(const Operation& /*operation*/) {
    recordStep("Return in the popover");
    popover_->activateHighlighted();
    referencePopover_.activate(reference_);
}

void ModelHarness::tap(const Operation& operation) {
    if (reference_.items.empty())
        return;
    const std::size_t row = operation.a % reference_.items.size();
    recordStep("click on row " + std::to_string(row));
    popover_->row(row).onTap();
    referencePopover_.tap(reference_, reference_.items[row]);
}

void ModelHarness::keepTap(const Operation& operation) {
    if (reference_.items.empty())
        return;
    const std::size_t row = operation.a % reference_.items.size();
    recordStep("a click begins on row " + std::to_string(row));
    keptTap_ = popover_->row(row).onTap;
    referenceKeptTap_ = reference_.items[row];
}

void ModelHarness::keptTap(const Operation& /*operation*/) {
    if (!keptTap_)
        return;
    recordStep("that click ends");
    keptTap_();
    referencePopover_.tap(reference_, *referenceKeptTap_);
}

void ModelHarness::typeInPopover(const Operation& operation) {
    const std::string letters = generateLetters(operation.a);
    recordStep("type in the popover: " + letters);
    popover_->typed(letters);
    referencePopover_.typed(reference_, letters);
}

void ModelHarness::resetHighlight(const Operation& /*operation*/) {
    recordStep("the popover opens or closes");
    popover_->resetHighlight();
    referencePopover_.hovered.reset();
    referencePopover_.typeSelect.prefix.clear();
}

void ModelHarness::focusFooter(const Operation& operation) {
    const bool has = operation.a % 2 == 0;
    recordStep(has ? "Tab to the footer" : "Tab to the list");
    popover_->setFooterHasFocus(has);
    referencePopover_.footerHasFocus = has;
}

void ModelHarness::footer(const Operation& operation) {
    if (operation.a % 2 == 0) {
        recordStep("Settings");
        popover_->settingsClicked();
        ++referenceSettingsClicks_;
    } else {
        recordStep("Quit");
        popover_->quitClicked();
        ++referenceQuitClicks_;
    }
}

} // namespace kestrel::tests
