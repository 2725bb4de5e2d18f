#pragma once
// Reference model of the views' rules, over a ReferenceStore.

#include "tests/model_based/reference/reference_store.h"

#include <chrono>
#include <cstddef>
#include <optional>
#include <set>
#include <string>

namespace kestrel::tests {

/// Finding a row by its first letters.
struct ReferenceTypeSelect {
    std::string prefix;
    Date last;

    bool isUnderWay(Date now) const;
    std::optional<std::size_t> typed(const std::string& text, const ReferenceItems& items,
                                     std::optional<std::size_t> current, Date now);
};

/// The form of a sheet. `title` and the three others are what its controls show.
struct ReferenceForm {
    enum class Sheet { add, edit };

    Sheet sheet = Sheet::add;
    std::optional<ReferenceItem> existing;
    std::string title;
    std::string type = "App";
    std::string path;
    std::string command;
    bool isOrphan = false; ///< its window has gone

    ReferenceForm(Sheet which, const std::optional<ReferenceItem>& item);
    std::string trimmedTitle() const;
    void chose(const std::string& chosenPath, const std::string& name);

    /// What saving hands over; the id of a new item is its owner's to set.
    ReferenceItem record() const;
};

enum class ReferenceStep { previous, next, pageUp, pageDown, first, last };

struct ReferenceSettings {
    std::optional<std::string> selected;
    std::optional<std::string> committed;
    bool showsAddSheet = false;
    std::optional<ReferenceItem> edited;
    std::optional<std::size_t> gap; ///< before which row the selected one was deleted
    ReferenceTypeSelect typeSelect;

    void select(const std::optional<std::string>& id);
    std::optional<std::size_t> committedRow(const ReferenceStore& store) const;
    std::optional<std::size_t> selectedRow(const ReferenceStore& store) const;
    void editCommitted(const ReferenceStore& store);
    void deleteCommitted(ReferenceStore& store);
    void deleteItem(ReferenceStore& store, const std::string& id);
    void deleteRows(ReferenceStore& store, const std::set<std::size_t>& rows);
    static void moveRows(ReferenceStore& store, const std::set<std::size_t>& rows,
                         std::size_t destination);
    void moveSelected(ReferenceStore& store, bool up) const;
    void step(ReferenceStep step, std::size_t page, const ReferenceStore& store);

  private:
    void remove(ReferenceStore& store, const std::set<std::size_t>& rows);
};

struct ReferencePopover {
    std::optional<std::size_t> hovered;
    bool footerHasFocus = false;
    int closes = 0;
    ReferenceTypeSelect typeSelect;

    /// What is highlighted for all to see.
    std::optional<std::size_t> shown() const;
    void step(ReferenceStep step, std::size_t count);
    void activate(ReferenceStore& store);
    void typed(ReferenceStore& store, const std::string& text);
    void tap(ReferenceStore& store, const ReferenceItem& item);
};

} // namespace kestrel::tests
