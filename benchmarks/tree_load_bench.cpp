// What reading a tree of a million nodes costs over a bare DOM parse of the same document, and what a node takes when
// the DOM is gone. `ratio` is the whole time over parse time.
#include "allocation_counter.h"
#include "documents.h"

#include <MCVeltrane_900/ModelFactory.h>
#include <MCVeltrane_900/ScoreModel.h>

#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>
#include <sstream>

using namespace MCVeltrane_900;
using namespace veltrane::bench;

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kFields = 20;

double Seconds(Clock::time_point from) {
    return std::chrono::duration<double>(Clock::now() - from).count();
}

/// Appends the nodes of a balanced binary tree, as tools write them.
/// @param nodes how many are to be written, an odd number
void AppendNode(std::string& document, int nodes, int& next, const std::string& predicate) {
    const int id = next++;
    document += "<Node id=\"" + std::to_string(id) + "\" score=\"" + std::to_string(id % 1000) + ".5\" recordCount=\"" +
                std::to_string(nodes) + "\">" + predicate;
    if (nodes > 1) {
        const std::string field = "<SimplePredicate field=\"x" + std::to_string(id % kFields) + "\" operator=\"";
        const std::string value = "\" value=\"0." + std::to_string(id * 7919L % 1000000) + "\"/>";
        int left = (nodes - 1) / 2;
        left -= left % 2 == 0 ? 1 : 0;
        AppendNode(document, left, next, field + "lessOrEqual" + value);
        AppendNode(document, nodes - 1 - left, next, field + "greaterThan" + value);
    }
    document += "</Node>\n";
}

std::string TreeDocument(int nodes) {
    std::string document =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<PMML version=\"4.3\"><Header/><DataDictionary>\n"
        "<DataField name=\"y\" optype=\"continuous\" dataType=\"double\"/>\n";
    std::string schema = "<MiningSchema><MiningField name=\"y\" usageType=\"target\"/>\n";
    for (int i = 0; i < kFields; ++i) {
        const std::string name = "\"x" + std::to_string(i) + "\"";
        document += "<DataField name=" + name + " optype=\"continuous\" dataType=\"double\"/>\n";
        schema += "<MiningField name=" + name + "/>\n";
    }
    document += "</DataDictionary><TreeModel functionName=\"regression\">" + schema + "</MiningSchema>\n";
    int next = 1;
    AppendNode(document, nodes, next, "<True/>");
    return document + "</TreeModel></PMML>\n";
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
        auto start = Clock::now();
        ParseDomOnly(document);
        parse += Seconds(start);
        start = Clock::now();
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
