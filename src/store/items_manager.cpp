#include "store/items_manager.h"

#include "actions/execute.h"
#include "model/item_list_json.h"

#include <utility>

namespace kestrel {

ItemsManager::ItemsManager(const ItemsManagerPorts& ports)
    : localStore_(ports.userDefaults),
      mainQueue_(ports.mainQueue),
      cloud_(ports.cloud),
      clock_(ports.clock),
      workspace_(ports.workspace),
      terminal_(ports.terminal) {
    cloud_.addExternalChangeObserver(
        [&queue = mainQueue_, weak = anchor_.weak()] { handleICloudChange(queue, weak); });
    if (CloudKeyValueStore* const store = cloud_.defaultStore())
        store->synchronize();
    load();
}

CloudKeyValueStore* ItemsManager::availableCloudStore() {
    return cloud_.hasIdentityToken() ? cloud_.defaultStore() : nullptr;
}

void ItemsManager::load() {
    if (loadFromCloud())
        return;
    const auto data = localStore_.dataForKey(defaultsKey);
    if (!data)
        return;
    auto decoded = decodeItems(*data);
    if (!decoded)
        return;
    handOver(*std::move(decoded));
    migrateLocalToICloudIfNeeded();
}

/// True when the cloud held a list that decodes: it wins over the local one, whatever that is.
bool ItemsManager::loadFromCloud() {
    CloudKeyValueStore* const store = availableCloudStore();
    if (!store)
        return false;
    const auto data = store->dataForKey(defaultsKey);
    if (!data)
        return false;
    auto decoded = decodeItems(*data);
    if (!decoded)
        return false;
    handOver(*std::move(decoded));
    localStore_.setData(*data, defaultsKey);
    writeLastSyncDate();
    return true;
}

void ItemsManager::handOver(std::vector<LauncherItem> decoded) {
    // Shared, because copies of a queued task must not copy the whole list.
    auto list = std::make_shared<std::vector<LauncherItem>>(std::move(decoded));
    mainQueue_.async([weak = anchor_.weak(), list = std::move(list)] {
        if (const auto self = weak.lock())
            self->items.assign(std::move(*list));
    });
}

void ItemsManager::save() {
    const auto encoded = encodeItems(items.values());
    if (!encoded)
        return;
    if (CloudKeyValueStore* const store = availableCloudStore()) {
        store->setData(*encoded, defaultsKey);
        store->synchronize();
    }
    localStore_.setData(*encoded, defaultsKey);
    writeLastSyncDate();
}

void ItemsManager::writeLastSyncDate() { localStore_.setDate(clock_.now(), lastSyncKey); }

void ItemsManager::update(LauncherItem item) {
    if (items.replace(std::move(item)))
        save();
}

void ItemsManager::handleICloudChange(MainQueue& mainQueue, std::weak_ptr<ItemsManager> manager) {
    // May run on any thread, so the store itself is touched only in the task.
    mainQueue.async([weak = std::move(manager)] {
        if (const auto self = weak.lock())
            self->load();
    });
}

/// Seeds a cloud store that holds no list yet with the local bytes. A value that is there stays,
/// even one that does not decode.
void ItemsManager::migrateLocalToICloudIfNeeded() {
    CloudKeyValueStore* const store = availableCloudStore();
    if (!store)
        return;
    const auto local = localStore_.dataForKey(defaultsKey);
    if (!local || store->dataForKey(defaultsKey))
        return;
    store->setData(*local, defaultsKey);
    store->synchronize();
}

void ItemsManager::execute(const LauncherItem& item) {
    kestrel::execute(item, workspace_, terminal_);
}

ItemIcon ItemsManager::icon(const LauncherItem& item) { return iconFor(item, terminal_); }

} // namespace kestrel
