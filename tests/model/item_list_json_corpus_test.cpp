#include "fuzz/item_list_json_property.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>

namespace kestrel {

namespace {

std::string contents(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

TEST(ItemListJsonCorpusTest, EveryFileOfTheCorpusKeepsTheProperties) {
    const std::filesystem::path folder =
        std::filesystem::path(KESTREL_FUZZ_CORPUS) / "item_list_json";
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        EXPECT_EQ(brokenItemListProperty(contents(entry.path())), std::nullopt) << entry.path();
        ++count;
    }
    EXPECT_GT(count, 0U) << "no file in " << folder;
}

} // namespace

} // namespace kestrel
