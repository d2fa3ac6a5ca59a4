#include "columns/fields/field_types.h"

#include <array>

namespace veltrane::columns {

namespace {

using MCVeltrane_900::DateTimeValue;
using MCVeltrane_900::ScoreDictVar;

struct TypeFacts {
    const char* name;
    ScoreDictVar::DateTimeType stored;
};

/// In the order of DataType.
constexpr std::array<TypeFacts, 17> kTypes{{
    {"string", ScoreDictVar::DT_NONE},
    {"boolean", ScoreDictVar::DT_NONE},
    {"integer", ScoreDictVar::DT_NONE},
    {"float", ScoreDictVar::DT_NONE},
    {"double", ScoreDictVar::DT_NONE},
    {"date", ScoreDictVar::DT_DATE},
    {"time", ScoreDictVar::DT_TIME},
    {"dateTime", ScoreDictVar::DT_DATETIME},
    {"dateDaysSince[0]", ScoreDictVar::DT_DAYS_SINCE_0},
    {"dateDaysSince[1960]", ScoreDictVar::DT_DAYS_SINCE_1960},
    {"dateDaysSince[1970]", ScoreDictVar::DT_DAYS_SINCE_1970},
    {"dateDaysSince[1980]", ScoreDictVar::DT_DAYS_SINCE_1980},
    {"timeSeconds", ScoreDictVar::DT_TIME_SECONDS},
    {"dateTimeSecondsSince[0]", ScoreDictVar::DT_SECONDS_SINCE_0},
    {"dateTimeSecondsSince[1960]", ScoreDictVar::DT_SECONDS_SINCE_1960},
    {"dateTimeSecondsSince[1970]", ScoreDictVar::DT_SECONDS_SINCE_1970},
    {"dateTimeSecondsSince[1980]", ScoreDictVar::DT_SECONDS_SINCE_1980},
}};

const TypeFacts& FactsOf(DataType type) {
    return kTypes[static_cast<std::size_t>(type)];
}

} // namespace

const char* NameOf(DataType type) {
    return FactsOf(type).name;
}

ScoreDictVar::DateTimeType DateTimeTypeOf(DataType type) {
    return FactsOf(type).stored;
}

DataType TypeOf(const ScoreDictVar& variable) {
    switch (variable.GetVarType()) {
    case ScoreDictVar::STRING_VAR:
        return DataType::STRING;
    case ScoreDictVar::DATETIME_VAR:
        for (std::size_t type = 0; type < kTypes.size(); ++type) {
            if (kTypes[type].stored != ScoreDictVar::DT_NONE && kTypes[type].stored == variable.GetDateTimeType()) {
                return static_cast<DataType>(type);
            }
        }
        return DataType::DATE_TIME;
    default:
        return variable.GetNumericDataType() == ScoreDictVar::NUM_INTEGER ? DataType::INTEGER : DataType::DOUBLE;
    }
}

double DaysTo1970(DataType type) {
    const DateTimeValue epoch(0.0, DateTimeValue::VAL_DATETIME);
    const auto days =
        static_cast<DataType>(static_cast<int>(type) - (CountsSecondsSinceAYear(type)
                                                            ? static_cast<int>(DataType::DATE_TIME_SECONDS_SINCE_0) -
                                                                  static_cast<int>(DataType::DATE_DAYS_SINCE_0)
                                                            : 0));
    return CountsDays(days) ? epoch.GetDoubleValue(DateTimeTypeOf(days)) : 0.0;
}

} // namespace veltrane::columns
