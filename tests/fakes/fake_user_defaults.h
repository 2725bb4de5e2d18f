#pragma once
// UserDefaults in memory. Every call is logged as "defaults.<function> <key>"; what is stored can
// be preset and inspected through the public fields, which log nothing.

#include "platform/user_defaults.h"
#include "tests/fakes/call_log.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace kestrel::tests {

class FakeUserDefaults final : public UserDefaults {
  public:
    explicit FakeUserDefaults(CallLog& log) : log_(log) {}

    /// What is stored. A key is in one of the two at most.
    std::map<std::string, std::string, std::less<>> data;
    std::map<std::string, Date, std::less<>> dates;

    /// The next setData or setDate is logged but stores nothing; then writes succeed again.
    bool failNextWrite = false;

    std::optional<std::string> dataForKey(std::string_view key) override {
        log_.add("defaults.dataForKey " + std::string(key));
        const auto found = data.find(key);
        return found == data.end() ? std::nullopt : std::optional(found->second);
    }

    void setData(std::string_view bytes, std::string_view key) override {
        log_.add("defaults.setData " + std::string(key));
        if (std::exchange(failNextWrite, false))
            return;
        dates.erase(std::string(key));
        data.insert_or_assign(std::string(key), std::string(bytes));
    }

    void setDate(Date date, std::string_view key) override {
        log_.add("defaults.setDate " + std::string(key));
        if (std::exchange(failNextWrite, false))
            return;
        data.erase(std::string(key));
        dates.insert_or_assign(std::string(key), date);
    }

  private:
    CallLog& log_;
};

} // namespace kestrel::tests
