// The verification records of documents.
#include "kit/model/verification.h"
#include "models/kit/fault.h"
#include "models/kit/scoring.h"
#include "models/kit/small_documents.h"
#include "support/failure.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace veltrane::tests;
using veltrane_kit::Verification;
using veltrane_kit::VerificationField;

namespace {

const std::string kVerification = R"(<ModelVerification recordCount="2" fieldCount="3">
 <VerificationFields>
  <VerificationField field="x" column="data:x"/>
  <VerificationField field="c"/>
  <VerificationField field="p" column="p_out" precision="1e-3" zeroThreshold="1E-8"/>
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
    ExpectFailure([] { Read("<PMML>"); }, 260105, "Unexpected error in opening PMML file.");
    ExpectFailure([] { Read(""); }, 260105, "Unexpected error in opening PMML file.");
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

class VerificationFault : public testing::TestWithParam<Fault> {};

TEST_P(VerificationFault, IsNamed) {
    const std::string document = Document(Replaced(kVerification, GetParam().from, GetParam().to));
    ExpectFailure([&document] { Read(document); }, GetParam().id, GetParam().text);
}

constexpr Fault kFaults[] = {
    {"Doubled", "<ModelVerification ", "<ModelVerification/><ModelVerification ", 260272,
     "More than one 'ModelVerification' defined in 'RegressionModel'."},
    {"RecordCountWrong", "recordCount=\"2\"", "recordCount=\"3\"", 260242,
     "The value: '3' of attribute 'recordCount' does not match the number: '2' of 'row' in 'InlineTable'."},
    {"RecordCountNoNumber", "recordCount=\"2\"", "recordCount=\"two\"", 260153,
     "Invalid value: 'two' of attribute 'recordCount' in 'ModelVerification'."},
    {"FieldCountWrong", "fieldCount=\"3\"", "fieldCount=\"2\"", 260242,
     "The value: '2' of attribute 'fieldCount' does not match the number: '3' of 'VerificationField' in "
     "'VerificationFields'."},
    {"FieldMissing", "<VerificationField field=\"c\"/>", "<VerificationField/>", 260120,
     "Missing the attribute 'field' of 'VerificationField'."},
    {"FieldEmpty", "<VerificationField field=\"c\"/>", "<VerificationField field=\"\"/>", 260285,
     "The 'field' of element 'VerificationField' is null."},
    {"FieldDoubled", "<VerificationField field=\"c\"/>", "<VerificationField field=\"x\"/>", 260203,
     "Duplicate definition of 'VerificationField': 'x', already in 'VerificationFields'."},
    {"ColumnEmpty", "column=\"p_out\"", "column=\"\"", 260285, "The 'column' of element 'VerificationField' is null."},
    {"PrecisionWrong", "precision=\"1e-3\"", "precision=\"fine\"", 260153,
     "Invalid value: 'fine' of attribute 'precision' in 'VerificationField'."},
    {"ThresholdEmpty", "zeroThreshold=\"1E-8\"", "zeroThreshold=\"\"", 260285,
     "The 'zeroThreshold' of element 'VerificationField' is null."},
    {"FieldsChildWrong", "<VerificationField field=\"c\"/>", "<Field/>", 260159,
     "Invalid node 'Field' in 'VerificationFields'."},
    {"RowWrong", "<row><data:x/>", "<line/><row><data:x/>", 260159, "Invalid node 'line' in 'InlineTable'."},
};

INSTANTIATE_TEST_SUITE_P(Reader, VerificationFault, testing::ValuesIn(kFaults),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(Verification, FindsCellsWhoseNamesAreNoAscii) {
    std::istringstream in(
        Document("<ModelVerification><VerificationFields><VerificationField field=\"x\" column=\"größe\"/>"
                 "<VerificationField field=\"c\" column=\"é\"/></VerificationFields><InlineTable>"
                 "<row><größe>2</größe><é>a</é></row></InlineTable></ModelVerification>"));
    const auto verification = veltrane_kit::ReadVerification(in, {"RegressionModel"}, "CP1252");
    ASSERT_TRUE(verification.has_value());
    ASSERT_EQ(verification->records.size(), 1U);
    EXPECT_EQ(verification->records[0], (std::vector<std::optional<std::string>>{"2", "a"}));
}

TEST(VerificationFaults, MissingElementsAreNamed) {
    ExpectFailure([] { Read(Document("<ModelVerification/>")); }, 260115,
                  "Missing node of 'VerificationFields' element  in 'ModelVerification'.");
    ExpectFailure([] { Read(Document("<ModelVerification><VerificationFields/></ModelVerification>")); }, 260115,
                  "Missing node of 'VerificationField' element  in 'VerificationFields'.");
    ExpectFailure(
        [] {
            Read(Document("<ModelVerification><VerificationFields><VerificationField field=\"x\"/></VerificationFields>"
                          "</ModelVerification>"));
        },
        260115, "Missing node of 'InlineTable' element  in 'ModelVerification'.");
}

} // namespace
