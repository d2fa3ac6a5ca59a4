#include "fields.h"

#include <thread>
#include <vector>

using namespace veltrane::tests;

namespace {

/// A chain of references behind a lag, so that the count of nested evaluations is used.
std::string ScoreAStream(TransformationDictionary& derived, int first) {
    BaseDictionary dictionary;
    dictionary.AddVar("x", new DictVar("x", kNumeric));
    CaseRecord record;
    record.Add("x", Num(0));
    const ScoreCaseRecord* values = nullptr;
    for (int i = 0; i < 1000; ++i) {
        record.SetValue("x", static_cast<double>(first + i));
        values = derived.GetValuesForDerivedVars(&record, &dictionary);
    }
    return Written(values->Get("lag")) + ", " + Written(values->Get("chain"));
}

} // namespace

TEST(TransformationThreads, CopiesScoreSideBySide) {
    TransformationDictionary original;
    std::string source = "x";
    for (const std::string name : {"a", "b", "chain", "lag"}) {
        auto* field = new TransformVar(name, kNumeric);
        field->AddFieldNameAndTransExpression(name == "lag" ? "x" : source,
                                              name == "lag" ? TD::TE_LAG : TD::TE_FIELD_REF);
        original.AddVar(name, field);
        original.AddDerievedVarName(name);
        source = name;
    }
    original.SetUpDerivedCaseRecord();
    std::vector<std::string> results(4);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < results.size(); ++i) {
        threads.emplace_back([&results, i, own = std::make_shared<TransformationDictionary>(original)] {
            results[i] = ScoreAStream(*own, static_cast<int>(i) * 10000);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(results, (std::vector<std::string>{"number 998, number 999", "number 10998, number 10999",
                                                 "number 20998, number 20999", "number 30998, number 30999"}));
}
