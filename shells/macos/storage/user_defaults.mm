#include "shells/macos/storage/user_defaults.h"

#include "shells/macos/foundation/text.h"

namespace kestrel::macos_shell {

StandardUserDefaults::StandardUserDefaults() : defaults_(NSUserDefaults.standardUserDefaults) {}

std::optional<std::string> StandardUserDefaults::dataForKey(std::string_view key) {
    return toBytes([defaults_ dataForKey:toNSString(key)]);
}

void StandardUserDefaults::setData(std::string_view data, std::string_view key) {
    [defaults_ setObject:toNSData(data) forKey:toNSString(key)];
}

void StandardUserDefaults::setDate(Date date, std::string_view key) {
    const std::chrono::duration<double> sinceEpoch = date.time_since_epoch();
    [defaults_ setObject:[NSDate dateWithTimeIntervalSince1970:sinceEpoch.count()]
                  forKey:toNSString(key)];
}

} // namespace kestrel::macos_shell
