#include "shells/linux/storage/file_user_defaults.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <utility>

namespace kestrel::linux_shell {

namespace {

std::string isoText(Date date) {
    using namespace std::chrono;
    const auto seconds = floor<std::chrono::seconds>(date);
    const auto day = floor<days>(seconds);
    const year_month_day calendar(day);
    const hh_mm_ss time(seconds - day);
    std::array<char, 40> text{};
    const int length = std::snprintf(
        text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ",
        static_cast<int>(calendar.year()), static_cast<unsigned>(calendar.month()),
        static_cast<unsigned>(calendar.day()), static_cast<int>(time.hours().count()),
        static_cast<int>(time.minutes().count()), static_cast<int>(time.seconds().count()));
    return {text.data(), static_cast<std::size_t>(length)};
}

} // namespace

FileUserDefaults::FileUserDefaults(std::string directory, FileOperations& operations)
    : store_(operations, std::move(directory), MissingDirectory::create) {}

std::optional<std::string> FileUserDefaults::dataForKey(std::string_view key) {
    return store_.read(key);
}

// A write that fails has left the stored value as it was, which is all that is asked of it.
void FileUserDefaults::setData(std::string_view data, std::string_view key) {
    static_cast<void>(store_.write(key, data));
}

void FileUserDefaults::setDate(Date date, std::string_view key) {
    static_cast<void>(store_.write(key, isoText(date)));
}

} // namespace kestrel::linux_shell
