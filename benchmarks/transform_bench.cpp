// Time and allocations of a case: the four normalisations of iris-scale, and each expression kind alone.
#include "allocation_counter.h"
#include "documents.h"
#include "turns.h"

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <benchmark/benchmark.h>

#include <array>
#include <vector>

using namespace MCVeltrane_900;
using namespace veltrane::bench;

namespace {

using Records = std::vector<std::unique_ptr<CaseRecord>>;

void Run(benchmark::State& state, const std::string& document, const Records& records) {
    Loaded loaded = Load(document);
    for (const auto& record : records) {
        loaded.derived->GetValuesForDerivedVars(record.get(), loaded.fields.get());
    }
    const std::size_t before = Allocations();
    std::size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(loaded.derived->GetValuesForDerivedVars(records[next].get(), loaded.fields.get()));
        next = next + 1 < records.size() ? next + 1 : 0;
    }
    const auto cases = static_cast<double>(state.iterations());
    state.counters["cases/s"] = benchmark::Counter(cases, benchmark::Counter::kIsRate);
    state.counters["allocations/case"] = static_cast<double>(Allocations() - before) / cases;
}

std::unique_ptr<CaseRecord> Row(double x, const char* text) {
    auto record = std::make_unique<CaseRecord>(2);
    record->Add("x0", new NumericValue(x));
    record->Add("t", new StringValue(text));
    return record;
}

Records TwoFieldRows() {
    static const char* const kTexts[] = {"red", "green", "blue", "grey"};
    Records records;
    for (int i = 0; i < 64; ++i) {
        records.push_back(Row(i * 0.25, kTexts[i % 4]));
    }
    return records;
}

const char* const kFields =
    "<DataField name=\"x0\" optype=\"continuous\" dataType=\"double\"/>"
    "<DataField name=\"t\" optype=\"categorical\" dataType=\"string\"><Value value=\"red\"/><Value value=\"green\"/>"
    "<Value value=\"blue\"/></DataField>";

std::string Derived(const std::string& type, const std::string& level, const std::string& expression) {
    return Document(kFields, 2,
                    "<DerivedField name=\"d\" optype=\"" + level + "\" dataType=\"" + type + "\">" + expression +
                        "</DerivedField>");
}

void Kind(benchmark::State& state, const std::string& document) {
    Run(state, document, TwoFieldRows());
}

/// The four values of a case by a hand-written function.
void ScaleIris(const double* numbers, double* scaled) {
    static constexpr double kFrom[] = {5.84333333333333, 3.05733333333333, 3.758, 1.19933333333333};
    static constexpr double kTo[] = {6.6713994613112, 3.49319961827003, 5.52329823325947, 1.96157100229368};
    for (int i = 0; i < 4; ++i) {
        scaled[i] = (numbers[i] - kFrom[i]) / (kTo[i] - kFrom[i]);
    }
}

void IrisScale(benchmark::State& state) {
    static const char* const kNames[] = {"Sepal.Length", "Sepal.Width", "Petal.Length", "Petal.Width"};
    Records records;
    std::vector<std::array<double, 4>> numbers;
    for (int i = 0; i < 150; ++i) {
        numbers.push_back({4.3 + 0.024 * i, 2.0 + 0.016 * i, 1.0 + 0.04 * i, 0.1 + 0.016 * i});
        auto record = std::make_unique<CaseRecord>(5);
        record->Add("Species", new StringValue("setosa"));
        for (std::size_t field = 0; field < 4; ++field) {
            record->Add(kNames[field], new NumericValue(numbers.back()[field]));
        }
        records.push_back(std::move(record));
    }
    Loaded loaded = Load(ReadFile(VELTRANE_CASES "/transform/iris-scale.pmml"));
    double scaled[4];
    CompareCases(
        state, records.size(),
        [&](std::size_t at) {
            benchmark::DoNotOptimize(loaded.derived->GetValuesForDerivedVars(records[at].get(), loaded.fields.get()));
        },
        [&](std::size_t at) {
            ScaleIris(numbers[at].data(), scaled);
            benchmark::DoNotOptimize(scaled);
        });
}

const std::string kConstant = Derived("double", "continuous", "<Constant dataType=\"double\">1.5</Constant>");
const std::string kFieldRef = Derived("double", "continuous", "<FieldRef field=\"x0\"/>");
const std::string kTextFieldRef = Derived("string", "categorical", "<FieldRef field=\"t\"/>");
const std::string kNormContinuous =
    Derived("double", "continuous",
            "<NormContinuous field=\"x0\"><LinearNorm orig=\"0\" norm=\"0\"/><LinearNorm orig=\"4\" norm=\"1\"/>"
            "<LinearNorm orig=\"12\" norm=\"2\"/></NormContinuous>");
const std::string kNormDiscrete = Derived("double", "continuous", "<NormDiscrete field=\"t\" value=\"red\"/>");
const std::string kDiscretize =
    Derived("string", "categorical",
            "<Discretize field=\"x0\">"
            "<DiscretizeBin binValue=\"low\"><Interval closure=\"closedOpen\" rightMargin=\"4\"/></DiscretizeBin>"
            "<DiscretizeBin binValue=\"mid\"><Interval closure=\"closedOpen\" leftMargin=\"4\" rightMargin=\"8\"/>"
            "</DiscretizeBin>"
            "<DiscretizeBin binValue=\"high\"><Interval closure=\"closedOpen\" leftMargin=\"8\"/></DiscretizeBin>"
            "</Discretize>");
const std::string kMapValues = Derived(
    "double", "continuous",
    "<MapValues outputColumn=\"out\" defaultValue=\"0\"><FieldColumnPair field=\"t\" column=\"in\"/><InlineTable>"
    "<row><in>red</in><out>1</out></row><row><in>green</in><out>2</out></row>"
    "<row><in>blue</in><out>3</out></row></InlineTable></MapValues>");

/// A table of many rows; the three texts of the cases stand behind the others.
std::string LongTable(int rows) {
    std::string table;
    for (int i = 0; i < rows; ++i) {
        table += "<row><in>colour" + std::to_string(i) + "</in><out>" + std::to_string(i) + "</out></row>";
    }
    return Derived("double", "continuous",
                   "<MapValues outputColumn=\"out\" defaultValue=\"0\"><FieldColumnPair field=\"t\" column=\"in\"/>"
                   "<InlineTable>" +
                       table +
                       "<row><in>red</in><out>1</out></row><row><in>green</in><out>2</out></row>"
                       "<row><in>blue</in><out>3</out></row></InlineTable></MapValues>");
}

const std::string kLag = Derived("double", "continuous", "<Lag field=\"x0\" n=\"2\"/>");

BENCHMARK(IrisScale);
BENCHMARK_CAPTURE(Kind, Constant, kConstant);
BENCHMARK_CAPTURE(Kind, FieldRef, kFieldRef);
BENCHMARK_CAPTURE(Kind, FieldRefOfText, kTextFieldRef);
BENCHMARK_CAPTURE(Kind, NormContinuous, kNormContinuous);
BENCHMARK_CAPTURE(Kind, NormDiscrete, kNormDiscrete);
BENCHMARK_CAPTURE(Kind, Discretize, kDiscretize);
BENCHMARK_CAPTURE(Kind, MapValues, kMapValues);
BENCHMARK_CAPTURE(Kind, MapValuesOfManyRows, LongTable(10000));
BENCHMARK_CAPTURE(Kind, Lag, kLag);

} // namespace
