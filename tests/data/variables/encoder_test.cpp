#include "data/sets/counted_values.h"
#include "support/numbers.h"

#include <MCVeltrane_900/ScoreCatNumericEncoder.h>
#include <MCVeltrane_900/ScoreCatStringEncoder.h>

#include <gtest/gtest.h>

#include <limits>
#include <memory>

namespace MCVeltrane_900 {
namespace {

using namespace veltrane::tests;
using Texts = std::vector<std::string>;

TEST(EncoderNumbers, OfTheTypes) {
    EXPECT_EQ(ScoreEncoder::ENCODER_BINNING, 1);
    EXPECT_EQ(ScoreEncoder::ENCODER_CAT_NUMERIC, 2);
    EXPECT_EQ(ScoreEncoder::ENCODER_CAT_STRING, 3);
}

TEST(CatStringEncoder, Fresh) {
    const ScoreCatStringEncoder encoder(2);
    EXPECT_EQ(encoder.GetEncoderType(), ScoreEncoder::ENCODER_CAT_STRING);
    EXPECT_EQ(encoder.GetNumberOfCategories(), 0);
    EXPECT_FALSE(encoder.GetNoSpaceTrim());
    EXPECT_TRUE(encoder.GetEmptyStringOK());
    EXPECT_EQ(encoder.Decode(0), "");
    EXPECT_TRUE(encoder.GetValueLabels()->empty());
    EXPECT_EQ(ScoreCatStringEncoder(-5).GetNumberOfCategories(), 0);
}

TEST(CatStringEncoder, CodesInOrderOfAppearance) {
    ScoreCatStringEncoder encoder(Texts{"red", "green", "red ", "blue"});
    EXPECT_EQ(encoder.GetNumberOfCategories(), 3);
    EXPECT_EQ(encoder.Decode(0), "red");
    EXPECT_EQ(encoder.Decode(1), "green");
    EXPECT_EQ(encoder.Decode(2), "blue");
    EXPECT_EQ(encoder.Encode(std::string("green")), 1);
    EXPECT_EQ(encoder.Encode(std::string("yellow")), 3);
    EXPECT_EQ(encoder.Decode(3), "yellow");
    EXPECT_FALSE(encoder.GetNoSpaceTrim());
    EXPECT_TRUE(encoder.GetEmptyStringOK());
}

TEST(CatStringEncoder, TrailingBlanksAreTrimmedByDefault) {
    ScoreCatStringEncoder encoder(2);
    EXPECT_EQ(encoder.Encode(std::string("a  ")), 0);
    EXPECT_EQ(encoder.Encode(std::string("a")), 0);
    EXPECT_EQ(encoder.Decode(0), "a");
    EXPECT_EQ(encoder.GetNumberOfCategories(), 1);
}

TEST(CatStringEncoder, OnlyBlanksAtTheEndAreTrimmed) {
    ScoreCatStringEncoder encoder(2);
    EXPECT_EQ(encoder.Encode(std::string("a")), 0);
    EXPECT_EQ(encoder.Encode(std::string(" a")), 1);
    EXPECT_EQ(encoder.Encode(std::string("a\t")), 2);
    EXPECT_EQ(encoder.Encode(std::string(" a  ")), 1);
}

TEST(CatStringEncoder, NoSpaceTrimTellsBlanksApart) {
    ScoreCatStringEncoder encoder(2);
    encoder.SetNoSpaceTrim(true);
    EXPECT_TRUE(encoder.GetNoSpaceTrim());
    EXPECT_EQ(encoder.Encode(std::string("a")), 0);
    EXPECT_EQ(encoder.Encode(std::string("a  ")), 1);
    EXPECT_EQ(encoder.Decode(1), "a  ");
    EXPECT_EQ(encoder.EncodeConst(std::string("a ")), -1);
}

TEST(CatStringEncoder, KeyLearnedWithBlanksStillMatchesWhenTrimming) {
    ScoreCatStringEncoder encoder(2);
    encoder.SetNoSpaceTrim(true);
    ASSERT_EQ(encoder.Encode(std::string("a  ")), 0);
    encoder.SetNoSpaceTrim(false);
    EXPECT_EQ(encoder.EncodeConst(std::string("a  ")), 0);
    EXPECT_EQ(encoder.EncodeConst(std::string("a ")), -1);
    EXPECT_EQ(encoder.Encode(std::string("a  ")), 0);
    EXPECT_EQ(encoder.Encode(std::string("a ")), 1);
    EXPECT_EQ(encoder.Decode(1), "a");
}

TEST(CatStringEncoder, BlankTextsAreOneBlankAndTheEmptyTextIsAnotherWhenEmptyIsOK) {
    ScoreCatStringEncoder encoder(2);
    EXPECT_EQ(encoder.Encode(std::string("   ")), 0);
    EXPECT_EQ(encoder.Decode(0), " ");
    EXPECT_EQ(encoder.Encode(std::string("  ")), 0);
    EXPECT_EQ(encoder.Encode(std::string("")), 1);
    EXPECT_EQ(encoder.Decode(1), "");
    EXPECT_EQ(encoder.GetNumberOfCategories(), 2);
}

TEST(CatStringEncoder, BlankAndEmptyShareOneCodeWhenEmptyIsNotOK) {
    ScoreCatStringEncoder encoder(2);
    encoder.SetEmptyStringOK(false);
    EXPECT_FALSE(encoder.GetEmptyStringOK());
    EXPECT_EQ(encoder.Encode(std::string("   ")), 0);
    EXPECT_EQ(encoder.Encode(std::string("")), 0);
    EXPECT_EQ(encoder.Decode(0), "");
    EXPECT_EQ(encoder.GetNumberOfCategories(), 1);
}

TEST(CatStringEncoder, EncodeConstOfAnUnknownTextChangesNothing) {
    ScoreCatStringEncoder encoder(Texts{"a"});
    EXPECT_EQ(encoder.EncodeConst(std::string("b")), -1);
    EXPECT_EQ(encoder.EncodeConst(std::string("b ")), -1);
    EXPECT_EQ(encoder.GetNumberOfCategories(), 1);
}

TEST(CatStringEncoder, EncodeConstTrimsAsEncodeDoes) {
    ScoreCatStringEncoder encoder(Texts{"a", "  "});
    EXPECT_EQ(encoder.EncodeConst(std::string("a   ")), 0);
    EXPECT_EQ(encoder.EncodeConst(std::string("    ")), 1);
    EXPECT_EQ(encoder.EncodeConst(std::string(" ")), 1);
    EXPECT_EQ(encoder.EncodeConst(std::string("")), -1);
    encoder.SetEmptyStringOK(false);
    EXPECT_EQ(encoder.EncodeConst(std::string("    ")), -1);
}

TEST(CatStringEncoder, ValuesAreCodedByTheirText) {
    ScoreCatStringEncoder encoder(2);
    const StringValue text("1.5 ");
    const NumericValue number(1.5);
    const NumericValue other(2.5);
    EXPECT_EQ(encoder.Encode(&text), 0);
    EXPECT_EQ(encoder.Encode(&number), 0);
    EXPECT_EQ(encoder.EncodeConst(&number), 0);
    EXPECT_EQ(encoder.EncodeConst(&text), 0);
    EXPECT_EQ(encoder.EncodeConst(&other), -1);
    EXPECT_EQ(encoder.Encode(&other), 1);
    EXPECT_EQ(encoder.Decode(1), "2.5");
}

/// An encoder that knows one text more, and a text that reads as another.
class HostEncoder : public ScoreCatStringEncoder {
public:
    using ScoreCatStringEncoder::Encode;
    using ScoreCatStringEncoder::EncodeConst;
    HostEncoder() : ScoreCatStringEncoder(1) {}
    int Encode(const std::string&) override { return 77; }
    int EncodeConst(const std::string& text) const override { return static_cast<int>(text.size()); }
};

class HostText : public StringValue {
public:
    HostText() : StringValue("abc") {}
    std::string GetString() const override { return "abcde"; }
};

TEST(CatStringEncoder, ValueFormsGoThroughTheVirtualOperations) {
    HostEncoder encoder;
    const StringValue text("abc");
    const HostText hostText;
    EXPECT_EQ(encoder.Encode(&text), 77);
    EXPECT_EQ(encoder.EncodeConst(&text), 3);
    EXPECT_EQ(encoder.EncodeConst(&hostText), 5);
}

TEST(CatStringEncoder, DecodeOutsideTheCodesIsEmpty) {
    const ScoreCatStringEncoder encoder(Texts{"a", "b"});
    EXPECT_EQ(encoder.Decode(-1), "");
    EXPECT_EQ(encoder.Decode(2), "");
    EXPECT_EQ(encoder.DecodeNum(0), kMissing);
}

TEST(CatStringEncoder, CopyTakesCodesAndFlagsButNoLabels) {
    ScoreCatStringEncoder encoder(Texts{"b", "a"});
    encoder.SetNoSpaceTrim(true);
    encoder.SetEmptyStringOK(false);
    encoder.SetValueLabels({"B", "A"});
    auto copy = std::make_unique<ScoreCatStringEncoder>(encoder);
    EXPECT_TRUE(copy->GetNoSpaceTrim());
    EXPECT_FALSE(copy->GetEmptyStringOK());
    EXPECT_TRUE(copy->GetValueLabels()->empty());
    EXPECT_EQ(copy->Decode(0), "b");
    EXPECT_EQ(copy->Decode(1), "a");
    EXPECT_EQ(copy->Encode(std::string("c")), 2);
    EXPECT_EQ(encoder.GetNumberOfCategories(), 2);
}

TEST(KeptCatStringEncoder, CloneOwnsItsKeysAndHasNoLabels) {
    auto encoder = std::make_unique<ScoreCatStringEncoder>(Texts{"b", "a"});
    encoder->SetValueLabels({"B", "A"});
    std::unique_ptr<ScoreEncoder> clone(encoder->Clone());
    encoder.reset();
    EXPECT_EQ(clone->GetEncoderType(), ScoreEncoder::ENCODER_CAT_STRING);
    EXPECT_EQ(clone->Decode(1), "a");
    EXPECT_TRUE(clone->GetValueLabels()->empty());
}

TEST(KeptCatStringEncoder, AssignmentKeepsFlagsAndLabels) {
    const ScoreCatStringEncoder source(Texts{"b", "a"});
    ScoreCatStringEncoder target(Texts{"x", "y", "z"});
    target.SetNoSpaceTrim(true);
    target.SetEmptyStringOK(false);
    target.SetValueLabels({"X"});
    target = source;
    EXPECT_EQ(target.GetNumberOfCategories(), 2);
    EXPECT_EQ(target.Decode(0), "b");
    EXPECT_EQ(target.Decode(2), "");
    EXPECT_TRUE(target.GetNoSpaceTrim());
    EXPECT_FALSE(target.GetEmptyStringOK());
    EXPECT_EQ(*target.GetValueLabels(), Texts{"X"});
    const ScoreCatStringEncoder& alias = target;
    target = alias;
    EXPECT_EQ(target.Decode(1), "a");
}

TEST(CatStringEncoder, LabelsGrowToTheNumberOfCategories) {
    ScoreCatStringEncoder encoder(Texts{"a", "b", "c"});
    encoder.SetValueLabel(1, "B");
    EXPECT_EQ(*encoder.GetValueLabels(), (Texts{"", "B", ""}));
    encoder.SetValueLabel(3, "D");
    encoder.SetValueLabel(-1, "N");
    EXPECT_EQ(*encoder.GetValueLabels(), (Texts{"", "B", ""}));
    encoder.SetValueLabels({"1", "2", "3", "4"});
    encoder.SetValueLabel(3, "D");
    encoder.SetValueLabel(2, "C");
    EXPECT_EQ(*encoder.GetValueLabels(), (Texts{"1", "2", "C", "4"}));
}

TEST(CatStringEncoder, LabelOutOfRangeStillGrowsTheVector) {
    ScoreCatStringEncoder encoder(Texts{"a", "b"});
    encoder.SetValueLabel(9, "X");
    EXPECT_EQ(*encoder.GetValueLabels(), (Texts{"", ""}));
}

TEST(CatStringEncoder, Displays) {
    EXPECT_EQ(Dump(ScoreCatStringEncoder(1)), "\tScoreCatStringEncoder object:  Last code = -1\n");
    EXPECT_EQ(Dump(ScoreCatStringEncoder(Texts{"b", "a"})),
              "\tScoreCatStringEncoder object:  Last code = 1\n\t\t0\t\tb\n\t\t1\t\ta\n");
}

TEST(CatNumericEncoder, Fresh) {
    const ScoreCatNumericEncoder encoder(2);
    EXPECT_EQ(encoder.GetEncoderType(), ScoreEncoder::ENCODER_CAT_NUMERIC);
    EXPECT_EQ(encoder.GetNumberOfCategories(), 0);
    EXPECT_EQ(ScoreCatNumericEncoder(-5).GetNumberOfCategories(), 0);
}

TEST(CatNumericEncoder, DuplicatesCollapse) {
    ScoreCatNumericEncoder encoder(std::vector<double>{3.0, 1.0, 3.0, 0.0, -0.0});
    EXPECT_EQ(encoder.GetNumberOfCategories(), 3);
    EXPECT_EQ(encoder.DecodeNum(0), 3.0);
    EXPECT_EQ(encoder.DecodeNum(1), 1.0);
    EXPECT_EQ(encoder.DecodeNum(2), 0.0);
    EXPECT_EQ(encoder.Encode(7.0), 3);
}

TEST(CatNumericEncoder, MatchesWithoutTolerance) {
    ScoreCatNumericEncoder encoder(2);
    EXPECT_EQ(encoder.Encode(1.0), 0);
    EXPECT_EQ(encoder.Encode(1.0 + 1e-15), 1);
    EXPECT_EQ(encoder.EncodeConst(1.0), 0);
    EXPECT_EQ(encoder.EncodeConst(1.0 - 1e-15), -1);
    EXPECT_EQ(encoder.GetNumberOfCategories(), 2);
}

TEST(CatNumericEncoder, MissingIsAKeyLikeAnyOther) {
    ScoreCatNumericEncoder encoder(2);
    EXPECT_EQ(encoder.EncodeConst(kMissing), -1);
    EXPECT_EQ(encoder.Encode(kMissing), 0);
    EXPECT_EQ(encoder.EncodeConst(std::string("not a number")), 0);
    EXPECT_EQ(encoder.EncodeConst(std::string("")), 0);
}

TEST(CatNumericEncoder, NaNIsOneKeyAndDisturbsNoOther) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    ScoreCatNumericEncoder encoder(2);
    EXPECT_EQ(encoder.Encode(1.0), 0);
    EXPECT_EQ(encoder.EncodeConst(nan), -1);
    EXPECT_EQ(encoder.Encode(nan), 1);
    EXPECT_EQ(encoder.Encode(nan), 1);
    EXPECT_EQ(encoder.EncodeConst(1.0), 0);
    EXPECT_EQ(encoder.EncodeConst(2.0), -1);
}

TEST(CatNumericEncoder, ValuesAndTexts) {
    ScoreCatNumericEncoder encoder(2);
    const NumericValue number(1.5);
    const StringValue text("1.5");
    const DateTimeValue date(86400.0 * 1.5, DateTimeValue::VAL_DATE);
    EXPECT_EQ(encoder.Encode(&number), 0);
    EXPECT_EQ(encoder.Encode(&text), 0);
    EXPECT_EQ(encoder.Encode(&date), 0);
    EXPECT_EQ(encoder.Encode(std::string("1.5")), 0);
    EXPECT_EQ(encoder.EncodeConst(&text), 0);
    EXPECT_EQ(encoder.EncodeConst(std::string("2.5")), -1);
    EXPECT_EQ(encoder.Encode(std::string("2.5")), 1);
    const StringValue words("words");
    EXPECT_EQ(encoder.Encode(&words), 2);
    EXPECT_EQ(encoder.DecodeNum(2), 0.0);
}

TEST(CatNumericEncoder, Decodes) {
    const ScoreCatNumericEncoder encoder(std::vector<double>{3.0});
    EXPECT_EQ(encoder.Decode(0), "");
    EXPECT_EQ(encoder.DecodeNum(0), 3.0);
    EXPECT_EQ(encoder.DecodeNum(-1), kMissing);
    EXPECT_EQ(encoder.DecodeNum(1), kMissing);
}

TEST(KeptCatNumericEncoder, CopiesTakeNoLabels) {
    ScoreCatNumericEncoder encoder(std::vector<double>{3.0, 1.0});
    encoder.SetValueLabels({"three", "one"});
    ScoreCatNumericEncoder copy(encoder);
    EXPECT_TRUE(copy.GetValueLabels()->empty());
    EXPECT_EQ(copy.Encode(9.0), 2);
    std::unique_ptr<ScoreEncoder> clone(encoder.Clone());
    EXPECT_TRUE(clone->GetValueLabels()->empty());
    EXPECT_EQ(clone->DecodeNum(1), 1.0);
    ScoreCatNumericEncoder assigned(std::vector<double>{7.0, 8.0, 9.0});
    assigned.SetValueLabels({"seven"});
    assigned = encoder;
    EXPECT_EQ(assigned.GetNumberOfCategories(), 2);
    EXPECT_EQ(*assigned.GetValueLabels(), Texts{"seven"});
    EXPECT_EQ(assigned.Encode(7.0), 2);
}

TEST(CatNumericEncoder, LabelsGrowToTheNumberOfCategories) {
    ScoreCatNumericEncoder encoder(std::vector<double>{3.0, 1.0});
    encoder.SetValueLabel(1, "one");
    EXPECT_EQ(*encoder.GetValueLabels(), (Texts{"", "one"}));
    encoder.SetValueLabel(2, "two");
    EXPECT_EQ(*encoder.GetValueLabels(), (Texts{"", "one"}));
}

TEST(CatNumericEncoder, Displays) {
    EXPECT_EQ(Dump(ScoreCatNumericEncoder(1)),
              "\tScoreCatNumericEncoder: Last code = -1\n\t\tNumeric values of categories: \n");
    EXPECT_EQ(Dump(ScoreCatNumericEncoder(std::vector<double>{1, 2, 3, 4, 5, 6, 7, 8.5})),
              "\tScoreCatNumericEncoder: Last code = 7\n\t\tNumeric values of categories: 1 2 3 4 5 6 7 \n8.5 \n");
    EXPECT_EQ(Dump(ScoreCatNumericEncoder(std::vector<double>{1, 2, 3, 4, 5, 6, 7})),
              "\tScoreCatNumericEncoder: Last code = 6\n\t\tNumeric values of categories: 1 2 3 4 5 6 7 \n\n");
}

} // namespace
} // namespace MCVeltrane_900
