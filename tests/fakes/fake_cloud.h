#pragma once
// Cloud and CloudKeyValueStore in memory. Every call is logged as "cloud.<function>" or
// "cloudStore.<function> <key>"; the public fields preset and show the state and log nothing.

#include "platform/cloud.h"
#include "tests/fakes/call_log.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kestrel::tests {

class FakeCloudKeyValueStore final : public CloudKeyValueStore {
  public:
    explicit FakeCloudKeyValueStore(CallLog& log) : log_(log) {}

    std::map<std::string, std::string, std::less<>> data;

    /// The next setData is logged but stores nothing; then writes succeed again.
    bool failNextWrite = false;

    /// What synchronize answers.
    bool synchronizeResult = true;

    std::optional<std::string> dataForKey(std::string_view key) override {
        log_.add("cloudStore.dataForKey " + std::string(key));
        const auto found = data.find(key);
        return found == data.end() ? std::nullopt : std::optional(found->second);
    }

    void setData(std::string_view bytes, std::string_view key) override {
        log_.add("cloudStore.setData " + std::string(key));
        if (std::exchange(failNextWrite, false))
            return;
        data.insert_or_assign(std::string(key), std::string(bytes));
    }

    bool synchronize() override {
        log_.add("cloudStore.synchronize");
        return synchronizeResult;
    }

  private:
    CallLog& log_;
};

class FakeCloud final : public Cloud {
  public:
    explicit FakeCloud(CallLog& log) : store(log), log_(log) {}

    /// Whether an account is signed in, and whether the platform has a store at all; independent
    /// of each other.
    bool signedIn = false;
    bool hasStore = true;

    FakeCloudKeyValueStore store;
    std::vector<std::function<void()>> observers;

    /// Reports an outside change to every observer, on the calling thread. An observer added
    /// meanwhile hears of the next change only.
    void postExternalChange() {
        const auto current = observers;
        for (const auto& observer : current)
            observer();
    }

    bool hasIdentityToken() override {
        log_.add("cloud.hasIdentityToken");
        return signedIn;
    }

    CloudKeyValueStore* defaultStore() override {
        log_.add("cloud.defaultStore");
        return hasStore ? &store : nullptr;
    }

    void addExternalChangeObserver(std::function<void()> handler) override {
        log_.add("cloud.addExternalChangeObserver");
        observers.push_back(std::move(handler));
    }

  private:
    CallLog& log_;
};

} // namespace kestrel::tests
