// What building a dictionary costs over a bare DOM parse of the same document, how it grows, and what the built objects
// hold when the DOM is gone. `ratio` is build time over parse time; compare the rows of N and 2N for the growth.
#include "allocation_counter.h"
#include "documents.h"

#include <MCVeltrane_900/ModelFactory.h>

#include <benchmark/benchmark.h>

#include <ctime>

using namespace MCVeltrane_900;
using namespace veltrane::bench;

namespace {

/// In processor time, so that other programs on the machine count for neither side.
double Seconds(std::clock_t from) {
    return static_cast<double>(std::clock() - from) / CLOCKS_PER_SEC;
}

void Build(benchmark::State& state, std::string (*make)(int)) {
    // Both sides find the XML platform started.
    ModelFactory::Initialize("");
    const std::string document = make(static_cast<int>(state.range(0)));
    double parse = 0.0;
    double build = 0.0;
    for (auto _ : state) {
        std::clock_t start = std::clock();
        ParseDomOnly(document);
        parse += Seconds(start);
        start = std::clock();
        {
            Loaded loaded = Load(document);
            build += Seconds(start);
            benchmark::DoNotOptimize(loaded.derived.get());
        }
    }
    const std::size_t before = LiveBytes();
    const Loaded loaded = Load(document);
    state.counters["built MB"] = static_cast<double>(LiveBytes() - before) / 1e6;
    const auto rounds = static_cast<double>(state.iterations());
    state.counters["parse ms"] = parse / rounds * 1e3;
    state.counters["whole ms"] = build / rounds * 1e3;
    state.counters["ratio"] = build / parse;
}

BENCHMARK_CAPTURE(Build, ManyFields, ManyFields)->Arg(10000)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Build, InlineTable, InlineTable)->Arg(100000)->Arg(200000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Build, ManyDerivedFields, ManyDerivedFields)->Arg(10000)->Arg(20000)->Unit(benchmark::kMillisecond);

} // namespace
