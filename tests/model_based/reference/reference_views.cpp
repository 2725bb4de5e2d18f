#include "tests/model_based/reference/reference_views.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace kestrel::tests {

namespace {

/// Small letters with their marks apart, for the letters that the generated titles and keys have.
std::string folded(std::string text) {
    static const std::array<std::pair<std::string_view, std::string_view>, 3> marked{
        {{"\u00e4", "a\u0308"}, {"\u00c4", "a\u0308"}, {"\u00e9", "e\u0301"}}};
    for (char& c : text)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    for (const auto& [whole, apart] : marked)
        for (std::size_t at = text.find(whole); at != std::string::npos; at = text.find(whole))
            text.replace(at, whole.size(), apart);
    return text;
}

bool begins(const ReferenceItem& item, const std::string& prefix) {
    return folded(item.title).starts_with(folded(prefix));
}

std::optional<std::size_t> firstFrom(const ReferenceItems& items, const std::string& prefix,
                                     std::size_t start) {
    for (std::size_t i = 0; i < items.size(); ++i) {
        const std::size_t row = (start + i) % items.size();
        if (begins(items[row], prefix))
            return row;
    }
    return std::nullopt;
}

void removeRows(ReferenceStore& store, const std::set<std::size_t>& rows) {
    ReferenceItems left;
    for (std::size_t i = 0; i < store.items.size(); ++i)
        if (!rows.contains(i))
            left.push_back(store.items[i]);
    store.willChange();
    store.items = left;
    store.save();
}

} // namespace

bool ReferenceTypeSelect::isUnderWay(Date now) const {
    return !prefix.empty() && now - last <= std::chrono::milliseconds(1000);
}

std::optional<std::size_t> ReferenceTypeSelect::typed(const std::string& text,
                                                      const ReferenceItems& items,
                                                      std::optional<std::size_t> current,
                                                      Date now) {
    if (!isUnderWay(now))
        prefix.clear();
    last = now;
    if (prefix.empty() && text == " ")
        return std::nullopt;
    std::string repeated;
    while (repeated.size() < prefix.size())
        repeated += text;
    const bool isOneLetter = repeated == prefix;
    prefix += text;
    if (!isOneLetter)
        return firstFrom(items, prefix, current.value_or(0));
    if (prefix != text && current && begins(items[*current], prefix))
        return current;
    return firstFrom(items, text, current ? *current + 1 : 0);
}

ReferenceForm::ReferenceForm(Sheet which, const std::optional<ReferenceItem>& item)
    : sheet(which), existing(item) {
    if (!item)
        return;
    title = item->title;
    type = item->type;
    path = item->path.value_or("");
    command = item->command.value_or("");
}

std::string ReferenceForm::trimmedTitle() const {
    static constexpr std::array<std::string_view, 5> spaces{" ", "\t", "\xC2\xA0", "\xE3\x80\x80",
                                                            "\xE2\x80\x83"};
    std::string_view rest = title;
    bool again = true;
    while (again) {
        again = false;
        for (const std::string_view space : spaces) {
            if (rest.starts_with(space)) {
                rest.remove_prefix(space.size());
                again = true;
            } else if (rest.ends_with(space)) {
                rest.remove_suffix(space.size());
                again = true;
            }
        }
    }
    return std::string(rest);
}

void ReferenceForm::chose(const std::string& chosenPath, const std::string& name) {
    path = chosenPath;
    if (title.empty())
        title = name;
}

ReferenceItem ReferenceForm::record() const {
    ReferenceItem item;
    if (existing)
        item.id = existing->id;
    item.title = trimmedTitle();
    item.type = type;
    if (type == "Inline Command" && !command.empty())
        item.command = command;
    if (type != "Inline Command" && !path.empty())
        item.path = path;
    return item;
}

void ReferenceSettings::select(const std::optional<std::string>& id) {
    if (id == selected)
        return;
    gap.reset();
    selected = id;
    if (id)
        committed = id;
}

std::optional<std::size_t> ReferenceSettings::committedRow(const ReferenceStore& store) const {
    return committed ? store.positionOf(*committed) : std::nullopt;
}

std::optional<std::size_t> ReferenceSettings::selectedRow(const ReferenceStore& store) const {
    return selected ? store.positionOf(*selected) : std::nullopt;
}

void ReferenceSettings::editCommitted(const ReferenceStore& store) {
    if (const auto row = committedRow(store))
        edited = store.items[*row];
}

void ReferenceSettings::deleteCommitted(ReferenceStore& store) {
    if (const auto row = committedRow(store))
        deleteRows(store, {*row});
}

void ReferenceSettings::deleteItem(ReferenceStore& store, const std::string& id) {
    const auto row = store.positionOf(id);
    if (!row)
        return;
    remove(store, {*row});
    if (committed == id)
        committed.reset();
    if (selected == id)
        selected.reset();
}

void ReferenceSettings::deleteRows(ReferenceStore& store, const std::set<std::size_t>& rows) {
    remove(store, rows);
    selected.reset();
    committed.reset();
}

void ReferenceSettings::moveRows(ReferenceStore& store, const std::set<std::size_t>& rows,
                                 std::size_t destination) {
    ReferenceItems moved;
    for (const std::size_t row : rows)
        moved.push_back(store.items[row]);
    ReferenceItems result;
    for (std::size_t i = 0; i <= store.items.size(); ++i) {
        if (i == destination)
            result.insert(result.end(), moved.begin(), moved.end());
        if (i < store.items.size() && !rows.contains(i))
            result.push_back(store.items[i]);
    }
    store.willChange();
    store.items = result;
    store.save();
}

void ReferenceSettings::moveSelected(ReferenceStore& store, bool up) const {
    const auto row = selectedRow(store);
    if (!row)
        return;
    if (up && *row > 0)
        moveRows(store, {*row}, *row - 1);
    if (!up && *row + 1 < store.items.size())
        moveRows(store, {*row}, *row + 2);
}

void ReferenceSettings::remove(ReferenceStore& store, const std::set<std::size_t>& rows) {
    const auto row = selectedRow(store);
    removeRows(store, rows);
    if (!row || !rows.contains(*row))
        return;
    gap = *row;
    for (const std::size_t other : rows)
        if (other < *row)
            --*gap;
}

// Row by row: a page is as many steps.
void ReferenceSettings::step(ReferenceStep step, std::size_t page, const ReferenceStore& store) {
    const std::size_t count = store.items.size();
    if (count == 0)
        return;
    const bool isForward = step == ReferenceStep::next || step == ReferenceStep::pageDown;
    const bool isPage = step == ReferenceStep::pageUp || step == ReferenceStep::pageDown;
    auto row = selectedRow(store);
    if (step == ReferenceStep::first || step == ReferenceStep::last) {
        row = step == ReferenceStep::first ? 0 : count - 1;
    } else if (!row && !gap) {
        row = isForward ? 0 : count - 1;
    } else {
        for (std::size_t i = 0; i < (isPage ? page : 1); ++i)
            if (row)
                row = isForward ? *row + 1 : *row - (*row > 0 ? 1 : 0);
            else
                row = isForward ? *gap : *gap - (*gap > 0 ? 1 : 0);
    }
    select(store.items[std::min(*row, count - 1)].id);
}

std::optional<std::size_t> ReferencePopover::shown() const {
    return footerHasFocus ? std::nullopt : hovered;
}

void ReferencePopover::step(ReferenceStep step, std::size_t count) {
    constexpr std::size_t page = 9; // rows that fit without scrolling
    typeSelect.prefix.clear();
    if (count == 0)
        return;
    const std::size_t last = count - 1;
    if (step == ReferenceStep::first || step == ReferenceStep::last)
        hovered = step == ReferenceStep::first ? 0 : last;
    else if (!hovered)
        hovered = step == ReferenceStep::next || step == ReferenceStep::pageDown ? 0 : last;
    else if (step == ReferenceStep::next || step == ReferenceStep::pageDown)
        hovered = std::min(*hovered + (step == ReferenceStep::next ? 1 : page), last);
    else {
        const std::size_t distance = step == ReferenceStep::previous ? 1 : page;
        hovered = *hovered < distance ? 0 : *hovered - distance;
    }
}

void ReferencePopover::activate(ReferenceStore& store) {
    if (const auto row = shown())
        tap(store, store.items[*row]);
}

void ReferencePopover::typed(ReferenceStore& store, const std::string& text) {
    if (text == " " && !typeSelect.isUnderWay(store.now)) {
        activate(store);
        return;
    }
    if (const auto row = typeSelect.typed(text, store.items, hovered, store.now))
        hovered = row;
}

void ReferencePopover::tap(ReferenceStore& store, const ReferenceItem& item) {
    store.execute(item);
    store.queue.emplace_back([this] { ++closes; });
}

} // namespace kestrel::tests
