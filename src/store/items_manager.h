#pragma once
// The one owner of the launcher list. It loads the list when it is made, mirrors it into the local
// and the cloud store, and writes it only when a caller asks. AppDelegate creates the only one;
// every view gets it by reference and observes it.

#include "actions/item_icon.h"
#include "model/launcher_item.h"
#include "platform/clock.h"
#include "platform/cloud.h"
#include "platform/main_queue.h"
#include "platform/terminal.h"
#include "platform/user_defaults.h"
#include "platform/workspace.h"
#include "store/item_list.h"
#include "store/weak_anchor.h"
#include "store/will_change_signal.h"

#include <memory>
#include <string>
#include <string_view>

namespace kestrel {

/// What the store needs of the system; all of it outlives the store.
struct ItemsManagerPorts {
    MainQueue& mainQueue;
    UserDefaults& userDefaults;
    Cloud& cloud;
    Clock& clock;
    Workspace& workspace;
    Terminal& terminal;
};

/// Main thread only. No error leaves it: a value that does not decode counts as none, and the
/// results of writes are not looked at.
class ItemsManager {
  public:
    /// Registers for outside changes of the cloud store, asks it to synchronise and loads. `items`
    /// is still empty afterwards; a stored list arrives with the main queue's next turn.
    explicit ItemsManager(const ItemsManagerPorts& ports);

    ItemsManager(const ItemsManager&) = delete;
    ItemsManager& operator=(const ItemsManager&) = delete;
    ~ItemsManager() = default;

    /// Fires once before every write of `items`. Handlers may write `items`, as ItemList says, and
    /// must not destroy this object.
    WillChangeSignal objectWillChange;

    /// The list in display order. Whoever writes it calls `save` afterwards.
    ItemList items{objectWillChange};

    /// Reads the stores, the cloud's list first, and hands the first list that decodes to `items`
    /// through the main queue. Where there is none `items` stays as it is.
    void load();

    /// Writes the list to the cloud store (while an account is available) and to the local one.
    void save();

    /// Replaces the first item with the same id, with one signal, and saves; nothing at all when
    /// there is none. When a handler of the signal removes it, the replacement is dropped and
    /// nothing is saved.
    void update(LauncherItem item);

    /// Launches an item; uses no state of the store.
    void execute(const LauncherItem& item);

    /// The icon for an item; uses no state of the store.
    ItemIcon icon(const LauncherItem& item);

  private:
    CloudKeyValueStore* availableCloudStore();
    [[nodiscard]] bool loadFromCloud();
    void handOver(std::vector<LauncherItem> decoded);
    void writeLastSyncDate();
    void migrateLocalToICloudIfNeeded();
    static void handleICloudChange(MainQueue& mainQueue, std::weak_ptr<ItemsManager> manager);

    static constexpr std::string_view defaultsKey = "launcherItems";
    static constexpr std::string_view lastSyncKey = "lastLocalSync";

    UserDefaults& localStore_;
    MainQueue& mainQueue_;
    Cloud& cloud_;
    Clock& clock_;
    Workspace& workspace_;
    Terminal& terminal_;
    WeakAnchor<ItemsManager> anchor_{*this};
};

} // namespace kestrel
