#include "conditions.h"

#include <MCVeltrane_900/CompoundPredicate.h>
#include <MCVeltrane_900/SetPredicate.h>
#include <MCVeltrane_900/SimplePredicate.h>

#include <gtest/gtest.h>

#include <memory>
#include <thread>

using namespace veltrane::tests;

namespace {

/// One case in both forms.
struct FormsOfACase {
    Case record;
    std::vector<double> encoded;
};

/// How many of the cases hold, in either form.
int CountTrue(const ScorePredicate& predicate, const std::vector<std::unique_ptr<FormsOfACase>>& cases) {
    int holding = 0;
    for (const auto& each : cases) {
        holding += predicate.Evaluate(&each->record, nullptr) == kTrue;
        holding += predicate.Evaluate(each->encoded) == kTrue;
    }
    return holding;
}

} // namespace

TEST(PredicatesThreads, OnePredicateIsEvaluatedSideBySide) {
    Categorical color(kText);
    std::vector<std::string> texts;
    for (int i = 0; i < 100; ++i) {
        texts.push_back("color " + std::to_string(i));
    }
    color.Categories(texts).Encoded(texts);
    CompoundPredicate compound(ScorePredicate::BOOL_OR);
    std::vector<double> even;
    for (int i = 0; i < 100; i += 2) {
        even.push_back(i);
    }
    compound.AddPredicate(new SimplePredicate(OfCodes(color, {1.0})));
    compound.AddPredicate(new SetPredicate(OfCodes(color, even)));
    std::vector<std::unique_ptr<FormsOfACase>> cases;
    for (int i = 0; i < 100; ++i) {
        cases.push_back(std::make_unique<FormsOfACase>(FormsOfACase{Case(texts[i].c_str()), {static_cast<double>(i)}}));
    }
    std::vector<int> holding(4);
    std::vector<std::thread> threads;
    for (int& count : holding) {
        threads.emplace_back([&] {
            for (int round = 0; round < 20; ++round) {
                count = CountTrue(compound, cases);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(holding, std::vector<int>(4, 102));
}
