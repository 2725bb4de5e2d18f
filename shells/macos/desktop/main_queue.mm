#include "shells/macos/desktop/main_queue.h"

#import <dispatch/dispatch.h>

#include "shells/macos/foundation/entry_point.h"

#include <utility>

namespace kestrel::macos_shell {

void DispatchMainQueue::async(std::function<void()> task) {
    const auto kept = std::move(task); // a block can copy a constant, but not a parameter
    dispatch_async(dispatch_get_main_queue(), ^{
        atEntryPoint(kept);
    });
}

} // namespace kestrel::macos_shell
