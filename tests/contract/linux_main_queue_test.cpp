#include "shells/linux/desktop/main_queue.h"
#include "tests/contract/main_queue_contract.h"
#include "tests/linux/storage/event_loop.h"

namespace kestrel::tests {
namespace {

class QtMainQueueRig {
  public:
    MainQueue& queue() { return queue_; }
    void runAll() { loop_.takeInWhatIsThere(); }

  private:
    EventLoop loop_;
    linux_shell::QtMainQueue queue_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Qt, MainQueueContract, QtMainQueueRig);

} // namespace
} // namespace kestrel::tests
