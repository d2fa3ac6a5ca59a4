// Time and allocations of a case through Score, with real documents: the host's record is laid out once, its rows are
// those that came with the document, and the result is used again.
#include "allocation_counter.h"
#include "documents.h"

#include <MCScore/MCStatus.h>
#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/ModelFactory.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreModel.h>
#include <MCVeltrane_900/ScoreResult.h>
#include <MCVeltrane_900/StringValue.h>

#include <benchmark/benchmark.h>

#include <filesystem>
#include <sstream>
#include <vector>

using namespace MCVeltrane_900;
using namespace veltrane::bench;

namespace {

using Records = std::vector<std::unique_ptr<CaseRecord>>;
using Row = std::vector<std::string>;

Row Cells(std::string line) {
    while (!line.empty() && (line.back() == '\r' || line.back() == '\n')) {
        line.pop_back();
    }
    Row cells;
    std::istringstream in(line);
    std::string cell;
    while (std::getline(in, cell, ',')) {
        cells.push_back(cell);
    }
    return cells;
}

/// A record for each row, with the fields of the model in the columns of the file.
Records ReadRecords(const std::string& path, const ScoreModel& model) {
    std::istringstream in(ReadFile(path));
    std::string line;
    std::getline(in, line);
    const Row names = Cells(line);
    Records records;
    while (std::getline(in, line)) {
        const Row cells = Cells(line);
        auto record = std::make_unique<CaseRecord>(static_cast<int>(names.size()));
        for (std::size_t i = 0; i < names.size() && i < cells.size(); ++i) {
            const ScoreDictVar* var = model.GetDictionary()->GetVar(names[i]);
            if (var != nullptr) {
                record->Add(names[i], var->ToMyValue(cells[i]));
            }
        }
        records.push_back(std::move(record));
    }
    return records;
}

void Score(benchmark::State& state, const std::string& name) {
    const std::string base = VELTRANE_CASES "/models/" + name;
    if (!std::filesystem::exists(base + ".pmml")) {
        state.SkipWithError("the real documents are not here");
        return;
    }
    std::istringstream in(ReadFile(base + ".pmml"));
    const std::unique_ptr<ScoreModel> model(
        ModelFactory::MakeModelFromXML(in, {"RegressionModel", "TreeModel"}, "UTF-8"));
    const std::unique_ptr<ScoreResult> result(model->CreateResult());
    const Records records = ReadRecords(base + ".csv", *model);
    for (const auto& record : records) {
        model->Score(record.get(), result.get());
    }
    const std::size_t before = Allocations();
    std::size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(model->Score(records[next].get(), result.get()));
        next = next + 1 < records.size() ? next + 1 : 0;
    }
    const auto cases = static_cast<double>(state.iterations());
    state.counters["cases/s"] = benchmark::Counter(cases, benchmark::Counter::kIsRate);
    state.counters["allocations/case"] = static_cast<double>(Allocations() - before) / cases;
}

BENCHMARK_CAPTURE(Score, rattle_regression_ozone, std::string("rattle-regression-ozone"));
BENCHMARK_CAPTURE(Score, rattle_regression_iris, std::string("rattle-regression-iris"));
BENCHMARK_CAPTURE(Score, sklearn_linear_housing, std::string("sklearn-linear-housing"));
BENCHMARK_CAPTURE(Score, rattle_tree_iris, std::string("rattle-tree-iris"));
BENCHMARK_CAPTURE(Score, rattle_tree_audit, std::string("rattle-tree-audit"));
BENCHMARK_CAPTURE(Score, knime_tree_iris, std::string("knime-tree-iris"));

} // namespace
