#include "translators/derived/derived_fields.h"

#include <gtest/gtest.h>

#include <string>

using namespace veltrane::tests;

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
