// Ensembles of trees: real documents in columns and case by case, and generated forests beside a loop by hand over the
// same nodes. The rows of real documents are mixed, each cell from another row, so that no processor learns them.
#include "../column_blocks.h"
#include "generated_forest.h"

#include <MCScore/MCStatus.h>
#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/ModelFactory.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreModel.h>
#include <MCVeltrane_900/ScoreResult.h>
#include <MCVeltrane_900/StringValue.h>
#include <veltrane/document.h>

#include <benchmark/benchmark.h>

#include <random>
#include <string>
#include <vector>

using namespace MCVeltrane_900;
using namespace veltrane::bench;
using veltrane::ColumnScorer;

namespace {

using Records = std::vector<std::unique_ptr<CaseRecord>>;
using Rows = std::vector<std::vector<std::string>>;

std::shared_ptr<const ColumnScorer> Borrow(const veltrane::Document& document) {
    return {&document.Scorer(), [](const ColumnScorer*) {}};
}

std::unique_ptr<ScoreModel> ReadModel(const std::string& document) {
    std::istringstream in(document);
    return std::unique_ptr<ScoreModel>(ModelFactory::MakeModelFromXML(in, {"MiningModel"}, "UTF-8"));
}

/// As many rows as a block has, the first one with the names.
Rows Mixed(const Rows& rows) {
    std::mt19937 random(1);
    Rows mixed{rows.front()};
    for (std::size_t row = 0; row < kRows; ++row) {
        mixed.emplace_back();
        for (std::size_t column = 0; column < rows.front().size(); ++column) {
            mixed.back().push_back(rows[1 + random() % (rows.size() - 1)][column]);
        }
    }
    return mixed;
}

bool IsHere(benchmark::State& state, const std::string& path) {
    const bool isHere = std::filesystem::exists(path + ".pmml");
    if (!isHere) {
        state.SkipWithError("the real documents are not here");
    }
    return isHere;
}

void InColumns(benchmark::State& state, const std::string& name) {
    const std::string path = VELTRANE_CASES "/models/" + name;
    if (!IsHere(state, path)) {
        return;
    }
    const veltrane::Document document = veltrane::Document::OfFile(path + ".pmml");
    Columns columns(Borrow(document));
    std::vector<std::string_view> dictionary;
    const Rows rows = Mixed(ReadRows(path + ".csv"));
    Fill(columns, rows, dictionary);
    columns.Score();
    const std::size_t before = Allocations();
    double seconds = 0.0;
    for (auto _ : state) {
        seconds += SecondsOf(1, [&columns](int) { columns.Score(); });
    }
    const double cases = static_cast<double>(state.iterations()) * kRows;
    state.counters["cases/s"] = cases / seconds;
    state.counters["allocations/case"] = static_cast<double>(Allocations() - before) / cases;
}

void CaseByCase(benchmark::State& state, const std::string& name) {
    const std::string path = VELTRANE_CASES "/models/" + name;
    if (!IsHere(state, path)) {
        return;
    }
    const std::unique_ptr<ScoreModel> model = ReadModel(ReadFile(path + ".pmml"));
    const Rows rows = Mixed(ReadRows(path + ".csv"));
    Records records;
    for (std::size_t row = 1; row < rows.size(); ++row) {
        auto record = std::make_unique<CaseRecord>(static_cast<int>(rows.front().size()));
        for (std::size_t column = 0; column < rows.front().size(); ++column) {
            const ScoreDictVar* var = model->GetDictionary()->GetVar(rows.front()[column]);
            if (var != nullptr) {
                record->Add(rows.front()[column], var->ToMyValue(rows[row][column]));
            }
        }
        records.push_back(std::move(record));
    }
    const std::unique_ptr<ScoreResult> result(model->CreateResult());
    const auto score = [&] {
        for (const auto& record : records) {
            benchmark::DoNotOptimize(model->Score(record.get(), result.get()));
        }
    };
    score();
    const std::size_t before = Allocations();
    double seconds = 0.0;
    for (auto _ : state) {
        seconds += SecondsOf(1, [&score](int) { score(); });
    }
    const double cases = static_cast<double>(state.iterations()) * static_cast<double>(records.size());
    state.counters["cases/s"] = cases / seconds;
    state.counters["allocations/case"] = static_cast<double>(Allocations() - before) / cases;
}

/// Arguments: trees and their depth. Times of a case and tree in nanoseconds; `ratio` and `case ratio` are those of
/// columns and of single cases over that of the loop.
void Generated(benchmark::State& state) {
    const GeneratedForest forest(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    const std::size_t before = LiveBytes();
    const std::unique_ptr<ScoreModel> model = ReadModel(forest.Document());
    const std::size_t bytes = LiveBytes() - before;
    const veltrane::Document document = veltrane::Document::OfBytes(forest.Document());
    Columns columns(Borrow(document));
    std::mt19937 random(1);
    std::vector<double> cases(kRows * GeneratedForest::kFields);
    Records records;
    for (std::size_t row = 0; row < kRows; ++row) {
        records.push_back(std::make_unique<CaseRecord>(static_cast<int>(GeneratedForest::kFields)));
        for (std::size_t field = 0; field < GeneratedForest::kFields; ++field) {
            const double number = std::uniform_real_distribution<>()(random);
            std::string name(1, 'x');
            name += std::to_string(field);
            const std::size_t place = columns.InputNamed(name);
            cases[row * GeneratedForest::kFields + field] = number;
            columns.numbers[place][row] = number;
            columns.inputs[place].numbers = columns.numbers[place].data();
            records.back()->Add(name, new NumericValue(number));
        }
    }
    const std::unique_ptr<ScoreResult> result(model->CreateResult());
    std::vector<double> sums(kRows);
    const auto byHand = [&](int) {
        for (std::size_t row = 0; row < kRows; ++row) {
            sums[row] = forest.ByHand(cases.data() + row * GeneratedForest::kFields);
        }
        benchmark::DoNotOptimize(sums.data());
    };
    const auto oneByOne = [&](int) {
        for (const auto& record : records) {
            benchmark::DoNotOptimize(model->Score(record.get(), result.get()));
        }
    };
    columns.Score();
    byHand(0);
    oneByOne(0);
    if (columns.results[0] != sums) {
        state.SkipWithError("the sums by hand are others");
        return;
    }
    double own = 0.0;
    double ofCases = 0.0;
    double others = 0.0;
    for (auto _ : state) {
        own += SecondsOf(1, [&columns](int) { columns.Score(); });
        ofCases += SecondsOf(1, oneByOne);
        others += SecondsOf(1, byHand);
    }
    const double all = static_cast<double>(state.iterations() * state.range(0)) * kRows / 1e9;
    state.counters["nodes"] = static_cast<double>(forest.Nodes());
    state.counters["bytes/node"] = static_cast<double>(bytes) / static_cast<double>(forest.Nodes());
    state.counters["columns ns"] = own / all;
    state.counters["cases ns"] = ofCases / all;
    state.counters["by hand ns"] = others / all;
    state.counters["ratio"] = own / others;
    state.counters["case ratio"] = ofCases / others;
}

BENCHMARK_CAPTURE(InColumns, forest_audit, std::string("forest-audit"));
BENCHMARK_CAPTURE(CaseByCase, forest_audit, std::string("forest-audit"));
BENCHMARK_CAPTURE(InColumns, sklearn_gbt_housing, std::string("sklearn-gbt-housing"));
BENCHMARK_CAPTURE(CaseByCase, sklearn_gbt_housing, std::string("sklearn-gbt-housing"));
BENCHMARK(Generated)->ArgsProduct({{10, 100, 1000}, {4, 8, 16}})->Unit(benchmark::kMillisecond);

} // namespace
