#pragma once
// UserDefaults in the program's domain of the user's defaults database.

#import <Foundation/Foundation.h>

#include "platform/user_defaults.h"

namespace kestrel::macos_shell {

class StandardUserDefaults final : public UserDefaults {
  public:
    /// Takes the standard user defaults and keeps them.
    StandardUserDefaults();

    std::optional<std::string> dataForKey(std::string_view key) override;
    void setData(std::string_view data, std::string_view key) override;
    void setDate(Date date, std::string_view key) override;

  private:
    NSUserDefaults* defaults_;
};

} // namespace kestrel::macos_shell
