#include "tests/model_based/reference/reference_store.h"

#include <utility>

namespace kestrel::tests {

namespace {

std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\' || c == '/')
            result += '\\';
        if (c == '\n')
            result += "\\n";
        else if (c == '\t')
            result += "\\t";
        else
            result += c;
    }
    return result + '"';
}

} // namespace

std::string referenceBytes(const ReferenceItems& items) {
    std::string result = "[";
    for (const ReferenceItem& item : items) {
        if (result.size() > 1)
            result += ',';
        result += "{\"id\":\"" + item.id + "\",\"title\":" + quoted(item.title) + ",\"type\":\"" +
                  item.type + '"';
        if (item.path)
            result += ",\"path\":" + quoted(*item.path);
        if (item.command)
            result += ",\"command\":" + quoted(*item.command);
        result += '}';
    }
    return result + ']';
}

std::optional<std::size_t> ReferenceStore::positionOf(const std::string& id) const {
    for (std::size_t i = 0; i < items.size(); ++i)
        if (items[i].id == id)
            return i;
    return std::nullopt;
}

void ReferenceStore::construct() {
    items.clear();
    if (hasCloudStore)
        calls.emplace_back("cloudStore.synchronize");
    load();
}

void ReferenceStore::load() {
    if (cloudIsAvailable() && cloud && cloud->list) {
        handOver(*cloud->list);
        writeLocal(*cloud);
        writeDate();
        return;
    }
    if (!local || !local->list)
        return;
    handOver(*local->list);
    if (cloudIsAvailable() && !cloud) {
        writeCloud(*local);
        calls.emplace_back("cloudStore.synchronize");
    }
}

void ReferenceStore::handOver(const ReferenceItems& list) {
    queue.emplace_back([this, list] {
        willChange();
        items = list;
    });
}

void ReferenceStore::save() {
    const StoredValue value{referenceBytes(items), items};
    if (cloudIsAvailable()) {
        writeCloud(value);
        calls.emplace_back("cloudStore.synchronize");
    }
    writeLocal(value);
    writeDate();
}

void ReferenceStore::update(const ReferenceItem& item) {
    const auto position = positionOf(item.id);
    if (!position)
        return;
    willChange();
    items[*position] = item;
    save();
}

void ReferenceStore::externalChange() {
    queue.emplace_back([this] { load(); });
}

void ReferenceStore::runTurn() {
    const auto queued = std::exchange(queue, {});
    for (const auto& task : queued)
        task();
}

void ReferenceStore::runAll() {
    while (!queue.empty())
        runTurn();
}

void ReferenceStore::execute(const ReferenceItem& item) {
    const bool typed = item.type == "Inline Command";
    const auto& text = typed ? item.command : item.path;
    if (!text || text->empty())
        return;
    const char* const call = typed                ? "terminal.runInNewWindow "
                             : item.type == "App" ? "workspace.openApplication "
                                                  : "workspace.openFile ";
    calls.push_back(call + *text);
}

void ReferenceStore::writeLocal(const StoredValue& value) {
    calls.emplace_back("defaults.setData launcherItems");
    if (!std::exchange(nextLocalWriteFails, false))
        local = value;
}

void ReferenceStore::writeCloud(const StoredValue& value) {
    calls.emplace_back("cloudStore.setData launcherItems");
    if (!std::exchange(nextCloudWriteFails, false))
        cloud = value;
}

void ReferenceStore::writeDate() {
    calls.emplace_back("defaults.setDate lastLocalSync");
    if (!std::exchange(nextLocalWriteFails, false))
        date = now;
}

} // namespace kestrel::tests
