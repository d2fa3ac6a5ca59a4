// What loading costs beside a bare DOM parse of the same document by the XML parser. For small models `ratio` is the
// whole time, from the text to the model, over that of the parse; with the XML platform started ahead, and with both
// sides starting and ending it. For arrays of quoted categories it is the time of the texts that hold references over
// that of the same texts without any; a look at the rows shows that it stays the same for documents of any size.
#include "documents.h"

#include <MCVeltrane_900/ModelFactory.h>
#include <MCVeltrane_900/ScoreModel.h>

#include <benchmark/benchmark.h>
#include <xercesc/util/PlatformUtils.hpp>

#include <ctime>
#include <memory>
#include <sstream>

using namespace MCVeltrane_900;
using namespace veltrane::bench;

namespace {

/// In processor time: a millisecond on the clock is easily another program's.
template <typename Action>
double SecondsOf(Action action) {
    const std::clock_t start = std::clock();
    action();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

void LoadModel(const std::string& document) {
    std::istringstream in(document);
    const std::unique_ptr<ScoreModel> model(
        ModelFactory::MakeModelFromXML(in, {"TreeModel", "RegressionModel"}, "UTF-8"));
    benchmark::DoNotOptimize(model.get());
}

/// The time of a bare parse and of the whole road in turns, so that what else the machine does meets both.
template <typename Bare, typename Whole>
void Compare(benchmark::State& state, const std::string& document, Bare bare, Whole whole) {
    double bareTime = 0.0;
    double wholeTime = 0.0;
    for (auto _ : state) {
        bareTime += SecondsOf(bare);
        wholeTime += SecondsOf(whole);
    }
    const auto rounds = static_cast<double>(state.iterations());
    state.counters["KB"] = static_cast<double>(document.size()) / 1e3;
    state.counters["bare ms"] = bareTime / rounds * 1e3;
    state.counters["whole ms"] = wholeTime / rounds * 1e3;
    state.counters["ratio"] = wholeTime / bareTime;
}

void Initialized(benchmark::State& state, std::string (*make)(int)) {
    ModelFactory::Initialize("");
    const std::string document = make(static_cast<int>(state.range(0)));
    Compare(
        state, document, [&] { ParseDomOnly(document); }, [&] { LoadModel(document); });
}

void NotInitialized(benchmark::State& state, std::string (*make)(int)) {
    if (ModelFactory::fInitialized) {
        ModelFactory::Terminate();
        ModelFactory::fInitialized = false;
    }
    const std::string document = make(static_cast<int>(state.range(0)));
    const auto bare = [&] {
        xercesc::XMLPlatformUtils::Initialize();
        ParseDomOnly(document);
        xercesc::XMLPlatformUtils::Terminate();
    };
    Compare(state, document, bare, [&] { LoadModel(document); });
}

/// The start and the end of the XML platform alone.
void PlatformStart(benchmark::State& state) {
    if (ModelFactory::fInitialized) {
        ModelFactory::Terminate();
        ModelFactory::fInitialized = false;
    }
    for (auto _ : state) {
        xercesc::XMLPlatformUtils::Initialize();
        xercesc::XMLPlatformUtils::Terminate();
    }
}

void QuotedCategories(benchmark::State& state) {
    ModelFactory::Initialize("");
    const auto count = static_cast<int>(state.range(0));
    const std::string plain = CategoryArrays(count, "'");
    const std::string quoted = CategoryArrays(count, "&quot;");
    Compare(
        state, quoted, [&] { Load(plain); }, [&] { Load(quoted); });
}

constexpr auto kMicroseconds = benchmark::kMicrosecond;

BENCHMARK(PlatformStart)->Unit(kMicroseconds);
BENCHMARK_CAPTURE(NotInitialized, Tree, TreeDocument)->Arg(15)->Arg(131)->Unit(kMicroseconds);
BENCHMARK_CAPTURE(NotInitialized, Regression, RegressionDocument)->Arg(15)->Arg(130)->Unit(kMicroseconds);
BENCHMARK_CAPTURE(Initialized, Tree, TreeDocument)->Arg(15)->Arg(51)->Arg(131)->Unit(kMicroseconds);
BENCHMARK_CAPTURE(Initialized, Regression, RegressionDocument)->Arg(15)->Arg(50)->Arg(130)->Unit(kMicroseconds);
BENCHMARK(QuotedCategories)->RangeMultiplier(4)->Range(1000, 64000)->Unit(benchmark::kMillisecond);

} // namespace
