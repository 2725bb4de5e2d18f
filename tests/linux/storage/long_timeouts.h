#pragma once
// For tests in which the cloud's folder always answers, however busy the machine is.

#include "shells/linux/storage/cloud_folder.h"

#include <chrono>

namespace kestrel::tests {

inline constexpr linux_shell::CloudTimeouts longTimeouts{.first = std::chrono::minutes(1),
                                                         .later = std::chrono::minutes(1)};

} // namespace kestrel::tests
