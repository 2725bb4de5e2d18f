#pragma once
// Reference model of the item store, as simple as it can be: vectors, optional values, no code
// shared with the store that it is compared with. Values that other machines store come with what
// they mean, so nothing is decoded here.

#include "platform/clock.h"

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kestrel::tests {

struct ReferenceItem {
    std::string id;
    std::string title;
    std::string type;
    std::optional<std::string> path;
    std::optional<std::string> command;

    friend bool operator==(const ReferenceItem&, const ReferenceItem&) = default;
};

using ReferenceItems = std::vector<ReferenceItem>;

/// The bytes of a list as the program writes them.
std::string referenceBytes(const ReferenceItems& items);

/// What a store holds: bytes, and the list that they are, nothing for bytes that are none.
struct StoredValue {
    std::string bytes;
    std::optional<ReferenceItems> list;
};

struct ReferenceStore {
    ReferenceItems items;
    std::optional<StoredValue> cloud;
    std::optional<StoredValue> local;
    std::optional<Date> date;
    std::deque<std::function<void()>> queue;

    bool signedIn = false;
    bool hasCloudStore = true;
    bool nextCloudWriteFails = false;
    bool nextLocalWriteFails = false;
    Date now;

    std::vector<std::string> calls;      ///< the writes and launches, in order
    std::vector<std::string> listBefore; ///< for each signal: the list when it fires

    void construct();
    void load();
    void save();
    void update(const ReferenceItem& item);
    void externalChange();
    void runTurn();
    void runAll();
    void execute(const ReferenceItem& item);

    /// What the views do when the signal fires.
    std::function<void()> observer = [] {};

    /// Fires the signal; `items` is written afterwards.
    void willChange() {
        listBefore.push_back(referenceBytes(items));
        observer();
    }

    /// The position of the first item with that id.
    std::optional<std::size_t> positionOf(const std::string& id) const;

  private:
    bool cloudIsAvailable() const { return signedIn && hasCloudStore; }
    void handOver(const ReferenceItems& list);
    void writeLocal(const StoredValue& value);
    void writeCloud(const StoredValue& value);
    void writeDate();
};

} // namespace kestrel::tests
