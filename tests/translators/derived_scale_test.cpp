#include "translators/derived_fields.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <functional>

// The cost of reading derived fields: what one element takes must not grow with their number.

namespace veltrane::tests {
namespace {

using namespace MCVeltrane_900;

constexpr int kFew = 500;
constexpr int kMany = 16 * kFew;
/// Going over all elements for each would cost 16 times as much for one of many; what is left is noise and the depth
/// of a tree.
constexpr double kMostGrowth = 5.0;

using MakeChildren = std::string (*)(int count);

std::string Repeated(int count, const std::function<std::string(const std::string& index)>& make) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += make(std::to_string(i));
    }
    return text;
}

std::string ChainOfReferences(int count) {
    return Repeated(count, [](const std::string& index) {
        const std::string source = index == "0" ? "x" : "z" + std::to_string(std::stoi(index) - 1);
        return DerivedField("z" + index, "optype='continuous' dataType='double'", "<FieldRef field='" + source + "'/>");
    });
}

std::string Indicators(int count) {
    return Repeated(count, [](const std::string& index) {
        return DerivedField("z" + index, "optype='continuous' dataType='double'",
                            "<NormDiscrete field='t' value='v" + index + "'/>");
    });
}

std::string BinsOfOneField(int count) {
    return TextField("<Discretize field='x'>" +
                     Repeated(count,
                              [](const std::string& index) {
                                  return "<DiscretizeBin binValue='v" + index +
                                         "'><Interval closure='closedOpen' leftMargin='" + index + "' rightMargin='" +
                                         index + ".5'/></DiscretizeBin>";
                              }) +
                     "</Discretize>");
}

std::string PointsOfOneField(int count) {
    return NumericField(
        "<NormContinuous field='x'>" +
        Repeated(count,
                 [](const std::string& index) { return "<LinearNorm orig='" + index + "' norm='" + index + "'/>"; }) +
        "</NormContinuous>");
}

std::string Values(int count) {
    return TextField(Repeated(count, [](const std::string& index) { return "<Value value='v" + index + "'/>"; }));
}

std::string RowsOfATable(int count) {
    return TextField("<MapValues outputColumn='out'><FieldColumnPair field='s' column='in'/><InlineTable>" +
                     Repeated(count,
                              [](const std::string& index) {
                                  return "<row><in>v" + index + "</in><out>w" + index + "</out></row>";
                              }) +
                     "</InlineTable></MapValues>");
}

struct ScaleRow {
    const char* label;
    MakeChildren make;
};
class DerivedScale : public testing::TestWithParam<ScaleRow> {
protected:
    /// Processor time that one of `count` elements takes, the best of a few runs.
    static double CostOfOne(int count) {
        const ParsedXml document = ParseXml("<T>" + GetParam().make(count) + "</T>");
        std::clock_t best = 0;
        for (int run = 0; run < 5; ++run) {
            const DerivedFields inputs("");
            const std::clock_t start = std::clock();
            const std::unique_ptr<TransformationDictionary> derived(
                inputs.translator->HandleTransformationDictionary(document.Root(), inputs.dictionary.get()));
            const std::clock_t taken = std::clock() - start;
            best = run == 0 ? taken : std::min(best, taken);
        }
        return static_cast<double>(best) / count;
    }
};

TEST_P(DerivedScale, CostGrowsWithTheNumber) {
    EXPECT_LT(CostOfOne(kMany), kMostGrowth * CostOfOne(kFew));
}

INSTANTIATE_TEST_SUITE_P(Elements, DerivedScale,
                         testing::Values(ScaleRow{"ChainOfReferences", ChainOfReferences},
                                         ScaleRow{"Indicators", Indicators}, ScaleRow{"BinsOfOneField", BinsOfOneField},
                                         ScaleRow{"PointsOfOneField", PointsOfOneField}, ScaleRow{"Values", Values},
                                         ScaleRow{"RowsOfATable", RowsOfATable}),
                         [](const auto& row) { return row.param.label; });

TEST(DerivedNesting, DoesNotUseTheStack) {
    constexpr int kDepth = 100000;
    std::string open;
    std::string close;
    for (int i = 0; i < kDepth; ++i) {
        open += "<Group>";
        close += "</Group>";
    }
    const std::string field =
        DerivedField("z", "optype='continuous' dataType='double'",
                     "<MapValues outputColumn='out'><FieldColumnPair field='s' column='in'/>"
                     "<InlineTable>" +
                         open + "<row><in>a</in><out>1</out></row>" + close + "</InlineTable></MapValues>");
    const DerivedFields fields(open + field + close);
    EXPECT_EQ(fields.derived->Size(), 1);
}

} // namespace
} // namespace veltrane::tests
