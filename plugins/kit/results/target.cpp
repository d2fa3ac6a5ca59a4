#include "kit/results/target.h"

#include "kit/document/raise.h"
#include "kit/inputs/host_values.h"
#include "kit/results/typed_value.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <algorithm>
#include <cmath>
#include <set>

namespace veltrane_kit {

using namespace MCVeltrane_900;

namespace {

std::optional<double> ReadOptional(const Element& element, const XMLCh* name) {
    return element.Has(name) ? std::optional<double>(element.Number(name)) : std::nullopt;
}

/// The nearest whole number, of two that are equally near the larger one.
double RoundUp(double number) {
    const double below = std::floor(number);
    return number - below < 0.5 ? below : below + 1.0;
}

constexpr Word<ScoreDictVar::MeasureLevel> kLevels[] = {
    {u"continuous", ScoreDictVar::LEVEL_CONTINUOUS},
    {u"categorical", ScoreDictVar::LEVEL_NOMINAL},
    {u"ordinal", ScoreDictVar::LEVEL_ORDINAL},
};

/// The level of a Target overrides that of its field.
void TakeLevel(const Element& target, ScoreDictVar& var) {
    if (Same(target.Raw(u"optype"), u"")) {
        return;
    }
    const ScoreDictVar::MeasureLevel level = target.OneOf(u"optype", kLevels);
    if (level == ScoreDictVar::LEVEL_CONTINUOUS && var.GetVarType() == ScoreDictVar::STRING_VAR) {
        target.RaiseInvalid(u"optype");
    }
    var.SetMLevel(level);
}

/// The name of the variable of a target that no field holds.
constexpr const char* kOwnName = "target";

/// @throws VTException 260214 for a level that doesn't suit the function
std::unique_ptr<DictVar> MakeOwnVar(const Element& target, bool classification) {
    auto var =
        std::make_unique<DictVar>(kOwnName, classification ? ScoreDictVar::STRING_VAR : ScoreDictVar::kNUMERIC_VAR);
    var->SetMLevel(classification ? ScoreDictVar::LEVEL_NOMINAL : ScoreDictVar::LEVEL_CONTINUOUS);
    if (!target || !target.Has(u"optype")) {
        return var;
    }
    const ScoreDictVar::MeasureLevel level = target.OneOf(u"optype", kLevels);
    if ((level == ScoreDictVar::LEVEL_CONTINUOUS) == classification) {
        Raise<Message::CONFLICTING_VALUES_IN>(target.Text(u"optype"), "optype", "DataDictionary",
                                              classification ? "categorical" : "continuous", "optype", "Target");
    }
    var->SetMLevel(level);
    return var;
}

} // namespace

void TakeTargetLevels(const Element& model, ScoreDictionary& dictionary) {
    const Element targets = model.Child(u"Targets");
    if (!targets) {
        return;
    }
    for (const Element target : targets.Children()) {
        if (!target.Is(u"Target") || !target.Has(u"field")) {
            continue;
        }
        const std::string field = target.Text(u"field");
        ScoreDictVar* var = dictionary.GetVar(field);
        if (var == nullptr) {
            RaiseAt<Message::MISSING_VARIABLE>(target.Tag(), "field", field, "DataDictionary");
        }
        TakeLevel(target, *var);
    }
}

Element FindTarget(const Element& model, const std::string& field) {
    const Element targets = model.Child(u"Targets");
    if (!targets) {
        return {};
    }
    for (const Element target : targets.Children()) {
        if (target.Is(u"Target") && target.TextOr(u"field", "") == field) {
            return target;
        }
    }
    return {};
}

Target::Target(const ScoreDictVar& var, const DataField& field)
    : fName(field.name), fVar(&var), fType(field.type), fCodes(fType) {
    AddListed(field);
}

Target::Target(const Element& element, bool classification)
    : fOwn(MakeOwnVar(element, classification)), fVar(fOwn.get()),
      fType(classification ? DataType::STRING : DataType::DOUBLE), fCodes(fType) {
    Read(element);
}

/// A boolean field has its two values, whether it lists them or not.
void Target::AddListed(const DataField& field) {
    for (std::size_t i = 0; i < field.valid.size(); ++i) {
        const int code = Add(field.valid[i].value);
        if (!field.labels[i].empty()) {
            fCategories[static_cast<std::size_t>(code)].label = field.labels[i];
        }
    }
    if (fCategories.empty() && fType == DataType::BOOLEAN) {
        Add(MakeTruth(true));
        Add(MakeTruth(false));
    }
    fIsListed = !fCategories.empty();
}

int Target::Add(const Value& value) {
    const int code = fCodes.Add(value);
    if (code == CategoryCount()) {
        Known& known = fCategories.emplace_back();
        known.typed.Keep(value);
        known.host = HostValueOf(value);
        std::string buffer;
        known.label = TextOf(known.typed.value, buffer);
    }
    return code;
}

/// Of the kind that the dictionary tells hosts.
std::unique_ptr<ScoreValue> Target::HostValueOf(const Value& value) const {
    std::string buffer;
    switch (fVar->GetVarType()) {
    case ScoreDictVar::STRING_VAR:
        return std::make_unique<StringValue>(std::string(TextOf(value, buffer)));
    case ScoreDictVar::DATETIME_VAR:
        return IsMoment(value.type) ? std::make_unique<DateTimeValue>(MakeMoment(value))
                                    : std::make_unique<DateTimeValue>(value.number, fVar->GetDateTimeType());
    default:
        return std::make_unique<NumericValue>(value.number);
    }
}

int Target::CategoryOf(const Element& element, const XMLCh* attribute) {
    const int code = CategoryOf(std::string_view(element.AnyText(attribute)));
    if (code == ValueCodes::kUnknown) {
        element.RaiseInvalid(attribute);
    }
    return code;
}

int Target::CategoryOf(std::string_view text) {
    const Value value = ReadValue(text, fType);
    return value.isMissing ? ValueCodes::kUnknown : fIsListed ? fCodes.Find(value) : Add(value);
}

void Target::ShowAs(int code, const std::string& label) {
    Known& known = fCategories[static_cast<std::size_t>(code)];
    std::string buffer;
    if (known.label == TextOf(known.typed.value, buffer)) {
        known.label = label;
    }
}

int Target::CategoryOf(const Target& part, int code) {
    const Value& known = part.CategoryValue(code);
    std::string buffer;
    const Value value = part.Type() == fType ? known : ReadValue(TextOf(known, buffer), fType);
    return value.isMissing ? ValueCodes::kUnknown : fIsListed ? fCodes.Find(value) : Add(value);
}

void Target::Learn(const ScoreValue& value) {
    const Value known = FromHost(&value, fType);
    if (!fIsListed && !known.isMissing) {
        Add(known);
    }
}

int Target::Find(const ScoreValue& value) const {
    return fCodes.Find(FromHost(&value, fType));
}

void Target::Read(const Element& element) {
    if (!element) {
        return;
    }
    ReadAdjustment(element);
    std::set<int> codes;
    for (const Element child : element.Children()) {
        if (!child.Is(u"TargetValue")) {
            continue;
        }
        if (!fDefault && child.Has(u"defaultValue")) {
            fDefault = child.Number(u"defaultValue");
        }
        if (child.Has(u"value") && !codes.insert(ReadTargetValue(child)).second) {
            Raise<Message::DUPLICATE_DEFINITION>(child.Tag(), child.AnyText(u"value"), element.Tag());
        }
    }
}

/// What a TargetValue says of one value. Those of a Target are what it has something to say of, and need not be all.
/// @return its code
int Target::ReadTargetValue(const Element& element) {
    const std::string text = element.AnyText(u"value");
    const Value value = ReadValue(text, fType);
    if (value.isMissing) {
        element.RaiseInvalid(u"value");
    }
    const int code = Add(value);
    Known& known = fCategories[static_cast<std::size_t>(code)];
    if (const std::string label = element.TextOr(u"displayValue", ""); !label.empty()) {
        known.label = label;
    }
    if (element.Has(u"priorProbability")) {
        known.prior = element.Number(u"priorProbability");
    }
    return code;
}

int Target::MostProbable() const {
    int chosen = Prediction::kNoCategory;
    double best = 0.0;
    for (int code = 0; code < CategoryCount(); ++code) {
        if (At(code).prior != Prediction::kNone && At(code).prior > best) {
            best = At(code).prior;
            chosen = code;
        }
    }
    return chosen;
}

bool Target::PredictDefault(bool classification, Prediction& prediction) const {
    const int category = MostProbable();
    if (!classification) {
        prediction.number = fDefault                              ? *fDefault
                            : category == Prediction::kNoCategory ? Prediction::kNone
                                                                  : CategoryValue(category).number;
        return prediction.number != Prediction::kNone && !std::isnan(prediction.number);
    }
    if (category == Prediction::kNoCategory) {
        return false;
    }
    prediction.category = category;
    for (std::size_t code = 0; code < prediction.probabilities.size(); ++code) {
        const double prior = fCategories[code].prior;
        prediction.probabilities[code] = prior == Prediction::kNone ? 0.0 : prior;
    }
    return true;
}

void Target::ReadAdjustment(const Element& element) {
    static constexpr Word<Cast> kCasts[] = {
        {u"round", Cast::ROUND}, {u"ceiling", Cast::CEILING}, {u"floor", Cast::FLOOR}};
    fMin = ReadOptional(element, u"min");
    fMax = ReadOptional(element, u"max");
    fFactor = element.NumberOr(u"rescaleFactor", 1.0);
    fConstant = element.NumberOr(u"rescaleConstant", 0.0);
    fCast = element.OneOfOr(u"castInteger", kCasts, Cast::NONE);
    fAdjusts = fMin || fMax || fFactor != 1.0 || fConstant != 0.0 || fCast != Cast::NONE;
}

double Target::Adjust(double number) const {
    if (!fAdjusts) {
        return number;
    }
    if (fMin) {
        number = std::max(number, *fMin);
    }
    if (fMax) {
        number = std::min(number, *fMax);
    }
    number = number * fFactor + fConstant;
    // There is one zero among the whole numbers.
    switch (fCast) {
    case Cast::ROUND:
        return RoundUp(number) + 0.0;
    case Cast::CEILING:
        return std::ceil(number) + 0.0;
    case Cast::FLOOR:
        return std::floor(number) + 0.0;
    default:
        return number;
    }
}

} // namespace veltrane_kit
