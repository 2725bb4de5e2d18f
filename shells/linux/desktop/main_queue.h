#pragma once
// The main thread's queue, carried by Qt's event loop.

#include "platform/main_queue.h"

#include <QObject>

namespace kestrel::linux_shell {

/// Made on the main thread. Tasks left when it dies are dropped.
class QtMainQueue final : public MainQueue {
  public:
    void async(std::function<void()> task) override;

  private:
    QObject mainThread_;
};

} // namespace kestrel::linux_shell
