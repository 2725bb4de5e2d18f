// The part of World that works on the store and on what is outside of the program.

#include "tests/views/random/world.h"

namespace kestrel::tests {

void World::start() {
    manager_ = std::make_unique<ItemsManager>(ports_);
    itemsSignal_ = manager_->objectWillChange.subscribe([this] {
        PlainItems list;
        for (const LauncherItem& item : manager_->items)
            list.push_back(plainItem(item));
        listBefore_.push_back(plainBytes(list));
    });
    popover_ = std::make_unique<MenuPopoverView>(
        *manager_, mainQueue_, clock_,
        MenuPopoverView::Callbacks{.onOpenSettings = [this] { ++settingsClicks_; },
                                   .onQuit = [this] { ++quitClicks_; },
                                   .onClose = [this] { ++closes_; }});
    popoverSignal_ = popover_->objectWillChange.subscribe([this] { ++popoverSignals_; });
    plain_.construct();
}

/// As at the end of the process, but tasks and observers are still called afterwards.
void World::stop() {
    dropForm();
    settings_.reset();
    plainSettings_.reset();
    keptRow_.reset();
    plainKeptRow_.reset();
    popover_.reset();
    keptTap_ = nullptr;
    plainKeptTap_.reset();
    manager_.reset();
    plain_.items.clear();
    plainPopover_.hovered.reset();
    hoveredBefore_.reset();
    plainPopover_.typeSelect = {};
    plain_.queue.clear();
    cloud_.postExternalChange();
    mainQueue_.runAll();
    cloud_.observers.clear();
}

void World::load(const Operation& /*operation*/) {
    say("load");
    manager_->load();
    plain_.load();
}

void World::save(const Operation& /*operation*/) {
    say("save");
    manager_->save();
    plain_.save();
}

void World::updateKnown(const Operation& operation) {
    if (plain_.items.empty())
        return;
    PlainItem item = madeUpItem(operation.b);
    item.id = plain_.items[operation.a % plain_.items.size()].id;
    say("update " + plainBytes({item}));
    manager_->update(realItem(item));
    plain_.update(item);
}

void World::updateUnknown(const Operation& operation) {
    const PlainItem item = madeUpItem(operation.b);
    say("update, perhaps unknown, " + plainBytes({item}));
    manager_->update(realItem(item));
    plain_.update(item);
}

void World::appendDuplicate(const Operation& operation) {
    constexpr std::size_t longEnough = 14;
    if (plain_.items.empty() || plain_.items.size() > longEnough)
        return;
    PlainItem item = madeUpItem(operation.b);
    item.id = plain_.items[operation.a % plain_.items.size()].id;
    say("append and save " + plainBytes({item}));
    manager_->items.append(realItem(item));
    manager_->save();
    plain_.willChange();
    plain_.items.push_back(item);
    plain_.save();
}

void World::setCloud(const std::optional<PlainValue>& value, bool notified) {
    plain_.cloud = value;
    if (value)
        cloud_.store.data.insert_or_assign("launcherItems", value->bytes);
    else
        cloud_.store.data.erase("launcherItems");
    if (!notified)
        return;
    cloud_.postExternalChange();
    plain_.externalChange();
}

void World::outsideList(const Operation& operation) {
    const PlainValue value = madeUpList(operation.a, operation.b);
    const bool notified = operation.c % 4 != 0;
    say((notified ? "outside list " : "unnoticed outside list ") + value.bytes);
    setCloud(value, notified);
}

void World::outsideNoList(const Operation& operation) {
    const bool notified = operation.c % 4 != 0;
    const bool removed = operation.a % 3 == 0;
    const PlainValue value = madeUpNoList(operation.b);
    say((notified ? "outside " : "unnoticed outside ") +
        (removed ? "removal" : "value " + value.bytes));
    setCloud(removed ? std::nullopt : std::optional(value), notified);
}

void World::localBytes(const Operation& operation) {
    switch (operation.c % 3) {
    case 0:
        plain_.local.reset();
        break;
    case 1:
        plain_.local = madeUpNoList(operation.b);
        break;
    default:
        plain_.local = madeUpList(operation.a, operation.b);
        break;
    }
    say("local bytes " + (plain_.local ? plain_.local->bytes : "removed"));
    if (plain_.local)
        defaults_.data.insert_or_assign("launcherItems", plain_.local->bytes);
    else
        defaults_.data.erase("launcherItems");
}

void World::account(const Operation& operation) {
    plain_.signedIn = cloud_.signedIn = operation.a % 3 != 0;
    say(plain_.signedIn ? "sign in" : "sign out");
    if (operation.c % 4 == 0)
        return;
    cloud_.postExternalChange();
    plain_.externalChange();
}

void World::cloudStore(const Operation& operation) {
    plain_.hasCloudStore = cloud_.hasStore = operation.a % 4 != 0;
    say(plain_.hasCloudStore ? "the cloud store is there" : "there is no cloud store");
}

void World::localWriteFails(const Operation& /*operation*/) {
    say("the next local write fails");
    plain_.nextLocalWriteFails = defaults_.failNextWrite = true;
}

void World::cloudWriteFails(const Operation& /*operation*/) {
    say("the next cloud write fails");
    plain_.nextCloudWriteFails = cloud_.store.failNextWrite = true;
}

void World::turn(const Operation& /*operation*/) {
    say("one turn");
    mainQueue_.runTurn();
    plain_.runTurn();
}

void World::allTurns(const Operation& /*operation*/) {
    say("turns until nothing waits");
    mainQueue_.runAll();
    plain_.runAll();
}

void World::restart(const Operation& /*operation*/) {
    say("restart");
    stop();
    start();
}

} // namespace kestrel::tests
