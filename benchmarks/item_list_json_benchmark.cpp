// How long the list of 100,000 items takes to read and to write, and the two ratios that matter:
// reading against the parser alone (at most 2) and writing against reading (at most 1).

#include "model/item_list_json.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <map>
#include <simdjson.h>
#include <string>
#include <vector>

namespace kestrel {

namespace {

constexpr std::size_t itemCount = 100'000;

/// Texts of the lengths that users have: every kind of item, some letters beyond ASCII.
const std::vector<LauncherItem>& items() {
    static const std::vector<LauncherItem> list = [] {
        std::vector<LauncherItem> made;
        made.reserve(itemCount);
        for (std::size_t i = 0; i < itemCount; ++i) {
            const std::string number = std::to_string(i);
            LauncherItem item{.title = (i % 10 == 0 ? "Caf\u00e9 " : "Launcher ") + number,
                              .type = allItemTypes[i % allItemTypes.size()]};
            if (item.type == ItemType::inlineCommand)
                item.command = "cd ~/projects/number-" + number + " && make \"all\" | less";
            else
                item.path = "/usr/local/share/applications/launcher-" + number;
            made.push_back(std::move(item));
        }
        return made;
    }();
    return list;
}

const std::string& json() {
    static const std::string text = encodeItems(items()).value();
    return text;
}

void setBytes(benchmark::State& state) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(json().size()));
}

/// The parser alone, new for each text as in decodeItems.
void bareParse(benchmark::State& state) {
    for (auto _ : state) {
        simdjson::dom::parser parser;
        simdjson::dom::element root;
        if (parser.parse(json().data(), json().size()).get(root) != simdjson::SUCCESS)
            state.SkipWithError("the text did not parse");
        benchmark::DoNotOptimize(root);
    }
    setBytes(state);
}

/// The parser alone with its buffers allocated and touched once, before the clock starts.
void bareParseWithWarmBuffers(benchmark::State& state) {
    simdjson::dom::parser parser;
    for (auto _ : state) {
        simdjson::dom::element root;
        if (parser.parse(json().data(), json().size()).get(root) != simdjson::SUCCESS)
            state.SkipWithError("the text did not parse");
        benchmark::DoNotOptimize(root);
    }
    setBytes(state);
}

void decode(benchmark::State& state) {
    for (auto _ : state) {
        const auto decoded = decodeItems(json());
        if (!decoded || decoded->size() != itemCount)
            state.SkipWithError("the list did not decode");
        benchmark::DoNotOptimize(decoded);
    }
    setBytes(state);
}

void encode(benchmark::State& state) {
    for (auto _ : state) {
        const auto encoded = encodeItems(items());
        if (!encoded || encoded->size() != json().size())
            state.SkipWithError("the list did not encode");
        benchmark::DoNotOptimize(encoded);
    }
    setBytes(state);
}

/// Prints the usual table and keeps the shortest processor time of each benchmark's repetitions.
class RatioReporter : public benchmark::ConsoleReporter {
  public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration || run.error_occurred)
                continue;
            const double time = run.GetAdjustedCPUTime();
            const auto [known, isNew] = shortest_.try_emplace(run.run_name.function_name, time);
            if (!isNew && time < known->second)
                known->second = time;
        }
    }

    /// Nothing is printed for a pair of which one was filtered away or failed.
    void printRatio(const std::string& name, const std::string& base) const {
        const auto numerator = shortest_.find(name);
        const auto denominator = shortest_.find(base);
        if (numerator != shortest_.end() && denominator != shortest_.end())
            std::printf("%s / %s: %.2f\n", name.c_str(), base.c_str(),
                        numerator->second / denominator->second);
    }

  private:
    std::map<std::string, double> shortest_;
};

} // namespace

} // namespace kestrel

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    // Made here, so that no benchmark's first run pays for it.
    std::printf("%zu items, %zu bytes\n", kestrel::items().size(), kestrel::json().size());
    const auto add = [](const char* name, void (*function)(benchmark::State&)) {
        benchmark::RegisterBenchmark(name, function)
            ->Unit(benchmark::kMillisecond)
            ->Repetitions(7)
            ->MinTime(0.3);
    };
    add("bareParse", kestrel::bareParse);
    add("bareParseWithWarmBuffers", kestrel::bareParseWithWarmBuffers);
    add("decode", kestrel::decode);
    add("encode", kestrel::encode);
    kestrel::RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRatio("decode", "bareParse");
    reporter.printRatio("decode", "bareParseWithWarmBuffers");
    reporter.printRatio("encode", "decode");
}
