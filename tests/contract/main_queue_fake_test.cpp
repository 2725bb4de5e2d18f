#include "tests/contract/main_queue_contract.h"
#include "tests/fakes/fake_main_queue.h"

namespace kestrel::tests {
namespace {

class FakeMainQueueRig {
  public:
    MainQueue& queue() { return queue_; }
    void runAll() { queue_.runAll(); }

  private:
    FakeMainQueue queue_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Fake, MainQueueContract, FakeMainQueueRig);

} // namespace
} // namespace kestrel::tests
