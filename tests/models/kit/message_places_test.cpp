// Every message about a document names an element and an attribute, whatever attribute of it is spoilt.
#include "models/kit/checked_documents.h"
#include "models/kit/scoring.h"
#include "models/kit/small_documents.h"
#include "models/tree/small_tree.h"
#include "support/faults/failure.h"
#include "support/rows.h"

#include <MCVeltrane_900/VTException.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

using namespace veltrane::tests;
using enum MCVeltrane_900::Message;

namespace {

/// An attribute in the text of a document.
struct Place {
    std::string element;
    std::string attribute;
    std::size_t begin; ///< of the attribute, with the blank before it
    std::size_t value; ///< begins there, behind the quote
    std::size_t end;   ///< behind the closing quote
};

/// The attributes of a document whose values stand in single quotes and hold no markup.
std::vector<Place> PlacesIn(const std::string& document) {
    std::vector<Place> places;
    std::string element;
    for (std::size_t at = 0; at < document.size(); ++at) {
        if (document[at] == '<') {
            element = document.substr(at + 1, document.find_first_of(" />", at + 1) - at - 1);
        } else if (document[at] == '=' && document[at + 1] == '\'') {
            const std::size_t begin = document.find_last_of(" \n", at);
            const std::size_t end = document.find('\'', at + 2);
            places.push_back({element, document.substr(begin + 1, at - begin - 1), begin, at + 2, end + 1});
            at = end;
        }
    }
    return places;
}

/// What a document is refused with; nothing for one that is read.
std::optional<MCVeltrane_900::VTException> RefusalOf(const std::string& document) {
    try {
        ReadModel(document);
    } catch (const MCVeltrane_900::VTException& failure) {
        return failure;
    }
    return std::nullopt;
}

class SpoiltAttribute : public testing::TestWithParam<std::string> {};

TEST_P(SpoiltAttribute, IsRefusedByAMessageThatNamesElementAndAttribute) {
    const std::string& document = GetParam();
    ASSERT_FALSE(RefusalOf(document)) << RefusalOf(document)->GetErrorMessage();
    const std::vector<Place> places = PlacesIn(document);
    const auto isNamed = [&](const std::string& message) {
        return std::any_of(places.begin(), places.end(), [&](const Place& place) {
            return message.find("'" + place.element + "'") != message.npos &&
                   message.find("'" + place.attribute + "'") != message.npos;
        });
    };
    int refused = 0;
    for (const Place& place : places) {
        std::vector<std::string> spoilt{std::string(document).erase(place.begin, place.end - place.begin)};
        for (const char* value : {"", "?!"}) {
            spoilt.push_back(std::string(document).replace(place.value, place.end - place.value - 1, value));
        }
        for (const std::string& each : spoilt) {
            if (auto failure = RefusalOf(each)) {
                ++refused;
                EXPECT_TRUE(isNamed(failure->GetErrorMessage()))
                    << failure->GetErrorCode() << ": " << failure->GetErrorMessage() << "\n  "
                    << each.substr(place.begin > 40 ? place.begin - 40 : 0, 100);
            }
        }
    }
    EXPECT_GT(refused, static_cast<int>(places.size()) / 2);
}

/// The regression that the check of documents is tested with, as one that can be scored.
std::string Everything() {
    const std::string document = Replaced(kCheckedRegression, "<MiningField name='y' usageType='target'/>",
                                          "<MiningField name='y' usageType='target'/><MiningField name='t'/>"
                                          "<MiningField name='n'/>");
    return Replaced(document, "<LocalTransformations>",
                    "<LocalTransformations><DerivedField name='late' optype='continuous' dataType='double'>"
                    "<FieldRef field='y'/></DerivedField><DerivedField name='called' optype='continuous' "
                    "dataType='double'><Apply function='f'><FieldRef field='x'/></Apply></DerivedField>");
}

struct Detailed {
    const char* name;
    const char* from;
    const char* to;
    Failure failure;
    const char* detail;
};

class MessageOfAField : public testing::TestWithParam<Detailed> {};

TEST_P(MessageOfAField, IsFollowedByElementAndAttribute) {
    const Detailed& row = GetParam();
    const std::string document = Replaced(Everything(), row.from, row.to);
    ExpectFailureWithDetail([&] { ReadModel(document); }, row.failure, row.detail);
}

const Detailed kDetailed[] = {
    {"UnknownInAnExpression", "<NormDiscrete field='t'", "<NormDiscrete field='u'",
     Failure(MISSING_VARIABLE_IN_BOTH, "u", "DataDictionary", "TransformationDictionary"),
     " Attribute 'field' of 'NormDiscrete'."},
    {"UnknownInAModel", "<NumericPredictor name='x'", "<NumericPredictor name='u'",
     Failure(MISSING_VARIABLE_IN_BOTH, "u", "DataDictionary", "TransformationDictionary"),
     " Attribute 'name' of 'NumericPredictor'."},
    {"UnknownParameter", "<FieldRef field='p' mapMissingTo='0'/>", "<FieldRef field='x' mapMissingTo='0'/>",
     Failure(MISSING_VARIABLE, "x", "DefineFunction"), " Attribute 'field' of 'FieldRef'."},
    {"NotActiveInAModel", "<NumericPredictor name='x'", "<NumericPredictor name='y'", Failure(NO_PREDICTOR, "y"),
     " Attribute 'name' of 'NumericPredictor'."},
    {"NotActiveBehindADerivedField", "<NumericPredictor name='x' exponent='2' coefficient='3'/>",
     "<NumericPredictor name='late' coefficient='1'/>", Failure(NO_PREDICTOR, "y"),
     " Attribute 'field' of 'FieldRef'."},
    {"ItsOwnSource", "<NormDiscrete field='t'", "<NormDiscrete field='is'",
     Failure(SOURCE_IS_DESTINATION, "is", "DerivedField"), " Attribute 'field' of 'NormDiscrete'."},
    {"TextForANumber", "<NumericPredictor name='x'", "<NumericPredictor name='t'", Failure(REQUIRES_NUMERIC, "t"),
     " Attribute 'name' of 'NumericPredictor'."},
    {"UnknownInTheSchema", "<MiningField name='n'/>", "<MiningField name='m'/>",
     Failure(MISSING_VARIABLE, "m", "DataDictionary"), " Attribute 'name' of 'MiningField'."},
    {"TwiceInTheSchema", "<MiningField name='n'/>", "<MiningField name='t'/>",
     Failure(DUPLICATE_VARIABLE_IN, "t", "MiningSchema"), " Attribute 'name' of 'MiningField'."},
    {"TwoTargets", "<MiningField name='n'/>", "<MiningField name='n' usageType='target'/>",
     Failure(MULTIPLE_TARGETS, "y", "n"), " Attribute 'usageType' of 'MiningField'."},
    {"UnknownTarget", "<Target field='y'", "<Target field='u'", Failure(MISSING_VARIABLE, "u", "DataDictionary"),
     " Attribute 'field' of 'Target'."},
    {"TwiceInTheDictionary", "<DataField name='n' ", "<DataField name='t' ",
     Failure(DUPLICATE_VARIABLE_IN, "t", "DataDictionary"), " Attribute 'name' of 'DataField'."},
};
INSTANTIATE_TEST_SUITE_P(Fields, MessageOfAField, testing::ValuesIn(kDetailed), NameOfRow());

INSTANTIATE_TEST_SUITE_P(Documents, SpoiltAttribute,
                         testing::Values(kSmallRegression, kSmallClassification, kSmallTree, Everything()));

} // namespace
