#include "shells/macos/desktop/main_queue.h"

#import <dispatch/dispatch.h>

namespace kestrel::macos_shell {

void DispatchMainQueue::async(std::function<void()> task) {
    dispatch_async(dispatch_get_main_queue(), ^{
        task(); // the block's own copy
    });
}

} // namespace kestrel::macos_shell
