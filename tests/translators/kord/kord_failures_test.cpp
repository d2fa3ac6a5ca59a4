#include "support/dom.h"
#include "support/faults/fault.h"
#include "support/rows.h"
#include "translators/kord/kord_reading.h"

#include <xercesc/util/NumberFormatException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLString.hpp>

namespace {

using namespace veltrane::tests;

const std::string kValid = "<variable name='g' storage-type='STRING' measurement-level='ORDINAL'/>";

std::string Categories(const std::string& children) {
    return "<categories>" + children + "</categories>";
}

std::string Missing(const std::string& children) {
    return "<missing-values>" + children + "</missing-values>";
}

class KordFailures : public KordReading {};

TEST_F(KordFailures, WithoutAnElement) {
    ExpectFailure([&] { kord.ParseDictionary(nullptr); }, {MISSING_NODE_IN, "dictionary", "kord-ml"});
}

TEST_F(KordFailures, DictionaryWithoutVariable) {
    ExpectKordFault("", {NO_CHILD_ELEMENT, "dictionary"});
    ExpectKordFault("text<!-- comment -->", {NO_CHILD_ELEMENT, "dictionary"});
}

TEST_F(KordFailures, LeaveTheTranslatorUsable) {
    ExpectKordFault("<variable/>", {MISSING_ATTRIBUTE_OF, "name", "variable"});
    EXPECT_EQ(ReadVariables(kValid)->Size(), 1);
}

TEST_F(KordFailures, OfAStrangeChild) {
    ExpectKordFault(kValid + "<Extension/>", {UNEXPECTED_NODE_IN, "Extension", "variable", "dictionary"});
    ExpectKordFault("<Variable/>", {UNEXPECTED_NODE_IN, "Variable", "variable", "dictionary"});
}

TEST_F(KordFailures, OfNames) {
    const std::string rest = " storage-type='STRING' measurement-level='ORDINAL'/>";
    ExpectKordFault("<variable" + rest, {MISSING_ATTRIBUTE_OF, "name", "variable"});
    ExpectKordFault("<variable name=''" + rest, {NULL_ATTRIBUTE, "name", "variable"});
    ExpectKordFault(kValid + kValid, {DUPLICATE_VARIABLE_IN, "g", "dictionary"});
}

TEST_F(KordFailures, OfStorageTypes) {
    ExpectKordFault("<variable name='v' measurement-level='ORDINAL'/>",
                    {MISSING_ATTRIBUTE_OF, "storage-type", "variable"});
    ExpectKordFault("<variable name='v' storage-type='' measurement-level='ORDINAL'/>",
                    {NULL_ATTRIBUTE, "storage-type", "variable"});
}

TEST_F(KordFailures, OfLevels) {
    ExpectKordFault("<variable name='v' storage-type='NUMERIC'/>",
                    {MISSING_ATTRIBUTE_OF, "measurement-level", "variable"});
    ExpectKordFault(NumberVariable("", ""), {NULL_ATTRIBUTE, "measurement-level", "variable"});
    ExpectKordFault(NumberVariable("", "nominal"), {INVALID_ATTRIBUTE_VALUE, "nominal", "measurement-level"});
    ExpectKordFault(NumberVariable("", "UNKNOWN"), {INVALID_ATTRIBUTE_VALUE, "UNKNOWN", "measurement-level"});
}

TEST_F(KordFailures, StringVariableThatIsContinuous) {
    ExpectKordFault(TextVariable("", "CONTINUOUS"),
                    {CONFLICTING_VALUES, "CONTINUOUS", "measurement-level", "STRING", "storage-type"});
}

TEST_F(KordFailures, OfAStrangeChildOfAVariable) {
    ExpectKordFault(TextVariable("<stats/>"), {INVALID_TAG, "stats"});
    ExpectKordFault(TextVariable("<category value='a'/>"), {INVALID_TAG, "category"});
}

TEST_F(KordFailures, OfCategories) {
    ExpectKordFault(TextVariable(Categories("<value/>")), {INVALID_ATTRIBUTE_VALUE, "value", "category"});
    ExpectKordFault(TextVariable(Categories("<category/>")), {MISSING_ATTRIBUTE_OF, "value", "category"});
    ExpectKordFault(NumberVariable(Categories("<category value=''/>")), {INVALID_VALUE_OF_TYPE, "", "double"});
    ExpectKordFault(NumberVariable(Categories("<category value='one'/>")), {INVALID_VALUE_OF_TYPE, "one", "double"});
}

TEST_F(KordFailures, OfSingleMissingValues) {
    ExpectKordFault(TextVariable(Missing("<category/>")), {NULL_ATTRIBUTE, "value", "category"});
    ExpectKordFault(TextVariable(Missing("<category value=''/>")), {NULL_ATTRIBUTE, "value", "category"});
    ExpectKordFault(NumberVariable(Missing("<category value='x'/>")), {INVALID_VALUE_OF_TYPE, "x", "double"});
}

TEST_F(KordFailures, RangeWithoutChildren) {
    ExpectKordFault(NumberVariable(Missing("<range/>")), {MISSING_MINIMUM, "category", "range"});
}

TEST_F(KordFailures, RangeWithOneChild) {
    ExpectKordFault(NumberVariable(Missing("<range><category value='1'/></range>")),
                    {MISSING_MAXIMUM, "category", "range"});
}

TEST_F(KordFailures, OfBoundsWithoutAValue) {
    constexpr Failure kFailure{MISSING_ATTRIBUTE_OF, "value", "category"};
    ExpectKordFault(NumberVariable(Missing("<range><low value=''/><high value='1'/></range>")), kFailure);
    ExpectKordFault(NumberVariable(Missing("<range><low/><high value='1'/></range>")), kFailure);
    ExpectKordFault(NumberVariable(Missing("<range><low value='1'/><high/></range>")), kFailure);
    ExpectKordFault(TextVariable(Missing("<range><low value='1'/><high value=''/></range>")), kFailure);
}

TEST_F(KordFailures, OfBoundsThatAreNoNumbers) {
    ExpectKordFault(NumberVariable(Missing("<range><low value='1'/><high value='b'/></range>")),
                    {INVALID_VALUE_OF_TYPE, "b", "double"});
}

TEST_F(KordFailures, OfStatistics) {
    for (const char* name : {"minimum", "maximum", "mean", "standard-deviation"}) {
        ExpectKordFault(NumberVariable(std::string("<var-stats ") + name + "='x'/>"),
                        {INVALID_VALUE_OF_TYPE, "x", "double"});
    }
}

TEST_F(KordFailures, EmptyCategoriesBesideMissingValues) {
    const std::string missing = Missing("<category value='x'/>");
    ExpectKordFault(TextVariable("<categories/>" + missing), {MISSING_VALUE_LIST, "v"});
    ExpectKordFault(TextVariable(Missing("") + "<categories/>"), {MISSING_VALUE_LIST, "v"});
    ExpectKordFault(TextVariable(Categories("<category value='a'/>") + missing + "<categories/>"),
                    {MISSING_VALUE_LIST, "v"});
}

TEST_F(KordFailures, MissingValueEqualToACategory) {
    const std::string categories = Categories("<category value='a'/><category value='b'/><category value='c'/>");
    ExpectKordFault(TextVariable(categories + Missing("<category value='b'/>")), {NTH_VALUE_INTERSECTS, "1", "v"});
    ExpectKordFault(TextVariable(Missing("<category value='c'/><category value='a '/>") + categories),
                    {NTH_VALUE_INTERSECTS, "0", "v"});
}

TEST_F(KordFailures, CategoryThatIsSystemMissing) {
    ExpectKordFault(
        NumberVariable(Categories("<category value='1'/><category value='-1.7976931348623157e308'/>") + Missing("")),
        {NTH_VALUE_INTERSECTS, "1", "v"});
    EXPECT_EQ(ReadVariable(NumberVariable(Categories("<category value='-1e999'/>")))->GetNumberOfCats(), 1);
}

TEST(KordFormatFailures, OutliveTheXmlPlatform) {
    // The platform as the factory runs it: started for the call, ended when the exception has left it.
    std::string text;
    try {
        struct Platform {
            Platform() { xercesc::XMLPlatformUtils::Initialize(); }
            ~Platform() { xercesc::XMLPlatformUtils::Terminate(); }
        } platform;
        const auto document = [] {
            auto* implementation = xercesc::DOMImplementationRegistry::getDOMImplementation(u"");
            return implementation->createDocument(nullptr, u"dictionary", nullptr);
        }();
        struct Release {
            xercesc::DOMDocument* document;
            ~Release() { document->release(); }
        } release{document};
        xercesc::DOMElement* variable = document->createElement(u"variable");
        variable->setAttribute(u"name", u"v");
        variable->setAttribute(u"storage-type", u"NUMERIC");
        variable->setAttribute(u"measurement-level", u"ORDINAL");
        variable->appendChild(document->createElement(u"format-spec"));
        document->getDocumentElement()->appendChild(variable);
        veltrane::tests::KordTestTranslator().ParseDictionary(document->getDocumentElement());
    } catch (const xercesc::NumberFormatException& failure) {
        for (const XMLCh* at = failure.getMessage(); *at != 0; ++at) {
            text += static_cast<char>(*at);
        }
    }
    EXPECT_NE(text, "");
}

using KeptKordFormat = KordReading;

TEST_F(KeptKordFormat, WithoutAnIntegerFailsOutsideTheCatalogue) {
    for (const char* attributes : {"decimals='2'", "decimals='2' width=''", "width='8'", "", "decimals='2' width='x'",
                                   "decimals='2.0' width='8'", "decimals='2' width='99999999999999999999'"}) {
        EXPECT_THROW(ReadVariables(NumberVariable(std::string("<format-spec ") + attributes + "/>")),
                     xercesc::NumberFormatException)
            << attributes;
    }
}

using KeptKordMissingValues = KordReading;

TEST_F(KeptKordMissingValues, OfANumberDoNotClashWithItsCategories) {
    const ScoreDictVar* var =
        ReadVariable(NumberVariable(Categories("<category value='1'/>") + Missing("<category value='1'/>")));
    EXPECT_EQ(MissingRanges(var), std::vector<std::string>{"[1, 1]"});
    EXPECT_EQ(var->GetNumberOfCats(), 1);
}

TEST_F(KeptKordMissingValues, HaveNoWordsForOpenBounds) {
    for (const std::string word : {"LOWEST", "HIGHEST", "INF", "-INF", "NaN"}) {
        ExpectKordFault(NumberVariable(Missing("<range><category value='" + word + "'/><category value='1'/></range>")),
                        {INVALID_VALUE_OF_TYPE, word.c_str(), "double"});
    }
}

using KeptKordCategories = KordReading;

TEST_F(KeptKordCategories, AreNamedAnAttributeInTheMessageOfAStrangeTag) {
    ExpectKordFault(TextVariable(Categories("<Category value='a'/>")),
                    {INVALID_ATTRIBUTE_VALUE, "Category", "category"});
}

class FirstOfTwoKordFaults : public KordReading, public testing::WithParamInterface<Fault> {};

TEST_P(FirstOfTwoKordFaults, IsReported) {
    ExpectKordFault(GetParam().document, GetParam().failure);
}

const Fault kTwoFaults[] = {
    {"StorageTypeBeforeAnEmptyName", "<variable name='' measurement-level='x'/>",
     Failure(MISSING_ATTRIBUTE_OF, "storage-type", "variable")},
    {"EmptyNameBeforeAnEmptyStorageType", "<variable name='' storage-type=''/>",
     Failure(NULL_ATTRIBUTE, "name", "variable")},
    {"DuplicateBeforeLevel", kValid + "<variable name='g' storage-type='STRING'/>",
     Failure(DUPLICATE_VARIABLE_IN, "g", "dictionary")},
    {"LevelBeforeChildren", NumberVariable("<x/>", "x"), Failure(INVALID_ATTRIBUTE_VALUE, "x", "measurement-level")},
    {"ContinuousStringBeforeChildren", TextVariable("<x/>", "CONTINUOUS"),
     Failure(CONFLICTING_VALUES, "CONTINUOUS", "measurement-level", "STRING", "storage-type")},
    {"FirstChildBeforeSecond", NumberVariable(Categories("<category value='x'/>") + "<x/>"),
     Failure(INVALID_VALUE_OF_TYPE, "x", "double")},
    {"SecondBoundBeforeTheValueOfTheFirst", NumberVariable(Missing("<range><category/></range>")),
     Failure(MISSING_MAXIMUM, "category", "range")},
    {"EmptyUpperBoundBeforeTheNumberOfTheLower",
     NumberVariable(Missing("<range><low value='x'/><high value=''/></range>")),
     Failure(MISSING_ATTRIBUTE_OF, "value", "category")},
    {"ChildrenBeforeIntersection",
     TextVariable(Missing("<category value='a'/>") + Categories("<category value='a'/>") + "<x/>"),
     Failure(INVALID_TAG, "x")},
    {"FirstVariableBeforeSecond", TextVariable("<x/>") + "<y/>", Failure(INVALID_TAG, "x")},
};

INSTANTIATE_TEST_SUITE_P(Rows, FirstOfTwoKordFaults, testing::ValuesIn(kTwoFaults), veltrane::tests::NameOfRow());

} // namespace
