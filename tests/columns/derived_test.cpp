#include "columns/support/echo.h"
#include "support/faults/failure.h"

#include <gtest/gtest.h>

#include <functional>
#include <thread>

using namespace veltrane::tests;
using veltrane::Document;
using veltrane::DocumentOptions;
using Cells = std::vector<std::string>;

/// Documents whose derived fields alone are scored.
namespace {

std::string DerivedText(const std::string& fields, const std::string& models = "") {
    return "<PMML version='4.4'><DataDictionary numberOfFields='2'>" + FieldText("x", "double") +
           FieldText("t", "string") + "</DataDictionary><TransformationDictionary>" + fields +
           "</TransformationDictionary>" + models + "</PMML>";
}

const std::string kTwice = "<DerivedField name='twice' optype='continuous' dataType='double'><Apply function='*'>"
                           "<FieldRef field='x'/><Constant dataType='double'>2</Constant></Apply></DerivedField>";
const std::string kUpper = "<DerivedField name='upper' optype='categorical' dataType='string'>"
                           "<Apply function='uppercase'><FieldRef field='t'/></Apply></DerivedField>";
const std::string kBefore = "<DerivedField name='before' optype='continuous' dataType='double'><Lag field='x' n='1'/>"
                            "</DerivedField>";

TEST(DerivedFieldsInColumns, AreScoredWithoutAModel) {
    const Document document = Document::OfBytes(DerivedText(kTwice + kUpper));
    EXPECT_FALSE(document.NeedsOrder());
    ASSERT_EQ(document.Outputs().size(), 2U);
    EXPECT_EQ(document.Outputs()[0].name, "twice");
    TestBatch batch({Doubles("x", {1.5, 2}, {true, false}), Texts("t", "u", {"red", "\xC3\xA4"})});
    TestResults results;
    Score(document, batch, results);
    EXPECT_EQ(results.Cells("twice"), (Cells{"3", "null"}));
    EXPECT_EQ(results.Cells("upper"), (Cells{"RED", "\xC3\x84"}));
}

TEST(DerivedFieldsInColumns, AreScoredBesideAModelWhereTheyAreAskedFor) {
    DocumentOptions options = TestOptions();
    const std::string text =
        DerivedText(kTwice, "<RegressionModel functionName='regression'><MiningSchema><MiningField name='x'/>"
                            "</MiningSchema><RegressionTable intercept='1'/></RegressionModel>");
    EXPECT_EQ(Document::OfBytes(text, options).Outputs()[0].name, "prediction");
    options.content = DocumentOptions::Content::DERIVED_FIELDS;
    EXPECT_EQ(Document::OfBytes(text, options).Outputs()[0].name, "twice");
    options.modelOptions = {{"factor", "2"}};
    ExpectFailure([&] { Document::OfBytes(text, options); }, {NO_SUCH_OPTION, "factor", "2"});
}

TEST(DerivedFieldsInColumns, HaveToBeThere) {
    ExpectFailure([] { Document::OfBytes(DerivedText("")); }, {NOTHING_TO_SCORE, "derived fields"});
}

TEST(DerivedFieldsInColumns, ThatLookBackWantOneState) {
    const Document document = Document::OfBytes(DerivedText(kBefore));
    EXPECT_TRUE(document.NeedsOrder());
    Document::State state = document.NewState();
    Cells cells;
    for (const double number : {1.0, 2.0, 3.0}) {
        TestBatch batch({Doubles("x", {number})});
        TestResults results;
        document.Score(&batch.array, &batch.schema, state, &results.array, &results.schema);
        cells.push_back(results.Cells("before")[0]);
    }
    EXPECT_EQ(cells, (Cells{"null", "1", "2"}));
}

} // namespace
