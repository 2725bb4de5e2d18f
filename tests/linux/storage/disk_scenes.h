#pragma once
// Disks in memory as the program may find them when it starts, and what is stored on one.

#include "model/item_list_json.h"
#include "shells/linux/storage/temporary_name.h"
#include "tests/fakes/store_fixture.h"
#include "tests/linux/storage/memory_disk.h"

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kestrel::tests {

using Titles = std::vector<std::string>;

inline const std::string dataDirectory = "/home/user/.local/share/kestrel";
inline const std::string localList = dataDirectory + "/launcherItems";
inline const std::string cloudList = dataDirectory + "/cloud/launcherItems";

inline std::string listOf(const Titles& titles) {
    std::vector<LauncherItem> items;
    for (const std::string& title : titles)
        items.push_back(appItem(title));
    return encodeItems(items).value();
}

enum class Start {
    listAlone,
    listAndCloud,
    nothing,
    listsBehindLinks,
    staleTemporaries,
    cloudWithoutList,
    cloudWithAnotherList
};

inline void PrintTo(Start start, std::ostream* out) {
    const char* const names[] = {"a list alone",
                                 "a list and a cloud",
                                 "nothing",
                                 "lists behind links",
                                 "stale temporaries",
                                 "a cloud without a list",
                                 "a cloud with another list"};
    *out << names[static_cast<int>(start)];
}

inline MemoryDisk diskFor(Start start) {
    const std::string list = listOf({"Old"});
    MemoryDisk disk;
    disk.addDirectory("/home/user");
    switch (start) {
    case Start::listAlone:
        disk.addFile(localList, list);
        break;
    case Start::listAndCloud:
        disk.addFile(localList, list);
        disk.addFile(cloudList, list);
        break;
    case Start::nothing:
        break;
    case Start::listsBehindLinks:
        disk.addFile("/home/user/dotfiles/list", list);
        disk.addFile("/sync/shared/launcherItems", list);
        disk.addLink(localList, "../../../dotfiles/list");
        disk.addLink(dataDirectory + "/cloud", "/sync/shared");
        break;
    case Start::staleTemporaries:
        disk.addFile(localList, list);
        disk.addFile(dataDirectory + "/" + linux_shell::nextTemporaryName("launcherItems"), "[");
        disk.addFile(dataDirectory + "/" + linux_shell::nextTemporaryName("lastLocalSync"), "");
        break;
    case Start::cloudWithoutList:
        disk.addFile(localList, list);
        disk.addDirectory(dataDirectory + "/cloud");
        break;
    case Start::cloudWithAnotherList:
        disk.addFile(localList, listOf({"Elsewhere"}));
        disk.addFile(cloudList, list);
        break;
    }
    return disk;
}

/// The titles in a file; nothing when there is none. One that does not decode fails the test.
inline std::optional<Titles> titlesIn(const MemoryDisk& disk, const std::string& path) {
    const auto bytes = disk.contents(path);
    if (!bytes)
        return std::nullopt;
    const auto items = decodeItems(*bytes);
    if (!items) {
        ADD_FAILURE() << path << " is no list: " << testing::PrintToString(*bytes);
        return std::nullopt;
    }
    Titles result;
    for (const LauncherItem& item : *items)
        result.push_back(item.title);
    return result;
}

inline Titles temporariesOn(const MemoryDisk& disk) {
    Titles result;
    for (const std::string& directory :
         {dataDirectory, dataDirectory + "/cloud", std::string("/home/user/dotfiles"),
          std::string("/sync/shared")})
        for (const std::string& name : disk.names(directory))
            if (name.ends_with(".tmp"))
                result.push_back(name);
    return result;
}

} // namespace kestrel::tests
