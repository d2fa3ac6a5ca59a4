// Every measure with every compare function, case after case, against the answers that clustering_answers.py computes
// apart from the plug-in.
#include "models/kit/answers.h"
#include "support/folders.h"

#include <gtest/gtest.h>

using namespace veltrane::tests;

namespace {

class ClusteringAnswers : public testing::TestWithParam<SampleVariant> {};

TEST_P(ClusteringAnswers, AreThoseComputedApart) {
    ExpectVariantAnswers(GetParam(), TestsFolder() + "/models/clustering/answers.csv");
}

INSTANTIATE_TEST_SUITE_P(Variants, ClusteringAnswers,
                         testing::ValuesIn(ReadVariants(TestsFolder() + "/models/clustering/variants.tsv")),
                         [](const auto& info) { return info.param.name; });

} // namespace
