#pragma once
// The rules of the views said again in the plainest way, over a PlainStore.

#include "tests/views/random/plain_store.h"

#include <chrono>
#include <cstddef>
#include <optional>
#include <set>
#include <string>

namespace kestrel::tests {

/// Finding a row by its first letters.
struct PlainTypeSelect {
    std::string prefix;
    Date last;

    std::optional<std::size_t> typed(const std::string& text, const PlainItems& items,
                                     std::optional<std::size_t> current, Date now);
};

/// The form of a sheet. `title` and the three others are what its controls show.
struct PlainForm {
    enum class Sheet { add, edit };

    Sheet sheet = Sheet::add;
    std::optional<PlainItem> existing;
    std::string title;
    std::string type = "App";
    std::string path;
    std::string command;
    bool isOrphan = false; ///< its window has gone

    PlainForm(Sheet which, const std::optional<PlainItem>& item);
    std::string trimmedTitle() const;
    void chose(const std::string& chosenPath, const std::string& name);

    /// What saving hands over; the id of a new item is its owner's to set.
    PlainItem record() const;
};

struct PlainSettings {
    std::optional<std::string> selected;
    std::optional<std::string> committed;
    bool showsAddSheet = false;
    std::optional<PlainItem> edited;
    PlainTypeSelect typeSelect;

    void select(const std::optional<std::string>& id);
    std::optional<std::size_t> committedRow(const PlainStore& store) const;
    std::optional<std::size_t> selectedRow(const PlainStore& store) const;
    void editCommitted(const PlainStore& store);
    void deleteCommitted(PlainStore& store);
    void deleteItem(PlainStore& store, const std::string& id);
    void deleteRows(PlainStore& store, const std::set<std::size_t>& rows);
    static void moveRows(PlainStore& store, const std::set<std::size_t>& rows,
                         std::size_t destination);
    void moveSelected(PlainStore& store, bool up) const;
};

struct PlainPopover {
    enum class Step { previous, next, pageUp, pageDown, first, last };

    std::optional<std::size_t> hovered;
    int closes = 0;
    PlainTypeSelect typeSelect;

    void step(Step step, std::size_t count);
    void tap(PlainStore& store, const PlainItem& item);
};

} // namespace kestrel::tests
