// Every kernel, representation and method of decision, case after case, against the answers that vectors_answers.py
// computes apart from the plug-in.
#include "models/kit/answers.h"
#include "models/kit/scoring.h"
#include "support/folders.h"

#include <gtest/gtest.h>

using namespace veltrane::tests;

namespace {

class VectorsAnswers : public testing::TestWithParam<SampleVariant> {};

TEST_P(VectorsAnswers, AreThoseComputedApart) {
    ExpectVariantAnswers(GetParam(), TestsFolder() + "/models/vectors/answers.csv");
}

INSTANTIATE_TEST_SUITE_P(Variants, VectorsAnswers,
                         testing::ValuesIn(ReadVariants(TestsFolder() + "/models/vectors/variants.tsv")),
                         [](const auto& info) { return info.param.name; });

} // namespace
