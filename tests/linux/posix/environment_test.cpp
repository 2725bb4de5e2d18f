#include "shells/linux/posix/environment.h"

#include "tests/linux/posix/scoped_variable.h"

#include <gtest/gtest.h>

namespace kestrel::tests {
namespace {

using linux_shell::environmentVariable;

TEST(EnvironmentTest, AVariableHasItsValueAndIsEmptyWhenNotSet) {
    for (const char* const value : {"", "text", "/a b:c=d"}) {
        const ScopedVariable variable("KESTREL_TEST", value);
        EXPECT_EQ(environmentVariable("KESTREL_TEST"), value);
    }
    const ScopedVariable variable("KESTREL_TEST", nullptr);
    EXPECT_EQ(environmentVariable("KESTREL_TEST"), "");
}

} // namespace
} // namespace kestrel::tests
