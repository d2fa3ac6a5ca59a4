#include "support/changing_values.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <iterator>
#include <memory>
#include <string>

namespace veltrane::tests {

using namespace MCVeltrane_900;

namespace {

double AnyNumber(std::mt19937& random) {
    const double nudges[] = {0.0, 1e-15, -2.2e-14, 2.3e-14};
    return (static_cast<int>(random() % 12) - 4) * (1.0 + nudges[random() % std::size(nudges)]);
}

std::string AnyText(std::mt19937& random) {
    const std::string texts[] = {"", " ", "  ", "a", "a ", "a  ", "b", "3"};
    return texts[random() % std::size(texts)] + (random() % 2 == 0 ? "" : std::to_string(random() % 5));
}

DateTimeValue::DateTimeValType AnyKind(std::mt19937& random) {
    return static_cast<DateTimeValue::DateTimeValType>(random() % 3);
}

/// A number whose operator is another than its class's. No index may rely on it.
class HostNumber : public NumericValue {
public:
    using NumericValue::NumericValue;
    bool operator==(const ScoreValue& other) const override { return other.GetDouble() > 5.0; }
    ScoreValue* Clone() const override { return new HostNumber(GetDouble()); }
};

void ChangeNumber(NumericValue& value, std::mt19937& random) {
    const NumericValue other(AnyNumber(random));
    switch (random() % 3) {
    case 0:
        value.SetDoubleValue(other.GetDouble());
        break;
    case 1:
        value = other;
        break;
    default:
        value.SetValue(&other);
    }
}

void ChangeText(StringValue& value, std::mt19937& random) {
    const StringValue other(AnyText(random));
    const NumericValue number(1.0);
    switch (random() % 4) {
    case 0:
        value.SetString(other.GetText());
        break;
    case 1:
        value = other;
        break;
    case 2:
        value.SetValue(&number);
        break;
    default:
        value.SetValue(&other);
    }
}

void ChangeDateTime(DateTimeValue& value, std::mt19937& random) {
    const DateTimeValue other(AnyNumber(random), AnyKind(random));
    switch (random() % 6) {
    case 0:
        value.SetDateTimeType(other.GetDateTimeType());
        break;
    case 1:
        value = other;
        break;
    case 2:
        value.SetDateTimeValue(AnyNumber(random), AnyKind(random));
        break;
    case 3:
        value.SetDateTimeValue(AnyNumber(random), ScoreDictVar::DT_SECONDS_SINCE_1970);
        break;
    case 4:
        value.SetDoubleValue(AnyNumber(random));
        break;
    default:
        value.SetValue(&other);
    }
}

} // namespace

ScoreValue* AnyValue(std::mt19937& random) {
    switch (random() % 10) {
    case 0:
        return new DateTimeValue(AnyNumber(random), AnyKind(random));
    case 1:
        return random() % 8 == 0 ? new HostNumber(AnyNumber(random)) : new NumericValue();
    case 2:
    case 3:
    case 4:
        return new StringValue(AnyText(random));
    default:
        return new NumericValue(AnyNumber(random));
    }
}

void ChangeAnyhow(ScoreValue& value, std::mt19937& random) {
    if (auto* dateTime = dynamic_cast<DateTimeValue*>(&value)) {
        ChangeDateTime(*dateTime, random);
    } else if (auto* number = dynamic_cast<NumericValue*>(&value)) {
        ChangeNumber(*number, random);
    } else if (auto* text = dynamic_cast<StringValue*>(&value)) {
        ChangeText(*text, random);
    }
}

} // namespace veltrane::tests
