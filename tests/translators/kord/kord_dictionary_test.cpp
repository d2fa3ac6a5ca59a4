#include "support/dom.h"
#include "translators/kord/kord_reading.h"

#include <MCVeltrane_900/BaseDictionary.h>
#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreCatNumericEncoder.h>
#include <MCVeltrane_900/ScoreCatStringEncoder.h>
#include <MCVeltrane_900/ScoreVarStats.h>
#include <MCVeltrane_900/StringValue.h>

#include <type_traits>

namespace {

using namespace veltrane::tests;

using Texts = std::vector<std::string>;

class KordTranslator : public KordReading {};

TEST_F(KordTranslator, IsAbstract) {
    EXPECT_TRUE(std::is_abstract_v<KORDTranslator>);
    EXPECT_TRUE((std::is_base_of_v<BaseTranslator, KORDTranslator>));
    EXPECT_EQ(sizeof(KORDTranslator), sizeof(BaseTranslator));
}

TEST_F(KordTranslator, SharesItsTranscoderWithItsCopies) {
    const KordTestTranslator copy = kord;
    EXPECT_EQ(copy.GetTranscoder(), kord.GetTranscoder());
    KordTestTranslator assigned;
    EXPECT_EQ(assigned.GetTranscoder(), nullptr);
    assigned = kord;
    EXPECT_EQ(assigned.GetTranscoder(), kord.GetTranscoder());
}

TEST_F(KordTranslator, GivesNullOnTheRoutesThatItDoesNotServe) {
    EXPECT_EQ(
        kord.ParseFromTree(static_cast<xercesc::DOMDocument*>(nullptr), static_cast<ScoreDictionary*>(nullptr), ""),
        nullptr);
    EXPECT_EQ(kord.ParseFromTree(static_cast<xercesc::DOMElement*>(nullptr), static_cast<ScoreModel*>(nullptr), ""),
              nullptr);
}

class KordDictionary : public KordReading {};

TEST_F(KordDictionary, KeepsTheOrderOfTheDocument) {
    const Dictionary dictionary =
        ReadVariables("<!-- first --><variable name='b' storage-type='STRING' measurement-level='NOMINAL'/>text"
                      "<variable name='a' storage-type='NUMERIC' measurement-level='CONTINUOUS'/>");
    EXPECT_NE(dynamic_cast<BaseDictionary*>(dictionary.get()), nullptr);
    EXPECT_EQ(dictionary->GetVarNames(), (Texts{"b", "a"}));
    EXPECT_EQ(dictionary->Size(), 2);
    const ScoreDictVar* var = dictionary->GetVar("a");
    EXPECT_NE(dynamic_cast<const DictVar*>(var), nullptr);
    EXPECT_EQ(var->GetName(), "a");
}

TEST_F(KordDictionary, TypesAreStringOrNumeric) {
    EXPECT_EQ(ReadVariable(TextVariable(""))->GetVarType(), ScoreDictVar::STRING_VAR);
    EXPECT_EQ(ReadVariable(NumberVariable(""))->GetVarType(), ScoreDictVar::kNUMERIC_VAR);
    EXPECT_EQ(ReadVariable("<variable name='v' storage-type='string' measurement-level='CONTINUOUS'/>")->GetVarType(),
              ScoreDictVar::kNUMERIC_VAR);
}

TEST_F(KordDictionary, LevelsAreThree) {
    EXPECT_EQ(ReadVariable(NumberVariable("", "CONTINUOUS"))->GetMLevel(), 0);
    EXPECT_EQ(ReadVariable(NumberVariable("", "ORDINAL"))->GetMLevel(), 1);
    EXPECT_EQ(ReadVariable(NumberVariable("", "NOMINAL"))->GetMLevel(), 2);
}

TEST_F(KordDictionary, VariableWithoutLabelCarriesItsNameAsLabel) {
    const std::string attributes = " storage-type='NUMERIC' measurement-level='ORDINAL'";
    EXPECT_EQ(ReadVariable("<variable name='v'" + attributes + "/>")->GetLabel(), "v");
    EXPECT_EQ(ReadVariable("<variable name='v' label=''" + attributes + "/>")->GetLabel(), "v");
    EXPECT_EQ(ReadVariable("<variable name='v' label=' '" + attributes + "/>")->GetLabel(), " ");
    EXPECT_EQ(ReadVariable("<variable name='v' label='V'" + attributes + "/>")->GetLabel(), "V");
}

TEST_F(KordDictionary, TextsComeThroughTheTranscoder) {
    const std::string variable = "<variable name='Gr&#246;&#223;e' label='&#228;' storage-type='STRING' "
                                 "measurement-level='ORDINAL'><categories><category value='&#252;' "
                                 "display-value='&#220;'/></categories></variable>";
    const ScoreDictVar* var = ReadVariable(variable);
    EXPECT_EQ(var->GetName(), "Größe");
    EXPECT_EQ(var->GetLabel(), "ä");
    EXPECT_EQ(Labels(var), Texts{"'ü'=Ü"});

    KordTestTranslator latin;
    latin.CreateTranscoder("");
    const auto document = ParseXml("<dictionary>" + variable + "</dictionary>");
    const Dictionary dictionary(latin.ParseDictionary(document.Root()));
    EXPECT_EQ(dictionary->GetVarNames(), Texts{"Gr\366\337e"});
}

TEST_F(KordDictionary, IsReadWithoutATranscoderToo) {
    KordTestTranslator plain;
    const auto document = ParseXml("<dictionary>" + TextVariable("") + "</dictionary>");
    const Dictionary dictionary(plain.ParseDictionary(document.Root()));
    EXPECT_EQ(dictionary->GetVarNames(), Texts{"v"});
    EXPECT_EQ(plain.GetTranscoder(), nullptr);
}

TEST_F(KordDictionary, DateTimesFlagsAndMeasuresAreLeftAlone) {
    const ScoreDictVar* var = ReadVariable(TextVariable(""));
    EXPECT_EQ(var->GetDateTimeType(), ScoreDictVar::DT_NONE);
    EXPECT_EQ(var->GetNumericDataType(), ScoreDictVar::NUM_UNSPECIFIED);
    EXPECT_FALSE(var->GetNoSpaceTrim());
    EXPECT_FALSE(var->GetEmptyStringOK());
    EXPECT_FALSE(var->IsEmptyCateValues());
}

class KordCategories : public KordReading {};

TEST_F(KordCategories, CategoryWithoutDisplayValueCarriesItsValue) {
    const ScoreDictVar* var =
        ReadVariable(TextVariable("<categories><category value='a' display-value='A'/><category value='b'/>"
                                  "<category value='c' display-value=''/></categories>"));
    EXPECT_EQ(Labels(var), (Texts{"'a'=A", "'b'=b", "'c'=c"}));
}

TEST_F(KordCategories, OfNumbersAreNumbersLabelledAsWritten) {
    const ScoreDictVar* var = ReadVariable(
        NumberVariable("<categories><category value='1.50'/><category value=' -2'/></categories>", "CONTINUOUS"));
    EXPECT_EQ(Labels(var), (Texts{"1.5=1.50", "-2= -2"}));
    EXPECT_EQ(var->GetEncoder(), nullptr);
}

TEST_F(KordCategories, MayBeEmptyTextsAndTwins) {
    EXPECT_EQ(Labels(ReadVariable(TextVariable("<categories><category value=''/><category value='a'/>"
                                               "<category value='a'/></categories>"))),
              (Texts{"''=", "'a'=a", "'a'=a"}));
}

TEST_F(KordCategories, MayBeNone) {
    const ScoreDictVar* var = ReadVariable(TextVariable("<categories/>"));
    ASSERT_NE(var->GetValueLabels(), nullptr);
    EXPECT_EQ(var->GetNumberOfCats(), 0);
    EXPECT_EQ(ReadVariable(TextVariable(""))->GetValueLabels(), nullptr);
}

TEST_F(KordCategories, OfASecondElementReplaceTheFirst) {
    EXPECT_EQ(Labels(ReadVariable(TextVariable("<categories><category value='a'/></categories>"
                                               "<categories><category value='b'/></categories>"))),
              Texts{"'b'=b"});
}

TEST_F(KordCategories, AreLearntByTheEncoderOfAText) {
    const ScoreDictVar* var =
        ReadVariable(TextVariable("<categories><category value='x'/><category value='y '/></categories>"));
    const auto* encoder = dynamic_cast<const ScoreCatStringEncoder*>(var->GetEncoder());
    ASSERT_NE(encoder, nullptr);
    EXPECT_EQ(encoder->GetNumberOfCategories(), 2);
    EXPECT_EQ(encoder->EncodeConst("y"), 1);
    EXPECT_EQ(encoder->EncodeConst("z"), -1);
    EXPECT_NE(ReadVariable(TextVariable("", "ORDINAL"))->GetEncoder(), nullptr);
}

TEST_F(KordCategories, GiveNumbersNoEncoder) {
    EXPECT_EQ(ReadVariable(NumberVariable("<categories><category value='1'/></categories>"))->GetEncoder(), nullptr);
}

TEST_F(KordCategories, AreSetUpInAnEncoderOnDemand) {
    EXPECT_FALSE(kord.SetupCatEncoder(nullptr));
    EXPECT_FALSE(kord.SetupCatEncoder(ReadVariable(NumberVariable("", "CONTINUOUS"))));
    ScoreDictVar* var =
        ReadVariable(NumberVariable("<categories><category value='7'/><category value='5'/></categories>"));
    EXPECT_TRUE(kord.SetupCatEncoder(var));
    const auto* encoder = dynamic_cast<const ScoreCatNumericEncoder*>(var->GetEncoder());
    ASSERT_NE(encoder, nullptr);
    const NumericValue five(5);
    EXPECT_EQ(encoder->EncodeConst(&five), 1);
    EXPECT_TRUE(kord.SetupCatEncoder(var));
    EXPECT_EQ(var->GetEncoder(), encoder);
    EXPECT_EQ(encoder->GetNumberOfCategories(), 2);
}

class KordMissingValues : public KordReading {};

TEST_F(KordMissingValues, AreSinglesAndRanges) {
    const std::string children = "<missing-values><category value='9'/><range><category value='-2'/>"
                                 "<category value='-1'/></range><other/></missing-values>";
    EXPECT_EQ(MissingRanges(ReadVariable(NumberVariable(children))), (Texts{"[9, 9]", "[-2, -1]"}));
    EXPECT_EQ(MissingRanges(ReadVariable(TextVariable(children))), (Texts{"['9', '9']", "['-2', '-1']"}));
}

TEST_F(KordMissingValues, OfARangeAreItsFirstTwoElementsWhateverTheirTag) {
    EXPECT_EQ(MissingRanges(ReadVariable(NumberVariable("<missing-values><range>text<low value='1'/><!-- --><high "
                                                        "value='2'/><category value='3'/></range></missing-values>"))),
              Texts{"[1, 2]"});
}

TEST_F(KordMissingValues, ThatComeTwiceAreKeptOnce) {
    EXPECT_EQ(MissingRanges(ReadVariable(NumberVariable(
                  "<missing-values><category value='1'/><category value='1.0'/><range><category value='1'/>"
                  "<category value='1'/></range><category value='2'/></missing-values>"))),
              (Texts{"[1, 1]", "[2, 2]"}));
}

TEST_F(KordMissingValues, MayBeNone) {
    const ScoreDictVar* var = ReadVariable(TextVariable("<missing-values/>"));
    ASSERT_NE(var->GetMissingValues(), nullptr);
    EXPECT_EQ(MissingRanges(var), Texts{});
    EXPECT_EQ(ReadVariable(TextVariable(""))->GetMissingValues(), nullptr);
}

TEST_F(KordMissingValues, OfASecondElementReplaceTheFirst) {
    EXPECT_EQ(MissingRanges(ReadVariable(NumberVariable("<missing-values><category value='1'/></missing-values>"
                                                        "<missing-values><category value='2'/></missing-values>"))),
              Texts{"[2, 2]"});
}

TEST_F(KordMissingValues, MayBeOtherThanTheCategories) {
    const ScoreDictVar* var = ReadVariable(TextVariable("<missing-values><category value='x'/></missing-values>"
                                                        "<categories><category value='a'/></categories>"));
    const StringValue missing("x");
    const StringValue valid("a");
    EXPECT_TRUE(var->IsMissingValue(&missing));
    EXPECT_TRUE(var->IsValidValue(&valid));
}

class KordStatistics : public KordReading {
protected:
    static Texts Of(const ScoreDictVar* var) {
        const ScoreVarStats* stats = var->GetVarStats();
        Texts texts;
        for (const double number : {stats->GetMin(), stats->GetMax(), stats->GetMean(), stats->GetStddev()}) {
            texts.push_back(number == NumericValue::GetSysmisValue() ? "." : NumericValue(number).GetString());
        }
        return texts;
    }
};

TEST_F(KordStatistics, AreFour) {
    EXPECT_EQ(Of(ReadVariable(NumberVariable("<var-stats minimum='1' maximum='4' mean='2' standard-deviation='0.5' "
                                             "median='x' inter-quartile-range='x'/>"))),
              (Texts{"1", "4", "2", "0.5"}));
}

TEST_F(KordStatistics, ThatAreAbsentOrEmptyAreMissing) {
    EXPECT_EQ(Of(ReadVariable(NumberVariable("<var-stats minimum='' mean='3'/>"))), (Texts{".", ".", "3", "."}));
    EXPECT_EQ(ReadVariable(NumberVariable(""))->GetVarStats(), nullptr);
}

TEST_F(KordStatistics, OfASecondElementReplaceTheFirst) {
    EXPECT_EQ(Of(ReadVariable(NumberVariable("<var-stats minimum='1'/><var-stats mean='3'/>"))),
              (Texts{".", ".", "3", "."}));
}

class KordFormat : public KordReading {};

TEST_F(KordFormat, GivesDecimalsAndWidth) {
    const ScoreDictVar* var = ReadVariable(NumberVariable("<format-spec decimals='2' width=' 8 ' format='F'/>"));
    EXPECT_EQ(var->GetDecimal(), 2);
    EXPECT_EQ(var->GetWidth(), 8);
}

TEST_F(KordFormat, ThatIsAbsentLeavesBothUnset) {
    const ScoreDictVar* var = ReadVariable(NumberVariable(""));
    EXPECT_EQ(var->GetDecimal(), -1);
    EXPECT_EQ(var->GetWidth(), -1);
}

TEST_F(KordFormat, TakesNumbersOfEitherSign) {
    const ScoreDictVar* var = ReadVariable(NumberVariable("<format-spec decimals='-2' width='+8'/>"));
    EXPECT_EQ(var->GetDecimal(), -2);
    EXPECT_EQ(var->GetWidth(), 8);
}

} // namespace
