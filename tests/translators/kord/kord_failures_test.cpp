#include "support/dom.h"
#include "support/failure.h"
#include "translators/kord/kord_reading.h"

#include <xercesc/util/NumberFormatException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLString.hpp>

namespace {

using namespace MCVeltrane_900;
using veltrane::tests::ExpectFailure;
using veltrane::tests::KordReading;
using veltrane::tests::NumberVariable;
using veltrane::tests::TextVariable;

const std::string kValid = "<variable name='g' storage-type='STRING' measurement-level='ORDINAL'/>";

std::string Categories(const std::string& children) {
    return "<categories>" + children + "</categories>";
}

std::string Missing(const std::string& children) {
    return "<missing-values>" + children + "</missing-values>";
}

class KordFailures : public KordReading {};

TEST_F(KordFailures, WithoutAnElement) {
    ExpectFailure([&] { kord.ParseDictionary(nullptr); }, 260115,
                  "Missing node of 'dictionary' element  in 'kord-ml'.");
}

TEST_F(KordFailures, DictionaryWithoutVariable) {
    ExpectKordFault("", 260283, "No child element in Node 'dictionary'.");
    ExpectKordFault("text<!-- comment -->", 260283, "No child element in Node 'dictionary'.");
}

TEST_F(KordFailures, LeaveTheTranslatorUsable) {
    ExpectKordFault("<variable/>", 260120, "Missing the attribute 'name' of 'variable'.");
    EXPECT_EQ(ReadVariables(kValid)->Size(), 1);
}

TEST_F(KordFailures, OfAStrangeChild) {
    ExpectKordFault(kValid + "<Extension/>", 260178, "Invalid node 'Extension', expect 'variable' in 'dictionary'.");
    ExpectKordFault("<Variable/>", 260178, "Invalid node 'Variable', expect 'variable' in 'dictionary'.");
}

TEST_F(KordFailures, OfNames) {
    const std::string rest = " storage-type='STRING' measurement-level='ORDINAL'/>";
    ExpectKordFault("<variable" + rest, 260120, "Missing the attribute 'name' of 'variable'.");
    ExpectKordFault("<variable name=''" + rest, 260285, "The 'name' of element 'variable' is null.");
    ExpectKordFault(kValid + kValid, 260202, "Duplicate definition of variable 'g', already in 'dictionary'.");
}

TEST_F(KordFailures, OfStorageTypes) {
    ExpectKordFault("<variable name='v' measurement-level='ORDINAL'/>", 260120,
                    "Missing the attribute 'storage-type' of 'variable'.");
    ExpectKordFault("<variable name='v' storage-type='' measurement-level='ORDINAL'/>", 260285,
                    "The 'storage-type' of element 'variable' is null.");
}

TEST_F(KordFailures, OfLevels) {
    ExpectKordFault("<variable name='v' storage-type='NUMERIC'/>", 260120,
                    "Missing the attribute 'measurement-level' of 'variable'.");
    ExpectKordFault(NumberVariable("", ""), 260285, "The 'measurement-level' of element 'variable' is null.");
    ExpectKordFault(NumberVariable("", "nominal"), 260152, "Invalid value 'nominal' of attribute 'measurement-level'.");
    ExpectKordFault(NumberVariable("", "UNKNOWN"), 260152, "Invalid value 'UNKNOWN' of attribute 'measurement-level'.");
}

TEST_F(KordFailures, StringVariableThatIsContinuous) {
    ExpectKordFault(TextVariable("", "CONTINUOUS"), 260211,
                    "Conflict setting between the value 'CONTINUOUS' of attribute 'measurement-level' and the value "
                    "'STRING' of attribute 'storage-type'.");
}

TEST_F(KordFailures, OfAStrangeChildOfAVariable) {
    ExpectKordFault(TextVariable("<stats/>"), 260154, "Invalid tag: 'stats'.");
    ExpectKordFault(TextVariable("<category value='a'/>"), 260154, "Invalid tag: 'category'.");
}

TEST_F(KordFailures, OfCategories) {
    ExpectKordFault(TextVariable(Categories("<value/>")), 260152, "Invalid value 'value' of attribute 'category'.");
    ExpectKordFault(TextVariable(Categories("<category/>")), 260120, "Missing the attribute 'value' of 'category'.");
    ExpectKordFault(NumberVariable(Categories("<category value=''/>")), 260151,
                    "The value: '' is invalid of type: 'double'.");
    ExpectKordFault(NumberVariable(Categories("<category value='one'/>")), 260151,
                    "The value: 'one' is invalid of type: 'double'.");
}

TEST_F(KordFailures, OfSingleMissingValues) {
    ExpectKordFault(TextVariable(Missing("<category/>")), 260285, "The 'value' of element 'category' is null.");
    ExpectKordFault(TextVariable(Missing("<category value=''/>")), 260285,
                    "The 'value' of element 'category' is null.");
    ExpectKordFault(NumberVariable(Missing("<category value='x'/>")), 260151,
                    "The value: 'x' is invalid of type: 'double'.");
}

TEST_F(KordFailures, RangeWithoutChildren) {
    ExpectKordFault(NumberVariable(Missing("<range/>")), 260117, "Missing minimum 'category' in 'range'.");
}

TEST_F(KordFailures, RangeWithOneChild) {
    ExpectKordFault(NumberVariable(Missing("<range><category value='1'/></range>")), 260118,
                    "Missing maximum 'category' in 'range'.");
}

TEST_F(KordFailures, OfBoundsWithoutAValue) {
    const std::string text = "Missing the attribute 'value' of 'category'.";
    ExpectKordFault(NumberVariable(Missing("<range><low value=''/><high value='1'/></range>")), 260120, text);
    ExpectKordFault(NumberVariable(Missing("<range><low/><high value='1'/></range>")), 260120, text);
    ExpectKordFault(NumberVariable(Missing("<range><low value='1'/><high/></range>")), 260120, text);
    ExpectKordFault(TextVariable(Missing("<range><low value='1'/><high value=''/></range>")), 260120, text);
}

TEST_F(KordFailures, OfBoundsThatAreNoNumbers) {
    ExpectKordFault(NumberVariable(Missing("<range><low value='1'/><high value='b'/></range>")), 260151,
                    "The value: 'b' is invalid of type: 'double'.");
}

TEST_F(KordFailures, OfStatistics) {
    for (const char* name : {"minimum", "maximum", "mean", "standard-deviation"}) {
        ExpectKordFault(NumberVariable(std::string("<var-stats ") + name + "='x'/>"), 260151,
                        "The value: 'x' is invalid of type: 'double'.");
    }
}

TEST_F(KordFailures, EmptyCategoriesBesideMissingValues) {
    const std::string missing = Missing("<category value='x'/>");
    ExpectKordFault(TextVariable("<categories/>" + missing), 260126, "Required value list for variable: 'v'.");
    ExpectKordFault(TextVariable(Missing("") + "<categories/>"), 260126, "Required value list for variable: 'v'.");
    ExpectKordFault(TextVariable(Categories("<category value='a'/>") + missing + "<categories/>"), 260126,
                    "Required value list for variable: 'v'.");
}

TEST_F(KordFailures, MissingValueEqualToACategory) {
    const std::string categories = Categories("<category value='a'/><category value='b'/><category value='c'/>");
    ExpectKordFault(TextVariable(categories + Missing("<category value='b'/>")), 260292,
                    "The '1'th value of variable: 'v' is missing or valid value intersect.");
    ExpectKordFault(TextVariable(Missing("<category value='c'/><category value='a '/>") + categories), 260292,
                    "The '0'th value of variable: 'v' is missing or valid value intersect.");
}

TEST_F(KordFailures, CategoryThatIsSystemMissing) {
    ExpectKordFault(
        NumberVariable(Categories("<category value='1'/><category value='-1.7976931348623157e308'/>") + Missing("")),
        260292, "The '1'th value of variable: 'v' is missing or valid value intersect.");
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
                        260151, "The value: '" + word + "' is invalid of type: 'double'.");
    }
}

using KeptKordCategories = KordReading;

TEST_F(KeptKordCategories, AreNamedAnAttributeInTheMessageOfAStrangeTag) {
    ExpectKordFault(TextVariable(Categories("<Category value='a'/>")), 260152,
                    "Invalid value 'Category' of attribute 'category'.");
}

struct TwoFaults {
    const char* name;
    std::string variables;
    int id;
};

std::ostream& operator<<(std::ostream& out, const TwoFaults& row) {
    return out << row.name;
}

class FirstOfTwoKordFaults : public KordReading, public testing::WithParamInterface<TwoFaults> {};

TEST_P(FirstOfTwoKordFaults, IsReported) {
    try {
        ReadVariables(GetParam().variables);
        FAIL() << "no failure";
    } catch (const VTException& failure) {
        EXPECT_EQ(failure.GetErrorCode(), GetParam().id) << failure.GetErrorMessage();
    }
}

const TwoFaults kTwoFaults[] = {
    {"StorageTypeBeforeAnEmptyName", "<variable name='' measurement-level='x'/>", 260120},
    {"EmptyNameBeforeAnEmptyStorageType", "<variable name='' storage-type=''/>", 260285},
    {"DuplicateBeforeLevel", kValid + "<variable name='g' storage-type='STRING'/>", 260202},
    {"LevelBeforeChildren", NumberVariable("<x/>", "x"), 260152},
    {"ContinuousStringBeforeChildren", TextVariable("<x/>", "CONTINUOUS"), 260211},
    {"FirstChildBeforeSecond", NumberVariable(Categories("<category value='x'/>") + "<x/>"), 260151},
    {"SecondBoundBeforeTheValueOfTheFirst", NumberVariable(Missing("<range><category/></range>")), 260118},
    {"EmptyUpperBoundBeforeTheNumberOfTheLower",
     NumberVariable(Missing("<range><low value='x'/><high value=''/></range>")), 260120},
    {"ChildrenBeforeIntersection",
     TextVariable(Missing("<category value='a'/>") + Categories("<category value='a'/>") + "<x/>"), 260154},
    {"FirstVariableBeforeSecond", TextVariable("<x/>") + "<y/>", 260154},
};

INSTANTIATE_TEST_SUITE_P(Rows, FirstOfTwoKordFaults, testing::ValuesIn(kTwoFaults),
                         [](const testing::TestParamInfo<TwoFaults>& row) { return row.param.name; });

} // namespace
