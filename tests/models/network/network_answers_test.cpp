// Every activation, normalisation and output, case after case, against the answers that network_answers.py computes
// apart from the plug-in; and the same rows in columns.
#include "models/kit/answers.h"
#include "support/folders.h"

#include <gtest/gtest.h>

using namespace veltrane::tests;

namespace {

class NetworkAnswers : public testing::TestWithParam<SampleVariant> {};

TEST_P(NetworkAnswers, AreThoseComputedApart) {
    ExpectVariantAnswers(GetParam(), TestsFolder() + "/models/network/answers.csv");
}

INSTANTIATE_TEST_SUITE_P(Variants, NetworkAnswers,
                         testing::ValuesIn(ReadVariants(TestsFolder() + "/models/network/variants.tsv")),
                         [](const auto& info) { return info.param.name; });

} // namespace
