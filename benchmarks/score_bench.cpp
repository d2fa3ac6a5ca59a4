// Time and allocations of a case through Score, with real documents: the host's record is laid out once, its rows are
// those that came with the document, and the result is used again. For some there is a hand-written function beside it,
// from the numbers of a case to a struct with the same results.
#include "allocation_counter.h"
#include "documents.h"
#include "turns.h"

#include <MCScore/MCStatus.h>
#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/ModelFactory.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreModel.h>
#include <MCVeltrane_900/ScoreResult.h>
#include <MCVeltrane_900/StringValue.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <iterator>
#include <sstream>
#include <vector>

using namespace MCVeltrane_900;
using namespace veltrane::bench;

namespace {

using Records = std::vector<std::unique_ptr<CaseRecord>>;
using Row = std::vector<std::string>;

const std::string kModels = VELTRANE_CASES "/models/";

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

bool IsHere(benchmark::State& state, const std::string& name) {
    const bool isHere = std::filesystem::exists(kModels + name + ".pmml");
    if (!isHere) {
        state.SkipWithError("the real documents are not here");
    }
    return isHere;
}

std::unique_ptr<ScoreModel> ReadModel(const std::string& name) {
    std::istringstream in(ReadFile(kModels + name + ".pmml"));
    return std::unique_ptr<ScoreModel>(ModelFactory::MakeModelFromXML(in, {"RegressionModel", "TreeModel"}, "UTF-8"));
}

void Score(benchmark::State& state, const std::string& name) {
    if (!IsHere(state, name)) {
        return;
    }
    const std::unique_ptr<ScoreModel> model = ReadModel(name);
    const std::unique_ptr<ScoreResult> result(model->CreateResult());
    const Records records = ReadRecords(kModels + name + ".csv", *model);
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

/// The numbers of each case, by the names of its fields.
std::vector<std::vector<double>> NumbersOf(const Records& records, const std::vector<std::string>& fields) {
    std::vector<std::vector<double>> numbers;
    for (const auto& record : records) {
        numbers.emplace_back();
        for (const std::string& field : fields) {
            const ScoreValue* const value = record->Get(field);
            numbers.back().push_back(value == nullptr ? std::nan("") : value->GetDouble());
        }
    }
    return numbers;
}

struct ScoredIris {
    const char* species = nullptr;
    double shares[3] = {};
    const char* node = nullptr;
};

void ScoreIris(const double* lengthAndWidth, ScoredIris& scored) {
    static constexpr double kShares[3][3] = {{1, 0, 0}, {0, 49.0 / 54, 5.0 / 54}, {0, 1.0 / 46, 45.0 / 46}};
    static const char* const kSpecies[] = {"setosa", "versicolor", "virginica"};
    static const char* const kNodes[] = {"2", "6", "7"};
    const double length = lengthAndWidth[0];
    const double width = lengthAndWidth[1];
    const bool isMissing = std::isnan(length) || std::isnan(width);
    const int leaf = isMissing || length < 2.45 ? 0 : width < 1.75 ? 1 : 2;
    scored.species = isMissing ? nullptr : kSpecies[leaf];
    std::copy(std::begin(kShares[leaf]), std::end(kShares[leaf]), scored.shares);
    scored.node = kNodes[leaf];
}

void ScoreOzone(const double* numbers, double& scored) {
    scored = -7.72798221395535 + 0.380440828716888 * numbers[0] - 0.00118622776964311 * numbers[1] -
             0.00582148461403967 * numbers[2];
}

/// @param byHand from the numbers of a case to its results
template <typename Scored>
void ScoreBesideHand(benchmark::State& state, const std::string& name, const std::vector<std::string>& fields,
                     void (*byHand)(const double*, Scored&)) {
    if (!IsHere(state, name)) {
        return;
    }
    const std::unique_ptr<ScoreModel> model = ReadModel(name);
    const std::unique_ptr<ScoreResult> result(model->CreateResult());
    const Records records = ReadRecords(kModels + name + ".csv", *model);
    const std::vector<std::vector<double>> numbers = NumbersOf(records, fields);
    Scored scored{};
    CompareCases(
        state, records.size(),
        [&](std::size_t at) { benchmark::DoNotOptimize(model->Score(records[at].get(), result.get())); },
        [&](std::size_t at) {
            byHand(numbers[at].data(), scored);
            benchmark::DoNotOptimize(scored);
        });
}

void TreeOfIrisBesideHand(benchmark::State& state) {
    ScoreBesideHand(state, "rattle-tree-iris", {"Petal.Length", "Petal.Width"}, ScoreIris);
}

void RegressionOfOzoneBesideHand(benchmark::State& state) {
    ScoreBesideHand(state, "rattle-regression-ozone", {"temp", "ibh", "ibt"}, ScoreOzone);
}

BENCHMARK(TreeOfIrisBesideHand);
BENCHMARK(RegressionOfOzoneBesideHand);
BENCHMARK_CAPTURE(Score, rattle_regression_ozone, std::string("rattle-regression-ozone"));
BENCHMARK_CAPTURE(Score, rattle_regression_iris, std::string("rattle-regression-iris"));
BENCHMARK_CAPTURE(Score, sklearn_linear_housing, std::string("sklearn-linear-housing"));
BENCHMARK_CAPTURE(Score, rattle_tree_iris, std::string("rattle-tree-iris"));
BENCHMARK_CAPTURE(Score, rattle_tree_audit, std::string("rattle-tree-audit"));
BENCHMARK_CAPTURE(Score, knime_tree_iris, std::string("knime-tree-iris"));

} // namespace
