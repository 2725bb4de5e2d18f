#include "shells/linux/desktop/main_queue.h"

#include <utility>

namespace kestrel::linux_shell {

void QtMainQueue::async(std::function<void()> task) {
    QMetaObject::invokeMethod(&mainThread_, std::move(task), Qt::QueuedConnection);
}

} // namespace kestrel::linux_shell
