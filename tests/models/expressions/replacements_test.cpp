// What stands in for a missing argument or result of a function is of the type of the result where that is known.
#include "models/columns/column_document.h"
#include "models/kit/scoring.h"
#include "support/faults/failure.h"
#include "support/rows.h"

#include <gtest/gtest.h>

#include <string>

using namespace veltrane::tests;
using enum MCVeltrane_900::Message;

namespace {

/// The text of an expression over fields that are missing, but for the truth value b.
std::string DictionaryOf(const std::string& expression, const std::string& type) {
    return "<PMML version='4.4'><DataDictionary><DataField name='s' optype='categorical' dataType='string'/>"
           "<DataField name='x' optype='continuous' dataType='double'/>"
           "<DataField name='b' optype='categorical' dataType='boolean'/>"
           "<DataField name='day' optype='ordinal' dataType='date'/></DataDictionary><TransformationDictionary>"
           "<DefineFunction name='same' dataType='string'><ParameterField name='p' dataType='string'/>"
           "<FieldRef field='p'/></DefineFunction>"
           "<DefineFunction name='either'><ParameterField name='p' dataType='string'/><Apply function='if'>"
           "<Constant dataType='boolean'>true</Constant><FieldRef field='p'/><Constant dataType='string'>x</Constant>"
           "</Apply></DefineFunction>"
           "<DefineFunction name='twice' dataType='double'><ParameterField name='p' dataType='double'/>"
           "<Apply function='+'><FieldRef field='p'/><FieldRef field='p'/></Apply></DefineFunction>"
           "<DerivedField name='r' optype='categorical' dataType='" +
           type + "'>" + expression + "</DerivedField></TransformationDictionary>";
}

std::string DocumentOf(const std::string& expression, const std::string& type) {
    return DictionaryOf(expression, type) +
           "<RegressionModel functionName='regression'><MiningSchema><MiningField name='s'/><MiningField name='x'/>"
           "<MiningField name='b'/><MiningField name='day'/></MiningSchema><Output><OutputField name='o' "
           "feature='transformedValue' dataType='string'><FieldRef field='r'/></OutputField></Output>"
           "<RegressionTable intercept='1'/></RegressionModel></PMML>";
}

const std::string kS = "<FieldRef field='s'/>";
const std::string kX = "<FieldRef field='x'/>";
const std::string kDay = "<FieldRef field='day'/>";
const std::string kMissingConstant = "<Constant missing='true'/>";

/// A call of a function with something that stands in.
std::string Call(const std::string& function, const std::string& attributes, const std::string& arguments) {
    return "<Apply function='" + function + "' " + attributes + ">" + arguments + "</Apply>";
}

std::string If(const std::string& attributes, const std::string& branches) {
    return Call("if", attributes, "<FieldRef field='b'/>" + branches);
}

std::string Shown(const std::string& expression) {
    return "<Apply function='concat'>" + expression + "<Constant>!</Constant></Apply>";
}

struct Row {
    const char* name;
    std::string expression;
    const char* text;
};

class Replacement : public testing::TestWithParam<Row> {};

TEST_P(Replacement, IsOfTheTypeOfTheResult) {
    Scored scored(DocumentOf(GetParam().expression, "string"));
    ASSERT_TRUE(scored.Score({{"b", "true"}}).IsOK());
    EXPECT_EQ(scored.Text("o"), GetParam().text);
}

TEST_P(Replacement, IsTheSameInColumns) {
    Random random(20283);
    for (const bool hasDictionary : {false, true}) {
        ColumnDocument document(DictionaryOf(GetParam().expression, "string") + "</PMML>");
        document.Fill(random, 50);
        document.Check(7, 3, hasDictionary);
    }
}

const std::string kMaps = "mapMissingTo='007'";
const std::string kDefaults = "defaultValue='007'";

const Row kRows[] = {
    {"MappedTextOfIf", If(kMaps, kS + kS), "007"},
    {"DefaultTextOfIf", If(kDefaults, kS + kS), "007"},
    {"TextOfIfWithOneBranch", If(kDefaults, kS), "007"},
    {"TextWithinAnother", Shown(If("defaultValue=' 1.50'", kS + kS)), " 1.50!"},
    {"TextBesideAMissingConstant", Shown(If(kDefaults, kMissingConstant + kS)), "007!"},
    {"TextBeforeAMissingConstant", Shown(If(kMaps, kS + kMissingConstant)), "007!"},
    {"MissingConstantAlone", If(kDefaults, kMissingConstant), "007"},
    {"MissingConstantWithinAnother", Shown(If(kDefaults, kMissingConstant)), "7!"},
    {"SeveralTypesOfATextField", If(kDefaults, kS + kX), "007"},
    {"SeveralTypesWithinAnother", Shown(If(kDefaults, kS + kX)), "7!"},
    {"MappedTextOfADefinedFunction", Shown(Call("same", kMaps, kS)), "007!"},
    {"DefaultTextOfADefinedFunction", Shown(Call("same", kDefaults, kS)), "007!"},
    {"DefaultTextOfABody", Shown(Call("either", kDefaults, kS)), "007!"},
    {"DefaultNumberOfADefinedFunction", Shown(Call("twice", kDefaults, kX)), "7!"},
    {"Number", Shown(Call("+", kDefaults, kX + kX)), "7!"},
    {"NumberOfATextField", Call("+", kMaps, kX + kX), "7"},
    {"NoNumber", Shown(Call("+", "defaultValue='none'", kX + kX)), "none!"},
    {"TruthValue", Shown(Call("equal", "mapMissingTo='0'", kX + kX)), "false!"},
    {"NoTruthValue", Shown(Call("equal", "mapMissingTo='7'", kX + kX)), "7!"},
    {"Date", Shown(If("defaultValue='2020-1-2'", kDay)), "2020-01-02!"},
    {"MapsBeforeItDefaults", Shown(If("mapMissingTo='01' defaultValue='02'", kS + kS)), "01!"},
};
INSTANTIATE_TEST_SUITE_P(Types, Replacement, testing::ValuesIn(kRows), NameOfRow());

TEST(ReplacementOfADefinedFunction, IsOfItsType) {
    for (const char* attribute : {"mapMissingTo", "defaultValue"}) {
        const std::string call = Call("twice", std::string(attribute) + "='none'", kX);
        ExpectFailure([&] { ReadModel(DocumentOf(Shown(call), "string")); },
                      {INVALID_ATTRIBUTE_VALUE_IN, "none", attribute, "Apply"});
    }
}

} // namespace
