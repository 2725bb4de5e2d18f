#pragma once
// What another program does to the files under test, and a look at what is there.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <system_error>
#include <vector>

#include <sys/stat.h>

namespace kestrel::tests {

inline std::optional<std::string> contentsOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return std::nullopt;
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

/// Rewrites the file where it is, or makes it.
inline void writeInPlace(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

/// Writes a file beside it and renames that onto it, as synchronisers do.
inline void replaceFile(const std::string& path, const std::string& bytes) {
    writeInPlace(path + ".foreign", bytes);
    std::filesystem::rename(path + ".foreign", path);
}

/// The names in a folder, sorted; none when there is no such folder.
inline std::vector<std::string> namesIn(const std::string& path) {
    std::vector<std::string> names;
    std::error_code missing;
    for (const auto& entry : std::filesystem::directory_iterator(path, missing))
        names.push_back(entry.path().filename().string());
    std::ranges::sort(names);
    return names;
}

/// The permission bits; -1 when there is nothing.
inline int modeOf(const std::string& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 ? static_cast<int>(status.st_mode & 07777U) : -1;
}

} // namespace kestrel::tests
