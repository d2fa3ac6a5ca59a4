// Every measure, compare function and scoring method, case after case, against the answers that neighbours_answers.py
// computes apart from the plug-in.
#include "models/kit/answers.h"
#include "models/kit/scoring.h"
#include "support/folders.h"

#include <gtest/gtest.h>

using namespace veltrane::tests;

namespace {

class NeighboursAnswers : public testing::TestWithParam<SampleVariant> {};

TEST_P(NeighboursAnswers, AreThoseComputedApart) {
    ExpectVariantAnswers(GetParam(), TestsFolder() + "/models/neighbours/answers.csv");
}

INSTANTIATE_TEST_SUITE_P(Variants, NeighboursAnswers,
                         testing::ValuesIn(ReadVariants(TestsFolder() + "/models/neighbours/variants.tsv")),
                         [](const auto& info) { return info.param.name; });

} // namespace
