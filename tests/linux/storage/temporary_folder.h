#pragma once
// A folder of a test's own, removed with everything in it when the test ends.

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>

namespace kestrel::tests {

class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "kestrel-test-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr)
            throw std::runtime_error("no temporary folder: " + pattern);
        path_ = pattern;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    /// Absolute, without a slash at the end.
    [[nodiscard]] const std::string& path() const { return path_; }

    [[nodiscard]] std::string operator/(const std::string& name) const {
        return path_ + "/" + name;
    }

  private:
    std::string path_;
};

} // namespace kestrel::tests
