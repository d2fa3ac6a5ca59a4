#include "support/faults/failure.h"

#include <MCVeltrane_900/VTException.h>

#include <type_traits>

namespace {

using MCVeltrane_900::VTException;

static_assert(!std::is_base_of_v<std::exception, VTException>);

TEST(VTException, StartsWithNothing) {
    const VTException failure;
    EXPECT_EQ(failure.GetErrorCode(), 0);
    EXPECT_EQ(failure.GetDetailMessage(), "");
    EXPECT_EQ(failure.ConstructMessage(), "");
    EXPECT_EQ(failure.GetErrorMessage(), "");
}

TEST(VTException, TakesCodeAndDetailWithoutARecord) {
    const VTException failure(260114, "detail");
    EXPECT_EQ(failure.GetErrorCode(), 260114);
    EXPECT_EQ(failure.GetDetailMessage(), "detail");
}

TEST(VTException, FillsThePlaceholders) {
    VTException failure;
    EXPECT_TRUE(failure.PutErrorMessage(260103, "a.txt", nullptr));
    EXPECT_EQ(failure.GetErrorCode(), 260103);
    EXPECT_EQ(failure.ConstructMessage(), "Could not open file: 'a.txt'.");
}

TEST(VTException, SecondMessageGivesTheCodeAndBothTextsRunTogether) {
    VTException failure;
    failure.PutErrorMessage(260103, "a.txt", nullptr);
    failure.PutErrorMessage(260114, "b", nullptr);
    EXPECT_EQ(failure.GetErrorCode(), 260114);
    EXPECT_EQ(failure.ConstructMessage(), "Could not open file: 'a.txt'.Missing node: 'b'.");
}

TEST(VTException, ParametersEndAtANullOne) {
    VTException failure;
    failure.PutErrorMessage(260120, "a", nullptr);
    EXPECT_EQ(failure.ConstructMessage(), "Missing the attribute 'a' of '{1}'.");
}

TEST(VTException, ParametersBeyondThePlaceholdersAreDropped) {
    VTException failure;
    failure.PutErrorMessage(260120, "a", "b", "c");
    EXPECT_EQ(failure.ConstructMessage(), "Missing the attribute 'a' of 'b'.");
}

TEST(VTException, AllPlaceholdersOfTheLongestMessageAreFilled) {
    VTException failure;
    failure.PutErrorMessage(260251, "1", "2", "3", "4", "5", "6");
    EXPECT_EQ(failure.ConstructMessage(),
              "Mismatch between the number: '1' of '2' in '3' and the number: '4' of '5' in '6'.");
}

TEST(VTException, EmptyParameterIsAParameter) {
    VTException failure;
    failure.PutErrorMessage(260120, "", "b");
    EXPECT_EQ(failure.ConstructMessage(), "Missing the attribute '' of 'b'.");
}

TEST(VTException, MessageWithoutPlaceholdersTakesNoParameter) {
    VTException failure;
    EXPECT_TRUE(failure.PutErrorMessage(260101));
    EXPECT_TRUE(failure.PutErrorMessage(260101, "ignored"));
    EXPECT_EQ(failure.ConstructMessage(), "Unexpected error.Unexpected error.");
}

TEST(VTException, ParametersAreNotPatterns) {
    VTException failure;
    failure.PutErrorMessage(260120, "{1} it''s", "%s {");
    EXPECT_EQ(failure.ConstructMessage(), "Missing the attribute '{1} it''s' of '%s {'.");
}

TEST(VTException, UnknownIdHasAnEmptyText) {
    VTException failure;
    EXPECT_TRUE(failure.PutErrorMessage(7, "a", nullptr));
    EXPECT_EQ(failure.GetErrorCode(), 7);
    EXPECT_EQ(failure.ConstructMessage(), "");
    failure.SetDetailMessage("detail");
    EXPECT_EQ(failure.GetErrorMessage(), "detail");
}

TEST(VTException, CodeOutsideTheCatalogueLeavesTheDetailAlone) {
    EXPECT_EQ(VTException(1, "field: not predefined!").GetErrorMessage(), "field: not predefined!");
}

TEST(VTException, DetailMessageIsReplaced) {
    VTException failure(260114, "first");
    failure.SetDetailMessage("second");
    EXPECT_EQ(failure.GetDetailMessage(), "second");
    failure.SetDetailMessage(nullptr);
    EXPECT_EQ(failure.GetDetailMessage(), "");
}

TEST(VTException, WithoutFormaterKeepsNoRecord) {
    VTException failure(nullptr);
    EXPECT_FALSE(failure.PutErrorMessage(260114, "a"));
    EXPECT_EQ(failure.GetErrorCode(), 260114);
    failure.SetFormater(&MCVeltrane_900::gErrorFormater);
    EXPECT_EQ(failure.ConstructMessage(), "Missing node: ''{0}''.");
}

TEST(VTException, WithoutFormaterTheTextIsTheDetailAlone) {
    VTException failure;
    failure.PutErrorMessage(260114, "a");
    failure.SetDetailMessage("detail");
    failure.SetFormater(nullptr);
    EXPECT_EQ(failure.ConstructMessage(), "");
    EXPECT_EQ(failure.GetErrorMessage(), "detail");
    EXPECT_EQ(VTException(260114, "detail", nullptr).GetErrorMessage(), "detail");
}

TEST(VTException, CopyHoldsAllFieldsAndRecords) {
    auto source = std::make_unique<VTException>();
    source->SetDetailMessage("detail");
    source->PutErrorMessage(260103, "a", nullptr);
    source->PutErrorMessage(260114, "b", nullptr);
    const VTException copy(*source);
    source.reset();
    EXPECT_EQ(copy.GetErrorCode(), 260114);
    EXPECT_EQ(copy.GetErrorMessage(), "Could not open file: 'a'.Missing node: 'b'.detail");
}

TEST(VTException, CopyKeepsTheFormater) {
    const VTException source(260114, "detail", nullptr);
    EXPECT_EQ(VTException(source).GetErrorMessage(), "detail");
}

TEST(VTException, AssignmentReplacesAllFieldsAndRecords) {
    VTException target(1, "old");
    target.PutErrorMessage(260103, "old");
    VTException source;
    source.PutErrorMessage(260114, "b");
    target = source;
    EXPECT_EQ(target.GetErrorCode(), 260114);
    EXPECT_EQ(target.GetErrorMessage(), "Missing node: 'b'.");
}

TEST(VTException, ThrownByValueIsCaughtByReference) {
    veltrane::tests::ExpectFailureWithDetail(
        [] {
            VTException failure;
            failure.SetDetailMessage("line 3");
            failure.PutErrorMessage(260108, "a.xml");
            throw failure;
        },
        {MCVeltrane_900::Message::CANNOT_PARSE_FILE, "a.xml"}, "line 3");
}

TEST(KeptMessages, DetailStandsRightBehindTheText) {
    VTException failure;
    failure.SetDetailMessage("line 3");
    failure.PutErrorMessage(260109);
    EXPECT_EQ(failure.GetErrorMessage(), "Error in parsing the PMML file. Detailed message:line 3");
}

TEST(KeptMessages, CodeWithoutRecordsGivesTheRawPatternAndTheDetail) {
    const VTException failure(260103, "detail");
    EXPECT_EQ(failure.GetErrorMessage(), "Could not open file: ''{0}''.detail");
}

TEST(KeptMessages, NullFirstParameterGivesTheRawPattern) {
    VTException failure;
    failure.PutErrorMessage(260120, nullptr);
    EXPECT_EQ(failure.ConstructMessage(), "Missing the attribute ''{0}'' of ''{1}''.");
}

TEST(KeptMessages, UnbalancedApostrophesStay) {
    VTException failure;
    failure.PutErrorMessage(260130, "a", "b");
    EXPECT_EQ(failure.ConstructMessage(), "Definition a non-constant parameter in 'a, but missing definition of 'b'.");
}

} // namespace
