#pragma once
// The item store said again in the plainest way: vectors, optional values, no sharing of code with
// what it is held against. Values that other machines store come with what they mean, so nothing
// is decoded here.

#include "platform/clock.h"

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kestrel::tests {

struct PlainItem {
    std::string id;
    std::string title;
    std::string type;
    std::optional<std::string> path;
    std::optional<std::string> command;

    friend bool operator==(const PlainItem&, const PlainItem&) = default;
};

using PlainItems = std::vector<PlainItem>;

/// The bytes of a list as the program writes them.
std::string plainBytes(const PlainItems& items);

/// What a store holds: bytes, and the list that they are, nothing for bytes that are none.
struct PlainValue {
    std::string bytes;
    std::optional<PlainItems> list;
};

struct PlainStore {
    PlainItems items;
    std::optional<PlainValue> cloud;
    std::optional<PlainValue> local;
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
    void update(const PlainItem& item);
    void externalChange();
    void runTurn();
    void runAll();
    void execute(const PlainItem& item);

    /// What the views do when the signal fires.
    std::function<void()> observer = [] {};

    /// Fires the signal; `items` is written afterwards.
    void willChange() {
        listBefore.push_back(plainBytes(items));
        observer();
    }

    /// The position of the first item with that id.
    std::optional<std::size_t> positionOf(const std::string& id) const;

  private:
    bool cloudIsAvailable() const { return signedIn && hasCloudStore; }
    void handOver(const PlainItems& list);
    void writeLocal(const PlainValue& value);
    void writeCloud(const PlainValue& value);
    void writeDate();
};

} // namespace kestrel::tests
