#include "tests/linux/storage/memory_disk.h"

#include <algorithm>
#include <set>

namespace kestrel::tests {

std::vector<std::string> MemoryDisk::remains(const std::string& synced,
                                             const std::string& written) {
    if (synced == written)
        return {synced};
    const std::size_t size = written.size();
    const std::size_t half = size / 2;
    const std::string zeros(size, '\0');
    return {synced,
            written,
            std::string(),
            zeros,
            written.substr(0, half),
            written.substr(0, half) + zeros.substr(half),
            zeros.substr(0, half) + written.substr(half)};
}

/// Every selection of the unsynced changes, in every order; of more than a few, in theirs.
std::vector<MemoryDisk::Nodes> MemoryDisk::namesAfterPowerCut() const {
    std::vector<Nodes> results{synced_};
    std::vector<std::vector<std::size_t>> selections{{}};
    const bool inEveryOrder = unsynced_.size() <= 6;
    for (std::size_t i = 0; i < selections.size(); ++i) {
        const bool isOpen = inEveryOrder || selections[i].empty();
        for (std::size_t next = isOpen ? 0 : selections[i].back() + 1; next < unsynced_.size();
             ++next) {
            std::vector<std::size_t> selection = selections[i];
            if (std::ranges::find(selection, next) != selection.end())
                continue;
            selection.push_back(next);
            Nodes nodes = synced_;
            for (const std::size_t change : selection)
                apply(nodes, unsynced_[change]);
            results.push_back(std::move(nodes));
            selections.push_back(std::move(selection));
        }
    }
    return results;
}

std::vector<MemoryDisk> MemoryDisk::afterPowerCut() const {
    std::vector<MemoryDisk> results;
    std::set<std::string> known;
    std::vector<Nodes> left = namesAfterPowerCut();
    for (std::size_t node = 0; node < now_.size(); ++node) {
        if (now_[node].kind != Kind::file || now_[node].bytes == synced_[node].bytes)
            continue;
        std::vector<Nodes> more;
        for (const Nodes& nodes : left)
            for (const std::string& bytes : remains(synced_[node].bytes, now_[node].bytes)) {
                more.push_back(nodes);
                more.back()[node].bytes = bytes;
            }
        left = std::move(more);
    }
    for (const Nodes& nodes : left) {
        MemoryDisk disk;
        disk.now_ = nodes;
        disk.synced_ = nodes;
        if (known.insert(disk.fingerprint()).second)
            results.push_back(std::move(disk));
    }
    return results;
}

std::string MemoryDisk::fingerprint() const {
    std::string text;
    std::vector<std::pair<std::string, std::size_t>> left{{"", 0}};
    while (!left.empty()) {
        const auto [path, number] = left.back();
        left.pop_back();
        const Node& node = now_[number];
        text += path + '\n' + std::to_string(static_cast<int>(node.kind)) +
                std::to_string(node.bytes.size()) + ' ' + node.bytes + '\n';
        for (const auto& [name, child] : node.names)
            left.emplace_back(path + "/" + name, child);
    }
    return text;
}

} // namespace kestrel::tests
