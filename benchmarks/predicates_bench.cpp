// Time and allocations of an evaluation, over the records of a case and over an encoded case.
#include "allocation_counter.h"

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/CompoundPredicate.h>
#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/DiscreteSplit.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/Range.h>
#include <MCVeltrane_900/ScaleSplit.h>
#include <MCVeltrane_900/ScoreCatStringEncoder.h>
#include <MCVeltrane_900/SetPredicate.h>
#include <MCVeltrane_900/SimplePredicate.h>
#include <MCVeltrane_900/StringValue.h>

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

using namespace MCVeltrane_900;

namespace {

constexpr int kCases = 64;
constexpr int kFewCategories = 4;
constexpr int kManyCategories = 100;

std::string Category(int number) {
    return "category " + std::to_string(number);
}

std::vector<std::string> Categories(int count) {
    std::vector<std::string> categories;
    for (int i = 0; i < count; ++i) {
        categories.push_back(Category(i));
    }
    return categories;
}

/// The fields of the cases, each with its place in both forms: a number, a category of few, a category of many, and the
/// same without an encoder.
struct Fields {
    Fields()
        : number("x", ScoreDictVar::kNUMERIC_VAR), few("few", ScoreDictVar::STRING_VAR),
          many("many", ScoreDictVar::STRING_VAR), plain("plain", ScoreDictVar::STRING_VAR) {
        int place = 0;
        for (DictVar* var : {&number, &few, &many, &plain}) {
            var->SetValueIndex(place);
            var->SetEncodedValueIndex(place++);
        }
        few.SetEncoder(new ScoreCatStringEncoder(Categories(kFewCategories)));
        many.SetEncoder(new ScoreCatStringEncoder(Categories(kManyCategories)));
        for (DictVar* var : {&few, &many, &plain}) {
            var->SetMLevel(ScoreDictVar::LEVEL_NOMINAL);
            for (const std::string& category : Categories(var == &few ? kFewCategories : kManyCategories)) {
                var->AddScoreValueLabel(new StringValue(category), category);
            }
        }
    }

    DictVar number, few, many, plain;
};

struct Cases {
    Cases() {
        for (int i = 0; i < kCases; ++i) {
            records.push_back(std::make_unique<CaseRecord>());
            CaseRecord& record = *records.back();
            record.Add("x", new NumericValue(i * 0.25));
            record.Add("few", new StringValue(Category(i % kFewCategories)));
            record.Add("many", new StringValue(Category(i * 7 % kManyCategories)));
            record.Add("plain", new StringValue(Category(i * 7 % kManyCategories)));
            encoded.push_back({i * 0.25, i % kFewCategories * 1.0, i * 7 % kManyCategories * 1.0, 0.0});
        }
    }

    std::vector<std::unique_ptr<CaseRecord>> records;
    std::vector<std::vector<double>> encoded;
};

using Made = std::unique_ptr<ScorePredicate>;

Made Continuous(const Fields& fields) {
    auto* split = new ScaleSplit(&fields.number);
    split->PutSplit(new Range(-NumericValue::GetInfinity(), 8.0, false, true), 0);
    return std::make_unique<SimplePredicate>(split);
}

Made ContinuousNotEqual(const Fields& fields) {
    auto* split = new ScaleSplit(&fields.number);
    split->PutSplit(new Range(-NumericValue::GetInfinity(), 3.0, false, false), 0);
    split->PutSplit(new Range(3.0, NumericValue::GetInfinity(), false, false), 0);
    return std::make_unique<SimplePredicate>(split);
}

Made CategoryOfFew(const Fields& fields) {
    auto* split = new DiscreteSplit(&fields.few);
    split->PutSplit(1.0, 0);
    return std::make_unique<SimplePredicate>(split);
}

Made CategoryOfMany(const Fields& fields) {
    auto* split = new DiscreteSplit(&fields.many);
    split->PutSplit(70.0, 0);
    return std::make_unique<SimplePredicate>(split);
}

Made SetOfFifty(const Fields& fields) {
    auto* split = new DiscreteSplit(&fields.many);
    for (int i = 0; i < kManyCategories; i += 2) {
        split->PutSplit(static_cast<double>(i), 0);
    }
    return std::make_unique<SetPredicate>(split);
}

Made SetOfFiftyByValue(const Fields& fields) {
    auto* split = new DiscreteSplit(&fields.plain);
    for (int i = 0; i < kManyCategories; i += 2) {
        split->PutSplit(new StringValue(Category(i)), 0);
    }
    return std::make_unique<SetPredicate>(split);
}

/// All four children are evaluated, whatever the case.
Made CompoundOfFour(const Fields& fields) {
    auto compound = std::make_unique<CompoundPredicate>(ScorePredicate::BOOL_XOR);
    for (const auto make : {Continuous, CategoryOfFew, ContinuousNotEqual, SetOfFifty}) {
        compound->AddPredicate(make(fields).release());
    }
    return compound;
}

/// Evaluates case after case.
template <typename Evaluate>
void Run(benchmark::State& state, Evaluate evaluate) {
    const std::size_t before = veltrane::bench::Allocations();
    std::size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(evaluate(next));
        next = (next + 1) % kCases;
    }
    state.counters["allocations"] =
        static_cast<double>(veltrane::bench::Allocations() - before) / static_cast<double>(state.iterations());
}

void Record(benchmark::State& state, Made (*make)(const Fields&)) {
    const Fields fields;
    const Cases cases;
    const Made predicate = make(fields);
    Run(state, [&](std::size_t i) { return predicate->Evaluate(cases.records[i].get(), nullptr); });
}

void RecordByName(benchmark::State& state, Made (*make)(const Fields&)) {
    Fields fields;
    for (DictVar* var : {&fields.number, &fields.few, &fields.many, &fields.plain}) {
        var->SetValueIndex(-1);
    }
    const Cases cases;
    const Made predicate = make(fields);
    Run(state, [&](std::size_t i) { return predicate->Evaluate(cases.records[i].get(), nullptr); });
}

void Encoded(benchmark::State& state, Made (*make)(const Fields&)) {
    const Fields fields;
    const Cases cases;
    const Made predicate = make(fields);
    Run(state, [&](std::size_t i) { return predicate->Evaluate(cases.encoded[i]); });
}

BENCHMARK_CAPTURE(Record, Continuous, Continuous);
BENCHMARK_CAPTURE(Record, ContinuousNotEqual, ContinuousNotEqual);
BENCHMARK_CAPTURE(Record, CategoryOfFour, CategoryOfFew);
BENCHMARK_CAPTURE(Record, CategoryOfHundred, CategoryOfMany);
BENCHMARK_CAPTURE(Record, SetOfFifty, SetOfFifty);
BENCHMARK_CAPTURE(Record, SetOfFiftyByValue, SetOfFiftyByValue);
BENCHMARK_CAPTURE(Record, CompoundOfFour, CompoundOfFour);
BENCHMARK_CAPTURE(RecordByName, Continuous, Continuous);
BENCHMARK_CAPTURE(RecordByName, CategoryOfFour, CategoryOfFew);
BENCHMARK_CAPTURE(Encoded, Continuous, Continuous);
BENCHMARK_CAPTURE(Encoded, ContinuousNotEqual, ContinuousNotEqual);
BENCHMARK_CAPTURE(Encoded, CategoryOfFour, CategoryOfFew);
BENCHMARK_CAPTURE(Encoded, CategoryOfHundred, CategoryOfMany);
BENCHMARK_CAPTURE(Encoded, SetOfFifty, SetOfFifty);
BENCHMARK_CAPTURE(Encoded, CompoundOfFour, CompoundOfFour);

} // namespace
