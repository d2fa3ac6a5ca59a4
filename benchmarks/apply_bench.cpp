// Apply expressions: the 18 fields and 151 function nodes of housing-components, the same values by a hand-written
// function, and nanoseconds a function node for each family.
#include "allocation_counter.h"
#include "documents.h"
#include "turns.h"

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <sstream>
#include <vector>

using namespace MCVeltrane_900;
using namespace veltrane::bench;

namespace {

constexpr int kScaled = 8;     // scaled inputs
constexpr int kIndicators = 5; // indicators of the category
constexpr int kComponents = 5; // principal components
constexpr int kTerms = kScaled + kIndicators;
constexpr double kNodes = 151;

const std::string kHousing = VELTRANE_CASES "/transform/housing-components";

std::vector<std::vector<std::string>> ReadRows(const std::string& path) {
    std::istringstream in(ReadFile(path));
    std::vector<std::vector<std::string>> rows;
    for (std::string line; std::getline(in, line);) {
        rows.emplace_back();
        std::istringstream cells(line);
        for (std::string cell; std::getline(cells, cell, ',');) {
            rows.back().push_back(cell);
        }
    }
    return rows;
}

/// The constants of the document in its order: mean and deviation of each scaled input, then mean and weight of each
/// term of each component.
std::vector<double> ReadConstants(const std::string& document) {
    static const std::string kOpen = "<Constant dataType=\"double\">";
    std::vector<double> constants;
    for (std::size_t at = document.find(kOpen); at != std::string::npos; at = document.find(kOpen, at)) {
        at += kOpen.size();
        constants.push_back(std::strtod(document.c_str() + at, nullptr));
    }
    return constants;
}

bool IsMissing(double x) {
    return x == NumericValue::GetSysmisValue();
}

/// The same 18 values as the document gives, with the same tests for missing values.
void ComputeByHand(const double* inputs, const double* constants, double* values) {
    const double missing = NumericValue::GetSysmisValue();
    for (int i = 0; i < kScaled; ++i) {
        const double mean = *constants++;
        const double deviation = *constants++;
        values[i] = IsMissing(inputs[i]) ? missing : (inputs[i] - mean) / deviation;
    }
    for (int i = 0; i < kIndicators; ++i) {
        values[kScaled + i] = 1.0;
    }
    for (int k = 0; k < kComponents; ++k) {
        double sum = 0.0;
        bool found = false;
        for (int j = 0; j < kTerms; ++j) {
            const double mean = *constants++;
            const double weight = *constants++;
            if (!IsMissing(values[j])) {
                sum += (values[j] - mean) * weight;
                found = true;
            }
        }
        values[kTerms + k] = found ? sum : missing;
    }
}

void HousingComponents(benchmark::State& state) {
    Loaded loaded = Load(ReadFile(kHousing + ".pmml"));
    const auto rows = ReadRows(kHousing + ".csv");
    std::vector<std::unique_ptr<CaseRecord>> records;
    for (std::size_t i = 1; i < rows.size(); ++i) {
        auto record = std::make_unique<CaseRecord>();
        for (std::size_t j = 0; j < rows[0].size(); ++j) {
            if (j < kScaled) {
                record->Add(rows[0][j], new NumericValue(std::strtod(rows[i][j].c_str(), nullptr)));
            } else {
                record->Add(rows[0][j], new StringValue(rows[i][j]));
            }
        }
        records.push_back(std::move(record));
    }
    const std::vector<double> constants = ReadConstants(ReadFile(kHousing + ".pmml"));
    std::vector<double> inputs;
    for (const auto& record : records) {
        for (int j = 0; j < kScaled; ++j) {
            inputs.push_back(record->Get(j)->GetDouble());
        }
    }
    double values[kTerms + kComponents];
    CompareCases(
        state, records.size(),
        [&](std::size_t at) {
            benchmark::DoNotOptimize(loaded.derived->GetValuesForDerivedVars(records[at].get(), loaded.fields.get()));
        },
        [&](std::size_t at) {
            ComputeByHand(inputs.data() + at * kScaled, constants.data(), values);
            benchmark::DoNotOptimize(values);
        });
    state.counters["ns/node"] = 1e9 / kNodes / state.counters["cases/s"];
}

const char* const kFields = "<DataField name=\"x0\" optype=\"continuous\" dataType=\"double\"/>"
                            "<DataField name=\"t\" optype=\"categorical\" dataType=\"string\"/>"
                            "<DataField name=\"when\" optype=\"continuous\" dataType=\"dateTimeSecondsSince[1970]\"/>";

/// One derived field with this expression; `nodes` is the number of functions in it.
void Expression(benchmark::State& state, const char* type, const char* level, const std::string& expression,
                double nodes) {
    Loaded loaded = Load(Document(kFields, 3,
                                  std::string("<DerivedField name=\"d\" optype=\"") + level + "\" dataType=\"" + type +
                                      "\">" + expression + "</DerivedField>"));
    CaseRecord record;
    record.Add("x0", new NumericValue(1.25));
    record.Add("t", new StringValue("some text to look at"));
    record.Add("when", new DateTimeValue(1234567890.0, ScoreDictVar::DT_SECONDS_SINCE_1970));
    loaded.derived->GetValuesForDerivedVars(&record, loaded.fields.get());
    const std::size_t before = Allocations();
    for (auto _ : state) {
        benchmark::DoNotOptimize(loaded.derived->GetValuesForDerivedVars(&record, loaded.fields.get()));
    }
    const auto cases = static_cast<double>(state.iterations());
    state.counters["ns/node"] =
        benchmark::Counter(cases * nodes * 1e-9, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
    state.counters["allocations/case"] = static_cast<double>(Allocations() - before) / cases;
}

/// A function over itself ten times, with a second argument where it takes one.
std::string Nest(const std::string& function, const std::string& innermost, const std::string& more) {
    std::string expression = innermost;
    for (int i = 0; i < 10; ++i) {
        expression = "<Apply function=\"" + function + "\">" + expression + more + "</Apply>";
    }
    return expression;
}

const char* const kX = "<FieldRef field=\"x0\"/>";
const char* const kT = "<FieldRef field=\"t\"/>";
const char* const kWhen = "<FieldRef field=\"when\"/>";
const char* const kTwo = "<Constant>2</Constant>";
const char* const kTwoOne = "<Constant>2</Constant><Constant>1</Constant>";

void Number(benchmark::State& state, const std::string& expression, double nodes) {
    Expression(state, "double", "continuous", expression, nodes);
}

void Text(benchmark::State& state, const std::string& expression, double nodes) {
    Expression(state, "string", "categorical", expression, nodes);
}

BENCHMARK(HousingComponents);
BENCHMARK_CAPTURE(Number, Arithmetic, Nest("-", kX, kTwo), 10);
BENCHMARK_CAPTURE(Number, Folding, Nest("abs", kX, ""), 10);
BENCHMARK_CAPTURE(Number, Aggregates, Nest("sum", kX, kTwoOne), 10);
BENCHMARK_CAPTURE(Number, Median, Nest("median", kX, kTwoOne), 10);
BENCHMARK_CAPTURE(Number, Normal, Nest("cdf.normal", kX, kTwoOne), 10);
BENCHMARK_CAPTURE(Number, Comparisons, Nest("lessThan", kX, kTwo), 10);
BENCHMARK_CAPTURE(Number, Equality, Nest("equal", kX, kTwo), 10);
BENCHMARK_CAPTURE(Number, Membership, Nest("isIn", kX, kTwoOne), 10);
BENCHMARK_CAPTURE(Number, Branches, Nest("if", kX, kTwoOne), 10);
BENCHMARK_CAPTURE(Number, Logic, Nest("and", kX, kTwo), 10);
BENCHMARK_CAPTURE(Number, MissingTest, std::string("<Apply function=\"isMissing\">") + kX + "</Apply>", 1);
BENCHMARK_CAPTURE(Number, DateDifference,
                  std::string("<Apply function=\"date_days_difference\">") + kWhen + kTwo + "</Apply>", 1);
BENCHMARK_CAPTURE(Number, YearOfDate, std::string("<Apply function=\"year-from-date\">") + kWhen + "</Apply>", 1);
BENCHMARK_CAPTURE(Number, Length, std::string("<Apply function=\"length\">") + kT + "</Apply>", 1);
BENCHMARK_CAPTURE(Number, RegularExpression,
                  std::string("<Apply function=\"matches\">") + kT + "<Constant>t[eo]xt</Constant></Apply>", 1);
BENCHMARK_CAPTURE(Text, Case, Nest("uppercase", kT, ""), 10);
BENCHMARK_CAPTURE(Text, Trim, Nest("rtrim", kT, ""), 10);
BENCHMARK_CAPTURE(Text, Substring, std::string("<Apply function=\"substring\">") + kT + kTwo + kTwo + "</Apply>", 1);
BENCHMARK_CAPTURE(Text, Concatenation,
                  std::string("<Apply function=\"concat\">") + kT + "<Constant>abc</Constant></Apply>", 1);
BENCHMARK_CAPTURE(Text, Replacement,
                  std::string("<Apply function=\"replace\">") + kT +
                      "<Constant>t[eo]xt</Constant><Constant>word</Constant></Apply>",
                  1);

} // namespace
