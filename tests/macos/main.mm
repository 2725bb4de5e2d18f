// The main function of the shell's tests on a Mac.
#import <AppKit/AppKit.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

extern "C" void* objc_autoreleasePoolPush(void);
extern "C" void objc_autoreleasePoolPop(void* pool);

namespace {

/// A pool for each test: what a test leaves in it must not live on into the next one.
class PoolForEachTest : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override { pool_ = objc_autoreleasePoolPush(); }
    void OnTestEnd(const testing::TestInfo&) override { objc_autoreleasePoolPop(pool_); }

    void* pool_ = nullptr;
};

void uncaught(NSException* exception) {
    std::printf("uncaught %s: %s\n", exception.name.UTF8String, exception.reason.UTF8String);
    std::fflush(stdout);
    std::_Exit(70);
}

} // namespace

int main(int argc, char** argv) {
    @autoreleasepool {
        testing::InitGoogleTest(&argc, argv);
        NSSetUncaughtExceptionHandler(uncaught);
        testing::UnitTest::GetInstance()->listeners().Append(new PoolForEachTest);
        // A program without a bundle may have no windows that take the keys unless it says so.
        // Launching is finished by the test that is about it.
        [NSApplication.sharedApplication
            setActivationPolicy:NSApplicationActivationPolicyAccessory];
        return RUN_ALL_TESTS();
    }
}
