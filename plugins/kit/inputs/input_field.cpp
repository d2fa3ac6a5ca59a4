#include "kit/inputs/input_field.h"

#include "kit/inputs/host_values.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <algorithm>
#include <cmath>
#include <typeinfo>

namespace veltrane_kit {

using namespace MCVeltrane_900;

namespace {

bool IsEmptyText(const ScoreValue* raw) {
    const auto* text = dynamic_cast<const StringValue*>(raw);
    return text != nullptr && text->GetText().empty();
}

std::vector<double> NumbersOf(const std::vector<OwnedValue>& values) {
    std::vector<double> numbers;
    numbers.reserve(values.size());
    for (const OwnedValue& value : values) {
        numbers.push_back(value.value.number);
    }
    return numbers;
}

bool Has(const std::vector<double>& numbers, double number) {
    return std::find(numbers.begin(), numbers.end(), number) != numbers.end();
}

} // namespace

InputField::InputField(const DataField& field, const MiningField* schema)
    : fField(&field), fType(field.type), fHoldsNumbers(IsNumber(field.type)),
      fHoldsWholeNumbers(field.type == DataType::INTEGER), fMissingNumbers(NumbersOf(field.missing)),
      fInvalidNumbers(NumbersOf(field.invalid)), fCodes(field.type), fLow(-kInfinity), fHigh(kInfinity) {
    for (const OwnedValue& value : field.valid) {
        fCodes.Add(value.value);
    }
    fListed = fCodes.Size();
    fNeedsCode = fListed > 0;
    fChecksValues = fListed > 0 || !field.invalid.empty() || !field.intervals.empty();
    fHasMissing = !field.missing.empty() || !field.missingTexts.empty();
    fHasPlainTexts = IsText(field.type) && !fHasMissing && field.invalid.empty();
    fEmptyIsMissing = !IsText(field.type) || !field.IsListed(MakeText(""));
    if (schema != nullptr) {
        SetTreatment(*schema);
    }
    RenewCodes();
}

void InputField::SetTreatment(const MiningField& schema) {
    fMissingRefused = schema.missingRefused;
    fInvalidTreatment = schema.invalid;
    SetStandIn(fMissingReplacement, schema.missingReplacement);
    SetStandIn(fInvalidReplacement, schema.invalidReplacement);
    const bool isNumeric = IsNumber(fField->type) || IsCounting(fField->type);
    const bool isContinuous = schema.level.value_or(fField->level) == ScoreDictVar::LEVEL_CONTINUOUS;
    fOutliers = isNumeric && isContinuous ? schema.outliers : OutlierTreatment::AS_IS;
    fLow = schema.low.value_or(-kInfinity);
    fHigh = schema.high.value_or(kInfinity);
    SetBound(fLowest, fLow);
    SetBound(fHighest, fHigh);
}

void InputField::SetStandIn(StandIn& standIn, const std::optional<std::string>& text) {
    if (text) {
        standIn.kept.Keep(ReadValue(*text, fField->type));
        static_cast<Value&>(standIn.value) = standIn.kept.value;
    }
}

void InputField::SetBound(StandIn& standIn, double bound) {
    static_cast<Value&>(standIn.value) = MakeNumber(bound, fField->type);
}

void InputField::RenewCodes() {
    for (StandIn* standIn : {&fMissingReplacement, &fInvalidReplacement, &fLowest, &fHighest}) {
        standIn->value.category = fCodes.Find(standIn->value);
    }
    fPlain = FindPlainNumbers();
}

int InputField::CodeOf(const Value& value) {
    if (const int known = fNeedsCode ? fCodes.Find(value) : ValueCodes::kUnknown; known != ValueCodes::kUnknown) {
        return known;
    }
    fNeedsCode = true;
    const int code = fCodes.Add(value);
    RenewCodes();
    return code;
}

bool InputField::SaysNothing() const {
    const bool hasOneValue = fListed == 1 && fField->intervals.empty();
    const bool admitsNoOther =
        fInvalidTreatment == InvalidTreatment::REFUSE || fInvalidTreatment == InvalidTreatment::AS_MISSING;
    return hasOneValue && admitsNoOther && !fMissingRefused && fMissingReplacement.value.category == 0;
}

bool InputField::ReadTreated(const FieldValue& outer, FieldValue& value) const {
    bool isScorable = true;
    if (outer.isMissing) {
        isScorable = GiveMissing(value);
    } else {
        static_cast<Value&>(value) = outer;
        value.category = fNeedsCode ? fCodes.Find(value) : ValueCodes::kUnknown;
        if (outer.isInvalid && fInvalidTreatment != InvalidTreatment::AS_IS) {
            isScorable = GiveInvalid(value);
        } else if (fOutliers != OutlierTreatment::AS_IS) {
            isScorable = TreatOutlier(value);
        }
    }
    if (!isScorable) {
        value = FieldValue();
    }
    return isScorable;
}

/// Nearly all values are numbers and texts that stay what they are; ReadAny() says the same of any value.
bool InputField::Read(const ScoreValue* raw, FieldValue& value) const {
    // The library has each class once, so its description is at one place.
    const std::type_info* const kind = raw == nullptr ? nullptr : &typeid(*raw);
    if (kind == &typeid(NumericValue)) {
        const double number = static_cast<const NumericValue*>(raw)->NumericValue::GetDouble();
        if (fPlain.Hold(number)) {
            value.type = fType;
            value.number = number;
            value.isMissing = false;
            value.isInvalid = false;
            value.category = ValueCodes::kUnknown;
            return true;
        }
    } else if (kind == &typeid(StringValue) && ReadPlainText(static_cast<const StringValue*>(raw)->GetText(), value)) {
        return true;
    }
    return ReadAny(raw, value);
}

/// @return false for a text that has to be treated
bool InputField::ReadPlainText(std::string_view text, FieldValue& value) const {
    if (!fHasPlainTexts || text.empty()) {
        return false;
    }
    const int code = fNeedsCode ? fCodes.FindText(text) : ValueCodes::kUnknown;
    if (fChecksValues && (code < 0 || code >= fListed)) {
        return false;
    }
    value.type = DataType::STRING;
    value.number = kMissing;
    value.text = text;
    value.isMissing = false;
    value.isInvalid = false;
    value.category = code;
    return true;
}

/// Values of the kind that the field keeps are read at once. Treat() says the same of any.
bool InputField::ReadAny(const ScoreValue* raw, FieldValue& value) const {
    bool isScorable = false;
    if (fHoldsNumbers && raw != nullptr && raw->GetType() == ScoreValue::NUMERIC_VALUE) {
        isScorable = ReadNumber(raw->GetDouble(), value);
    } else if (IsText(fField->type) && raw != nullptr && typeid(*raw) == typeid(StringValue)) {
        isScorable = ReadText(static_cast<const StringValue*>(raw)->GetText(), value);
    } else {
        isScorable = Treat(raw, value);
    }
    if (!isScorable) {
        value = FieldValue();
    }
    return isScorable;
}

bool InputField::ReadNumber(double number, FieldValue& value) const {
    if (number == FieldValue::kMissingNumber || std::isnan(number) ||
        (!fMissingNumbers.empty() && Has(fMissingNumbers, number))) {
        return GiveMissing(value);
    }
    value.type = fField->type;
    value.number = number;
    value.isMissing = false;
    value.category = ValueCodes::kUnknown;
    bool isInvalid = false;
    if (fHoldsWholeNumbers && !(std::isfinite(number) && number == std::trunc(number))) {
        value.number = kMissing;
        value.isMissing = true;
        isInvalid = true;
    } else {
        value.category = fNeedsCode ? fCodes.Find(value) : ValueCodes::kUnknown;
        isInvalid = fChecksValues && !IsAllowedNumber(number, value.category);
    }
    if (isInvalid && fInvalidTreatment != InvalidTreatment::AS_IS) {
        return GiveInvalid(value);
    }
    value.isInvalid = isInvalid && !value.isMissing;
    return fOutliers == OutlierTreatment::AS_IS || TreatOutlier(value);
}

bool InputField::ReadText(std::string_view text, FieldValue& value) const {
    if (text.empty() && fEmptyIsMissing) {
        return GiveMissing(value);
    }
    value.type = DataType::STRING;
    value.number = kMissing;
    value.text = text;
    value.isMissing = false;
    if (fHasMissing && IsMissingValue(value, nullptr)) {
        return GiveMissing(value);
    }
    value.category = fNeedsCode ? fCodes.Find(value) : ValueCodes::kUnknown;
    value.isInvalid = fChecksValues && !IsAllowed(value, value.category);
    return !value.isInvalid || fInvalidTreatment == InvalidTreatment::AS_IS || GiveInvalid(value);
}

/// The empty text is missing unless the field lists it.
Value InputField::ValueOf(const ScoreValue* raw) const {
    const Value value = FromHost(raw, fField->type);
    return value.isMissing && !fEmptyIsMissing && IsEmptyText(raw) ? MakeText("") : value;
}

/// In this order: a missing value, an invalid one, one beyond its bounds. What stands in for a value is none of these;
/// an invalid value that is taken as it is can be an outlier, and one that can't be read is then missing.
bool InputField::Treat(const ScoreValue* raw, FieldValue& value) const {
    static_cast<Value&>(value) = ValueOf(raw);
    if (IsMissingValue(value, raw)) {
        return GiveMissing(value);
    }
    value.category = fNeedsCode ? fCodes.Find(value) : ValueCodes::kUnknown;
    const bool isInvalid = value.isMissing || (fChecksValues && !IsAllowed(value, value.category));
    if (isInvalid && fInvalidTreatment != InvalidTreatment::AS_IS) {
        return GiveInvalid(value);
    }
    value.isInvalid = isInvalid && !value.isMissing;
    return fOutliers == OutlierTreatment::AS_IS || TreatOutlier(value);
}

bool InputField::TreatOutlier(FieldValue& value) const {
    if (!(value.number < fLow || value.number > fHigh)) {
        return true;
    }
    if (fOutliers == OutlierTreatment::AS_MISSING) {
        return GiveMissing(value);
    }
    value = value.number < fLow ? fLowest.value : fHighest.value;
    return true;
}

bool InputField::IsMissing(const ScoreValue* raw) const {
    return IsMissingValue(ValueOf(raw), raw);
}

bool InputField::IsMissingValue(const Value& value, const ScoreValue* raw) const {
    if (value.isMissing && !value.isInvalid) {
        return true;
    }
    if (!fHasMissing) {
        return false;
    }
    if (!value.isMissing) {
        return std::any_of(fField->missing.begin(), fField->missing.end(),
                           [&value](const OwnedValue& each) { return AreEqual(each.value, value); });
    }
    const auto* text = dynamic_cast<const StringValue*>(raw);
    return text != nullptr && std::find(fField->missingTexts.begin(), fField->missingTexts.end(), text->GetText()) !=
                                  fField->missingTexts.end();
}

bool InputField::IsAllowed(const Value& value, int code) const {
    if (std::any_of(fField->invalid.begin(), fField->invalid.end(),
                    [&value](const OwnedValue& each) { return AreEqual(each.value, value); })) {
        return false;
    }
    const bool isListed = code >= 0 && code < fListed;
    if (isListed || (fListed == 0 && fField->intervals.empty())) {
        return true;
    }
    return std::any_of(fField->intervals.begin(), fField->intervals.end(),
                       [&value](const Interval& interval) { return interval.Holds(value.number); });
}

bool InputField::IsAllowedNumber(double number, int code) const {
    if (!fInvalidNumbers.empty() && Has(fInvalidNumbers, number)) {
        return false;
    }
    const bool isListed = code >= 0 && code < fListed;
    if (isListed || (fListed == 0 && fField->intervals.empty())) {
        return true;
    }
    return std::any_of(fField->intervals.begin(), fField->intervals.end(),
                       [number](const Interval& interval) { return interval.Holds(number); });
}

bool InputField::GiveMissing(FieldValue& value) const {
    value = fMissingReplacement.value;
    return !fMissingRefused;
}

bool InputField::GiveInvalid(FieldValue& value) const {
    if (fInvalidTreatment == InvalidTreatment::AS_MISSING) {
        return GiveMissing(value);
    }
    value = fInvalidReplacement.value;
    return fInvalidTreatment == InvalidTreatment::REPLACE;
}

} // namespace veltrane_kit
