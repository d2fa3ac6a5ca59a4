// What reading a tree of a million nodes costs over a bare DOM parse of the same document, and what a node takes when
// the DOM is gone. `ratio` is the whole time over parse time.
#include "allocation_counter.h"
#include "documents.h"

#include <MCVeltrane_900/ModelFactory.h>
#include <MCVeltrane_900/ScoreModel.h>

#include <benchmark/benchmark.h>

#include <ctime>
#include <memory>
#include <sstream>

using namespace MCVeltrane_900;
using namespace veltrane::bench;

namespace {

/// In processor time, so that other programs on the machine count for neither side.
double Seconds(std::clock_t from) {
    return static_cast<double>(std::clock() - from) / CLOCKS_PER_SEC;
}

std::unique_ptr<ScoreModel> Read(const std::string& document) {
    std::istringstream in(document);
    return std::unique_ptr<ScoreModel>(ModelFactory::MakeModelFromXML(in, {"TreeModel"}, "UTF-8"));
}

void LoadTree(benchmark::State& state) {
    // Both sides find the XML platform started.
    ModelFactory::Initialize("");
    const auto nodes = static_cast<int>(state.range(0));
    const std::string document = TreeDocument(nodes);
    double parse = 0.0;
    double whole = 0.0;
    for (auto _ : state) {
        std::clock_t start = std::clock();
        ParseDomOnly(document);
        parse += Seconds(start);
        start = std::clock();
        const std::unique_ptr<ScoreModel> model = Read(document);
        whole += Seconds(start);
        benchmark::DoNotOptimize(model.get());
    }
    const std::size_t before = LiveBytes();
    const std::unique_ptr<ScoreModel> model = Read(document);
    state.counters["bytes/node"] = static_cast<double>(LiveBytes() - before) / nodes;
    state.counters["document MB"] = static_cast<double>(document.size()) / 1e6;
    const auto rounds = static_cast<double>(state.iterations());
    state.counters["parse ms"] = parse / rounds * 1e3;
    state.counters["whole ms"] = whole / rounds * 1e3;
    state.counters["ratio"] = whole / parse;
}

BENCHMARK(LoadTree)->Arg(99999)->Arg(999999)->Unit(benchmark::kMillisecond);

} // namespace
