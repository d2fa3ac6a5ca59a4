#include "support/faults/failure.h"
#include "translators/derived/derived_fields.h"

#include <gtest/gtest.h>

#include <string>

// Documents whose fields refer to fields, and how many evaluations a case may take where a lag stands below them.

namespace veltrane::tests {
namespace {

std::string Numeric(const std::string& name, const std::string& content) {
    return DerivedField(name, "optype='continuous' dataType='double'", content);
}

std::string Lag(const std::string& name, const std::string& field) {
    return Numeric(name, "<Lag field='" + field + "' n='1'/>");
}

/// A field d1 that refers to the first one, d2 that refers to d1, and so on.
std::string Chain(int length, const std::string& first) {
    std::string fields;
    std::string below = first;
    for (int i = 1; i <= length; ++i) {
        const std::string name = "d" + std::to_string(i);
        fields += Numeric(name, "<FieldRef field='" + below + "'/>");
        below = name;
    }
    return fields;
}

/// A field d1 that maps the first one, d2 that maps d1, and so on; each leaves 5 what it is.
std::string Maps(int depth, int inputs, const std::string& first) {
    std::string fields;
    std::string below = first;
    for (int i = 1; i <= depth; ++i) {
        std::string pairs;
        std::string cells;
        for (int k = 0; k < inputs; ++k) {
            const std::string column = "c" + std::to_string(k);
            pairs += "<FieldColumnPair field='" + below + "' column='" + column + "'/>";
            cells += "<" + column + ">5</" + column + ">";
        }
        const std::string name = "d" + std::to_string(i);
        fields += Numeric(name, "<MapValues outputColumn='out' defaultValue='-2' mapMissingTo='-1'>" + pairs +
                                    "<InlineTable><row>" + cells + "<out>5</out></row></InlineTable></MapValues>");
        below = name;
    }
    return fields;
}

std::string ScoreLast(DerivedFields& fields, int last, const std::string& x) {
    return fields.Score("d" + std::to_string(last), {{"x", x}});
}

TEST(DerivationLimits, ChainsOfReferencesAreScored) {
    for (const int length : {1002, 10000}) {
        DerivedFields fields(Chain(length, "x"));
        EXPECT_EQ(ScoreLast(fields, length, "5"), "5") << length;
        EXPECT_EQ(ScoreLast(fields, length, "7"), "7") << length;
    }
}

TEST(DerivationLimits, MapsOfMapsAreScored) {
    for (const int inputs : {1, 2}) {
        for (const int depth : {17, 300}) {
            DerivedFields fields(Maps(depth, inputs, "x"));
            EXPECT_EQ(ScoreLast(fields, depth, "5"), "5") << inputs << " " << depth;
            EXPECT_EQ(ScoreLast(fields, depth, "6"), "-2") << inputs << " " << depth;
        }
    }
}

TEST(DerivationLimits, ChainsOverALagAreScored) {
    DerivedFields fields(Lag("before", "x") + Chain(1002, "before"));
    EXPECT_EQ(fields.Score("before", {{"x", "5"}}), "missing");
    EXPECT_EQ(ScoreLast(fields, 1002, "6"), "6"); // each field of the chain moves the lag on
    EXPECT_EQ(fields.Score("before", {{"x", "7"}}), "6");
}

TEST(DerivationLimits, MapsOverALagAreScoredAsLongAsTheyCanBe) {
    // A map asks twice for what it maps, so the 16th takes 131,071 evaluations, and a 17th would take it twice.
    DerivedFields fields(Lag("before", "x") + Maps(16, 1, "before"));
    EXPECT_EQ(ScoreLast(fields, 16, "5"), "5");
    ExpectReadFailure(Lag("before", "x") + Maps(17, 1, "before"), {PROCESSING_VARIABLE_FAILED, "DerivedField", "d17"});
    ExpectReadFailure(Lag("before", "x") + Maps(300, 2, "before"), {PROCESSING_VARIABLE_FAILED, "DerivedField", "d12"});
}

TEST(DerivationLimits, TheFieldsOfACaseTogetherAreBounded) {
    // The nth field above the lag takes n + 1 evaluations: 100,005,153 with the 14,141st.
    const std::string lag = Lag("before", "x");
    EXPECT_EQ(DerivedFields(lag + Chain(14140, "before")).derived->Size(), 14141);
    ExpectReadFailure(lag + Chain(14141, "before"), {PROCESSING_VARIABLE_FAILED, "DerivedField", "d14141"});
}

TEST(DerivationLimits, EveryWayToALagCounts) {
    const std::string maps = Lag("before", "x") + Maps(16, 1, "before");
    constexpr Failure kRefused{PROCESSING_VARIABLE_FAILED, "DerivedField", "z"};
    ExpectReadFailure(maps + Lag("z", "d16"), kRefused);
    ExpectReadFailure(maps + Numeric("z", "<Lag field='x'><Block field='d16'/></Lag>"), kRefused);
    ExpectReadFailure(maps + Numeric("z", "<NormContinuous field='d16'><LinearNorm orig='0' norm='0'/>"
                                          "<LinearNorm orig='1' norm='1'/></NormContinuous>"),
                      kRefused);
    ExpectReadFailure(maps + Numeric("z",
                                     "<Discretize field='d16'><DiscretizeBin binValue='1'>"
                                     "<Interval closure='closedOpen' leftMargin='0'/></DiscretizeBin></Discretize>"),
                      kRefused);
    ExpectReadFailure(maps + Numeric("z", "<MapValues outputColumn='out'><FieldColumnPair field='d16' column='c'/>"
                                          "</MapValues>"),
                      kRefused);
}

TEST(DerivationLimits, AnApplyReadsWhatItsFieldsHaveGiven) {
    DerivedFields fields(Lag("before", "x") + Maps(16, 1, "before") +
                         Numeric("z", "<Apply function='+'><FieldRef field='d16'/><FieldRef field='d16'/></Apply>") +
                         Numeric("q", "<FieldRef field='z'/>"));
    EXPECT_EQ(fields.Score("z", {{"x", "5"}}), "10");
    EXPECT_EQ(fields.Score("q", {{"x", "5"}}), "10");
}

} // namespace
} // namespace veltrane::tests
