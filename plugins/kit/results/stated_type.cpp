#include "kit/results/stated_type.h"

namespace veltrane_kit {

using MCVeltrane_900::ScoreDictVar;
using MCVeltrane_900::ScoreValue;

namespace {

/// Counts of days or seconds are numbers.
constexpr Word<StatedType> kTypes[] = {
    {u"string", {OutputType::TEXT}},
    {u"integer", {OutputType::INTEGER}},
    {u"float", {OutputType::NUMBER}},
    {u"double", {OutputType::NUMBER}},
    {u"boolean", {OutputType::BOOLEAN}},
    {u"date", {OutputType::MOMENT, ScoreDictVar::DT_DATE}},
    {u"time", {OutputType::MOMENT, ScoreDictVar::DT_TIME}},
    {u"dateTime", {OutputType::MOMENT, ScoreDictVar::DT_DATETIME}},
    {u"dateDaysSince[0]", {OutputType::NUMBER}},
    {u"dateDaysSince[1960]", {OutputType::NUMBER}},
    {u"dateDaysSince[1970]", {OutputType::NUMBER}},
    {u"dateDaysSince[1980]", {OutputType::NUMBER}},
    {u"timeSeconds", {OutputType::NUMBER}},
    {u"dateTimeSecondsSince[0]", {OutputType::NUMBER}},
    {u"dateTimeSecondsSince[1960]", {OutputType::NUMBER}},
    {u"dateTimeSecondsSince[1970]", {OutputType::NUMBER}},
    {u"dateTimeSecondsSince[1980]", {OutputType::NUMBER}},
};

} // namespace

StatedType ReadStatedType(const Element& outputField) {
    return outputField.OneOf(u"dataType", kTypes);
}

ScoreValue::ValueType KindOf(OutputType type, ScoreValue::ValueType natural) {
    switch (type) {
    case OutputType::TEXT:
        return ScoreValue::STRING_VALUE;
    case OutputType::INTEGER:
    case OutputType::NUMBER:
        return ScoreValue::NUMERIC_VALUE;
    case OutputType::BOOLEAN:
        return natural == ScoreValue::STRING_VALUE ? natural : ScoreValue::NUMERIC_VALUE;
    case OutputType::MOMENT:
        return ScoreValue::DATETIME_VALUE;
    case OutputType::ANY:
        break;
    }
    return natural;
}

} // namespace veltrane_kit
