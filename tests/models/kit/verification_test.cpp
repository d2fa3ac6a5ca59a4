#include "kit/model/verification.h"
#include "models/kit/scoring.h"
#include "models/kit/small_documents.h"
#include "support/faults/fault.h"
#include "support/rows.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace veltrane::tests;
using veltrane_kit::Verification;
using veltrane_kit::VerificationField;

namespace {

const std::string kVerification = R"(<ModelVerification recordCount='2' fieldCount='3'>
 <VerificationFields>
  <VerificationField field='x' column='data:x'/>
  <VerificationField field='c'/>
  <VerificationField field='p' column='p_out' precision='1e-3' zeroThreshold='1E-8'/>
 </VerificationFields>
 <InlineTable>
  <row><data:x>2</data:x><c>a</c><p_out>47</p_out></row>
  <row><data:x/><p_out>-7</p_out><other>1</other></row>
 </InlineTable>
</ModelVerification>)";

std::string Document(const std::string& verification) {
    return Replaced(kSmallRegression, "<Output>\n", verification + "<Output>\n");
}

std::optional<Verification> Read(const std::string& document) {
    std::istringstream in(document);
    return veltrane_kit::ReadVerification(in, {"TreeModel", "RegressionModel"}, "UTF-8");
}

TEST(Verification, HoldsFieldsAndRecords) {
    const auto verification = Read(Document(kVerification));
    ASSERT_TRUE(verification.has_value());
    ASSERT_EQ(verification->fields.size(), 3U);
    EXPECT_EQ(verification->fields[0].column, "data:x");
    EXPECT_EQ(verification->fields[1].column, "c");
    EXPECT_EQ(verification->fields[1].precision, 1e-6);
    EXPECT_EQ(verification->fields[1].zeroThreshold, 1e-16);
    EXPECT_EQ(verification->fields[2].precision, 1e-3);
    EXPECT_EQ(verification->fields[2].zeroThreshold, 1e-8);
    ASSERT_EQ(verification->records.size(), 2U);
    EXPECT_EQ(verification->records[0], (std::vector<std::optional<std::string>>{"2", "a", "47"}));
    EXPECT_EQ(verification->records[1], (std::vector<std::optional<std::string>>{std::nullopt, std::nullopt, "-7"}));
}

TEST(Verification, DoesNotKeepTheModelFromBeingRead) {
    EXPECT_EQ(ReadModel(Document(kVerification))->GetInputNames().size(), 3U);
}

TEST(Verification, IsNothingWithoutItOrWithoutAModel) {
    EXPECT_FALSE(Read(kSmallRegression).has_value());
    EXPECT_FALSE(Read("<PMML><Header/></PMML>").has_value());
}

TEST(Verification, WhatIsNoDocumentIsRefused) {
    ExpectFailure([] { Read("<PMML>"); }, {CANNOT_OPEN_DOCUMENT});
    ExpectFailure([] { Read(""); }, {CANNOT_OPEN_DOCUMENT});
}

TEST(VerificationFieldAgrees, WithinItsPrecision) {
    const VerificationField field{"f", "f", 1e-3, 1e-8};
    EXPECT_TRUE(field.Agrees(1000, 1001));
    EXPECT_FALSE(field.Agrees(1000, 1001.5));
    EXPECT_TRUE(field.Agrees(-1000, -999));
    EXPECT_FALSE(field.Agrees(-1000, 1000));
    EXPECT_TRUE(field.Agrees(1e-9, -1e-9));
    EXPECT_FALSE(field.Agrees(0, 1e-7));
}

class VerificationFault : public testing::TestWithParam<FaultyChange> {};

TEST_P(VerificationFault, IsNamed) {
    const std::string document = Document(Replaced(kVerification, GetParam().from, GetParam().to));
    ExpectFailure([&document] { Read(document); }, GetParam().failure);
}

constexpr FaultyChange kFaults[] = {
    {"Doubled", "<ModelVerification ", "<ModelVerification/><ModelVerification ",
     Failure(MORE_THAN_ONE, "ModelVerification", "RegressionModel")},
    {"RecordCountWrong", "recordCount='2'", "recordCount='3'",
     Failure(NUMBER_MISMATCH, "3", "recordCount", "2", "row", "InlineTable")},
    {"RecordCountNoNumber", "recordCount='2'", "recordCount='two'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "two", "recordCount", "ModelVerification")},
    {"FieldCountWrong", "fieldCount='3'", "fieldCount='2'",
     Failure(NUMBER_MISMATCH, "2", "fieldCount", "3", "VerificationField", "VerificationFields")},
    {"FieldMissing", "<VerificationField field='c'/>", "<VerificationField/>",
     Failure(MISSING_ATTRIBUTE_OF, "field", "VerificationField")},
    {"FieldEmpty", "<VerificationField field='c'/>", "<VerificationField field=''/>",
     Failure(NULL_ATTRIBUTE, "field", "VerificationField")},
    {"FieldDoubled", "<VerificationField field='c'/>", "<VerificationField field='x'/>",
     Failure(DUPLICATE_DEFINITION, "VerificationField", "x", "VerificationFields")},
    {"ColumnEmpty", "column='p_out'", "column=''", Failure(NULL_ATTRIBUTE, "column", "VerificationField")},
    {"PrecisionWrong", "precision='1e-3'", "precision='fine'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "fine", "precision", "VerificationField")},
    {"ThresholdEmpty", "zeroThreshold='1E-8'", "zeroThreshold=''",
     Failure(NULL_ATTRIBUTE, "zeroThreshold", "VerificationField")},
    {"FieldsChildWrong", "<VerificationField field='c'/>", "<Field/>",
     Failure(INVALID_NODE, "Field", "VerificationFields")},
    {"RowWrong", "<row><data:x/>", "<line/><row><data:x/>", Failure(INVALID_NODE, "line", "InlineTable")},
};

INSTANTIATE_TEST_SUITE_P(Reader, VerificationFault, testing::ValuesIn(kFaults), NameOfRow());

TEST(Verification, FindsCellsWhoseNamesAreNoAscii) {
    std::istringstream in(
        Document("<ModelVerification><VerificationFields><VerificationField field='x' column='größe'/>"
                 "<VerificationField field='c' column='é'/></VerificationFields><InlineTable>"
                 "<row><größe>2</größe><é>a</é></row></InlineTable></ModelVerification>"));
    const auto verification = veltrane_kit::ReadVerification(in, {"RegressionModel"}, "CP1252");
    ASSERT_TRUE(verification.has_value());
    ASSERT_EQ(verification->records.size(), 1U);
    EXPECT_EQ(verification->records[0], (std::vector<std::optional<std::string>>{"2", "a"}));
}

TEST(VerificationFaults, MissingElementsAreNamed) {
    ExpectFailure([] { Read(Document("<ModelVerification/>")); },
                  {MISSING_NODE_IN, "VerificationFields", "ModelVerification"});
    ExpectFailure([] { Read(Document("<ModelVerification><VerificationFields/></ModelVerification>")); },
                  {MISSING_NODE_IN, "VerificationField", "VerificationFields"});
    ExpectFailure(
        [] {
            Read(Document("<ModelVerification><VerificationFields><VerificationField field='x'/></VerificationFields>"
                          "</ModelVerification>"));
        },
        {MISSING_NODE_IN, "InlineTable", "ModelVerification"});
}

} // namespace
