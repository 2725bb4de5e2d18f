// The part of ModelHarness that works on the store and on what is outside of the program.

#include "tests/model_based/harness/model_harness.h"

namespace kestrel::tests {

void ModelHarness::start() {
    manager_ = std::make_unique<ItemsManager>(ports_);
    itemsSignal_ = manager_->objectWillChange.subscribe([this] {
        ReferenceItems list;
        for (const LauncherItem& item : manager_->items)
            list.push_back(referenceItem(item));
        listBefore_.push_back(referenceBytes(list));
    });
    popover_ = std::make_unique<MenuPopoverView>(
        *manager_, mainQueue_, clock_,
        MenuPopoverView::Callbacks{.onOpenSettings = [this] { ++settingsClicks_; },
                                   .onQuit = [this] { ++quitClicks_; },
                                   .onClose = [this] { ++closes_; }});
    popoverSignal_ = popover_->objectWillChange.subscribe([this] { ++popoverSignals_; });
    reference_.construct();
}

/// As at the end of the process, but tasks and observers are still called afterwards.
void ModelHarness::stop() {
    dropForm();
    settings_.reset();
    referenceSettings_.reset();
    keptRow_.reset();
    referenceKeptRow_.reset();
    popover_.reset();
    keptTap_ = nullptr;
    referenceKeptTap_.reset();
    manager_.reset();
    reference_.items.clear();
    referencePopover_.hovered.reset();
    referencePopover_.footerHasFocus = false;
    hoveredBefore_.reset();
    referencePopover_.typeSelect = {};
    reference_.queue.clear();
    cloud_.postExternalChange();
    mainQueue_.runAll();
    cloud_.observers.clear();
}

void ModelHarness::load(const Operation& /*operation*/) {
    recordStep("load");
    manager_->load();
    reference_.load();
}

void ModelHarness::save(const Operation& /*operation*/) {
    recordStep("save");
    manager_->save();
    reference_.save();
}

void ModelHarness::updateKnown(const Operation& operation) {
    if (reference_.items.empty())
        return;
    ReferenceItem item = generateItem(operation.b);
    item.id = reference_.items[operation.a % reference_.items.size()].id;
    recordStep("update " + referenceBytes({item}));
    manager_->update(realItem(item));
    reference_.update(item);
}

void ModelHarness::updateUnknown(const Operation& operation) {
    const ReferenceItem item = generateItem(operation.b);
    recordStep("update, perhaps unknown, " + referenceBytes({item}));
    manager_->update(realItem(item));
    reference_.update(item);
}

void ModelHarness::appendDuplicate(const Operation& operation) {
    constexpr std::size_t longEnough = 14;
    if (reference_.items.empty() || reference_.items.size() > longEnough)
        return;
    ReferenceItem item = generateItem(operation.b);
    item.id = reference_.items[operation.a % reference_.items.size()].id;
    recordStep("append and save " + referenceBytes({item}));
    manager_->items.append(realItem(item));
    manager_->save();
    reference_.willChange();
    reference_.items.push_back(item);
    reference_.save();
}

void ModelHarness::setCloud(const std::optional<StoredValue>& value, bool notified) {
    reference_.cloud = value;
    if (value)
        cloud_.store.data.insert_or_assign("launcherItems", value->bytes);
    else
        cloud_.store.data.erase("launcherItems");
    if (!notified)
        return;
    cloud_.postExternalChange();
    reference_.externalChange();
}

void ModelHarness::outsideList(const Operation& operation) {
    const StoredValue value = generateList(operation.a, operation.b);
    const bool notified = operation.c % 4 != 0;
    recordStep((notified ? "outside list " : "unnoticed outside list ") + value.bytes);
    setCloud(value, notified);
}

void ModelHarness::outsideInvalidList(const Operation& operation) {
    const bool notified = operation.c % 4 != 0;
    const bool removed = operation.a % 3 == 0;
    const StoredValue value = generateInvalidList(operation.b);
    recordStep((notified ? "outside " : "unnoticed outside ") +
               (removed ? "removal" : "value " + value.bytes));
    setCloud(removed ? std::nullopt : std::optional(value), notified);
}

void ModelHarness::localBytes(const Operation& operation) {
    switch (operation.c % 3) {
    case 0:
        reference_.local.reset();
        break;
    case 1:
        reference_.local = generateInvalidList(operation.b);
        break;
    default:
        reference_.local = generateList(operation.a, operation.b);
        break;
    }
    recordStep("local bytes " + (reference_.local ? reference_.local->bytes : "removed"));
    if (reference_.local)
        defaults_.data.insert_or_assign("launcherItems", reference_.local->bytes);
    else
        defaults_.data.erase("launcherItems");
}

void ModelHarness::account(const Operation& operation) {
    reference_.signedIn = cloud_.signedIn = operation.a % 3 != 0;
    recordStep(reference_.signedIn ? "sign in" : "sign out");
    if (operation.c % 4 == 0)
        return;
    cloud_.postExternalChange();
    reference_.externalChange();
}

void ModelHarness::cloudStore(const Operation& operation) {
    reference_.hasCloudStore = cloud_.hasStore = operation.a % 4 != 0;
    recordStep(reference_.hasCloudStore ? "the cloud store is there" : "there is no cloud store");
}

void ModelHarness::localWriteFails(const Operation& /*operation*/) {
    recordStep("the next local write fails");
    reference_.nextLocalWriteFails = defaults_.failNextWrite = true;
}

void ModelHarness::cloudWriteFails(const Operation& /*operation*/) {
    recordStep("the next cloud write fails");
    reference_.nextCloudWriteFails = cloud_.store.failNextWrite = true;
}

void ModelHarness::turn(const Operation& /*operation*/) {
    recordStep("one turn");
    mainQueue_.runTurn();
    reference_.runTurn();
}

void ModelHarness::allTurns(const Operation& /*operation*/) {
    recordStep("turns until nothing waits");
    mainQueue_.runAll();
    reference_.runAll();
}

void ModelHarness::restart(const Operation& /*operation*/) {
    recordStep("restart");
    stop();
    start();
}

} // namespace kestrel::tests
