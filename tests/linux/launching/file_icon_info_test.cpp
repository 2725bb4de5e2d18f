#include "shells/linux/launching/file_icon_info.h"

#include "shells/linux/glib/glib_ptr.h"
#include "tests/linux/launching/launching_fixture.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace kestrel::linux_shell {
namespace {

struct Sample {
    std::string_view name;
    std::string_view bytes;
};

constexpr std::array samples{Sample{"script.sh", "#!/bin/sh\n"},
                             Sample{"script", "#!/bin/sh\n"},
                             Sample{"program.py", "import sys\n"},
                             Sample{"letter", "Dear Sir\n"},
                             Sample{"letter.txt", "Dear Sir\n"},
                             Sample{"empty", ""},
                             Sample{"empty.sh", ""},
                             Sample{"program",
                                    {"\x7f"
                                     "ELF\x02\x01\x01\0\0\0\0",
                                     11}},
                             Sample{"image.png", "\x89PNG\r\n"},
                             Sample{"bytes", {"\0\1\2\3", 4}}};

/// The names by which GIO itself knows the icon of a file, without the single-coloured ones.
std::vector<std::string> namesByGio(const std::string& path) {
    const ObjectPtr<GFile> file(g_file_new_for_path(path.c_str()));
    const ObjectPtr<GFileInfo> info(g_file_query_info(file.get(), G_FILE_ATTRIBUTE_STANDARD_ICON,
                                                      G_FILE_QUERY_INFO_NONE, nullptr, nullptr));
    std::vector<std::string> names;
    for (const char* const* name =
             g_themed_icon_get_names(G_THEMED_ICON(g_file_info_get_icon(info.get())));
         *name != nullptr; ++name)
        if (!std::string_view(*name).ends_with("-symbolic"))
            names.emplace_back(*name);
    return names;
}

class FileIconInfoTest : public LaunchingTest {};

TEST_F(FileIconInfoTest, AFileHasTheIconsThatItHasInAFileManager) {
    for (const auto& [name, bytes] : samples) {
        const std::string path = (files() / name).string();
        writeFile(path, bytes);
        const auto info = readFileIconInfo(path, std::nullopt);
        ASSERT_TRUE(info);
        const auto expected = namesByGio(path);
        ASSERT_FALSE(expected.empty()) << name;
        auto names = info->names;
        names.resize(std::min(names.size(), expected.size()));
        EXPECT_EQ(names, expected) << name;
    }
}

} // namespace
} // namespace kestrel::linux_shell
