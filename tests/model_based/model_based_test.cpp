// Random histories of everything that users, other machines and the system do to the list, on the
// program's store and views and on a reference model. A history that fails is shrunk before it is
// printed.
//
// KESTREL_RANDOM_SEED and KESTREL_RANDOM_OPERATIONS set what to begin with and how many to do.

#include "tests/model_based/harness/model_harness.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>

namespace kestrel::tests {

namespace {

using History = std::vector<Operation>;

constexpr std::size_t historyLength = 500;
constexpr std::uint64_t defaultSeed = 20'231'114;

std::uint64_t setting(const char* name, std::uint64_t otherwise) {
    const char* const text = std::getenv(name);
    return text == nullptr ? otherwise : std::strtoull(text, nullptr, 10);
}

History randomHistory(std::mt19937_64& random) {
    static const std::vector<std::uint32_t> actions = [] {
        std::vector<std::uint32_t> weighted;
        for (std::size_t action = 0; action < ModelHarness::actionCount(); ++action)
            weighted.insert(weighted.end(),
                            static_cast<std::size_t>(ModelHarness::weightOf(action)),
                            static_cast<std::uint32_t>(action));
        return weighted;
    }();
    const auto number = [&random] { return static_cast<std::uint32_t>(random()); };
    History history(historyLength);
    for (Operation& operation : history)
        operation = {actions[number() % actions.size()], number(), number(), number()};
    return history;
}

/// How many operations it takes until something differs; nothing when nothing does.
std::optional<std::size_t> lengthUntilDifference(const History& history) {
    ModelHarness harness;
    for (std::size_t i = 0; i < history.size(); ++i)
        if (harness.apply(history[i]))
            return i + 1;
    return std::nullopt;
}

History without(const History& history, std::size_t begin, std::size_t count) {
    History shorter(history.begin(), history.begin() + static_cast<std::ptrdiff_t>(begin));
    const std::size_t end = std::min(begin + count, history.size());
    shorter.insert(shorter.end(), history.begin() + static_cast<std::ptrdiff_t>(end),
                   history.end());
    return shorter;
}

/// Leaves out ever smaller parts while something still differs.
History shrunk(History history) {
    for (std::size_t part = history.size() / 2; part > 0;) {
        bool shorter = false;
        for (std::size_t begin = 0; begin < history.size();) {
            History candidate = without(history, begin, part);
            const auto length = lengthUntilDifference(candidate);
            if (length) {
                candidate.resize(*length);
                history = std::move(candidate);
                shorter = true;
            } else {
                begin += part;
            }
        }
        if (part > 1 || !shorter)
            part /= 2;
    }
    return history;
}

std::string report(const History& history) {
    ModelHarness harness;
    harness.recordsSteps = true;
    std::string difference = "nothing differs when it is done again";
    for (const Operation& operation : history)
        if (auto found = harness.apply(operation))
            difference = std::move(*found);
    return difference + "\nafter\n" + harness.steps;
}

TEST(ModelBasedTest, TheStoreAndTheViewsDoWhatTheReferenceModelDoes) {
    const std::uint64_t seed = setting("KESTREL_RANDOM_SEED", defaultSeed);
    const std::uint64_t wanted = setting("KESTREL_RANDOM_OPERATIONS", KESTREL_RANDOM_OPERATIONS);
    std::mt19937_64 random(seed);
    std::uint64_t done = 0;
    while (done < wanted) {
        const History history = randomHistory(random);
        const auto length = lengthUntilDifference(history);
        if (length) {
            const History begin(history.begin(),
                                history.begin() + static_cast<std::ptrdiff_t>(*length));
            FAIL() << "seed " << seed << ", after " << done + *length << " operations\n"
                   << report(shrunk(begin));
        }
        done += history.size();
    }
    ASSERT_GT(done, 0U);
    RecordProperty("operations", std::to_string(done));
    std::cout << "seed " << seed << ", " << done << " operations\n";
}

} // namespace

} // namespace kestrel::tests
