// What the fuzzers have found worth keeping is read again by every run of the tests.

#include "fuzz/item_list_json_property.h"
#include "fuzz/text_property.h"

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

/// Checks every file of one fuzzer's corpus with its property.
template <class Property>
void checkCorpus(const char* name, Property brokenProperty) {
    const std::filesystem::path folder = std::filesystem::path(KESTREL_FUZZ_CORPUS) / name;
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        EXPECT_EQ(brokenProperty(contents(entry.path())), std::nullopt) << entry.path();
        ++count;
    }
    EXPECT_GT(count, 0U) << "no file in " << folder;
}

TEST(ItemListJsonCorpusTest, EveryFileOfTheCorpusKeepsTheProperties) {
    checkCorpus("item_list_json", brokenItemListProperty);
}

TEST(TextCorpusTest, EveryFileOfTheCorpusKeepsTheProperties) {
    checkCorpus("text", brokenTextProperty);
}

} // namespace

} // namespace kestrel
