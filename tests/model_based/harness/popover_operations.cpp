// The part of World that works on the popover.

#include "tests/views/random/world.h"

namespace kestrel::tests {

void World::pointer(const Operation& operation) {
    // Now and then a row that is not there any more.
    const std::size_t row = operation.a % (plain_.items.size() + 2);
    if (operation.b % 3 == 0) {
        say("pointer leaves " + std::to_string(row));
        popover_->pointerLeft(row);
        if (plainPopover_.hovered == row)
            plainPopover_.hovered.reset();
        return;
    }
    say("pointer enters " + std::to_string(row));
    popover_->pointerEntered(row);
    if (row < plain_.items.size())
        plainPopover_.hovered = row;
}

void World::step(const Operation& operation) {
    const auto number = static_cast<int>(operation.a % 6);
    say("step " + std::to_string(number));
    popover_->moveHighlight(static_cast<MenuPopoverView::Step>(number));
    plainPopover_.step(static_cast<PlainPopover::Step>(number), plain_.items.size());
}

void World::activate(const Operation& /*operation*/) {
    say("Return in the popover");
    popover_->activateHighlighted();
    if (plainPopover_.hovered)
        plainPopover_.tap(plain_, plain_.items[*plainPopover_.hovered]);
}

void World::tap(const Operation& operation) {
    if (plain_.items.empty())
        return;
    const std::size_t row = operation.a % plain_.items.size();
    say("click on row " + std::to_string(row));
    popover_->row(row).onTap();
    plainPopover_.tap(plain_, plain_.items[row]);
}

void World::keepTap(const Operation& operation) {
    if (plain_.items.empty())
        return;
    const std::size_t row = operation.a % plain_.items.size();
    say("a click begins on row " + std::to_string(row));
    keptTap_ = popover_->row(row).onTap;
    plainKeptTap_ = plain_.items[row];
}

void World::keptTap(const Operation& /*operation*/) {
    if (!keptTap_)
        return;
    say("that click ends");
    keptTap_();
    plainPopover_.tap(plain_, *plainKeptTap_);
}

void World::typeInPopover(const Operation& operation) {
    const std::string letters = madeUpLetters(operation.a);
    say("type in the popover: " + letters);
    popover_->typed(letters);
    if (const auto row = plainPopover_.typeSelect.typed(letters, plain_.items,
                                                        plainPopover_.hovered, plain_.now))
        plainPopover_.hovered = row;
}

void World::resetHighlight(const Operation& /*operation*/) {
    say("the popover opens or closes");
    popover_->resetHighlight();
    plainPopover_.hovered.reset();
}

void World::footer(const Operation& operation) {
    if (operation.a % 2 == 0) {
        say("Settings");
        popover_->settingsClicked();
        ++plainSettingsClicks_;
    } else {
        say("Quit");
        popover_->quitClicked();
        ++plainQuitClicks_;
    }
}

} // namespace kestrel::tests
