#pragma once
// The key-value store that follows the user from machine to machine, and how to get at it.

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace kestrel {

/// Main thread only. Like UserDefaults, but for bytes only; results of writes are not reported.
class CloudKeyValueStore {
  public:
    virtual ~CloudKeyValueStore() = default;

    /// The bytes stored under `key`; nothing when the key is missing. A value that is there but
    /// cannot be read is given as no bytes at all, which decode as no list.
    virtual std::optional<std::string> dataForKey(std::string_view key) = 0;

    /// Stores bytes under `key`, whole or not at all. The platform carries them to the user's
    /// other machines later.
    virtual void setData(std::string_view data, std::string_view key) = 0;

    /// Asks the platform to exchange pending changes; returns at once. The result says nothing
    /// that the program relies on.
    virtual bool synchronize() = 0;
};

class Cloud {
  public:
    virtual ~Cloud() = default;

    /// True exactly while an account is signed in and usable by the program. Cheap: asked again at
    /// every use.
    virtual bool hasIdentityToken() = 0;

    /// The program's cloud store, or null where the platform has none. Asked for again at every
    /// use; the object belongs to the platform and lives until the process ends.
    virtual CloudKeyValueStore* defaultStore() = 0;

    /// Calls `handler` whenever values of the default store, or the account, changed from outside
    /// this process (never for its own writes), for as long as the process lives. The handler may
    /// be called on any thread.
    virtual void addExternalChangeObserver(std::function<void()> handler) = 0;
};

} // namespace kestrel
