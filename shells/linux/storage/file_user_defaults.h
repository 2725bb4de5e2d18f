#pragma once
// The local store in files: one per key, in the program's data directory. A date is stored as text,
// ISO 8601 in UTC to the second, as in 2026-11-21T01:55:06Z.

#include "platform/user_defaults.h"
#include "shells/linux/posix/file_operations.h"
#include "shells/linux/storage/file_store.h"

#include <string>

namespace kestrel::linux_shell {

class FileUserDefaults final : public UserDefaults {
  public:
    /// `directory` is absolute, or empty when there is none: then reads give nothing and writes do
    /// nothing. It is made by the first write. `operations` outlives this object.
    explicit FileUserDefaults(std::string directory,
                              FileOperations& operations = systemFileOperations());

    std::optional<std::string> dataForKey(std::string_view key) override;
    void setData(std::string_view data, std::string_view key) override;
    void setDate(Date date, std::string_view key) override;

  private:
    FileStore store_;
};

} // namespace kestrel::linux_shell
