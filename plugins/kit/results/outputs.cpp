#include "kit/results/outputs.h"

#include "kit/document/raise.h"
#include "kit/expressions/leaves.h"
#include "kit/inputs/host_values.h"
#include "kit/results/typed_value.h"

#include <MCVeltrane_900/ResultVar.h>

#include <algorithm>
#include <map>
#include <optional>
#include <set>

namespace veltrane_kit {

using namespace MCVeltrane_900;

namespace {

constexpr Word<ScoreDictVar::MeasureLevel> kLevels[] = {
    {u"continuous", ScoreDictVar::LEVEL_CONTINUOUS},
    {u"categorical", ScoreDictVar::LEVEL_NOMINAL},
    {u"ordinal", ScoreDictVar::LEVEL_ORDINAL},
};

ScoreValue::ValueType KindOf(ScoreDictVar::VariableType type) {
    switch (type) {
    case ScoreDictVar::STRING_VAR:
        return ScoreValue::STRING_VALUE;
    case ScoreDictVar::DATETIME_VAR:
        return ScoreValue::DATETIME_VALUE;
    default:
        return ScoreValue::NUMERIC_VALUE;
    }
}

ScoreDictVar::VariableType TypeOf(ScoreValue::ValueType kind) {
    switch (kind) {
    case ScoreValue::STRING_VALUE:
        return ScoreDictVar::STRING_VAR;
    case ScoreValue::DATETIME_VALUE:
        return ScoreDictVar::DATETIME_VAR;
    default:
        return ScoreDictVar::kNUMERIC_VAR;
    }
}

/// The kind of an output field's values; a transformed value's becomes known with its expression.
ScoreValue::ValueType KindOf(const OutputFeature& feature, const Element& element, bool classification,
                             const Target& target) {
    switch (feature.kind) {
    case OutputFeature::Kind::TEXT:
        return ScoreValue::STRING_VALUE;
    case OutputFeature::Kind::STATED:
        return Same(element.Raw(u"dataType"), u"string") ? ScoreValue::STRING_VALUE : ScoreValue::NUMERIC_VALUE;
    case OutputFeature::Kind::PREDICTED:
        return classification ? KindOf(target.Var().GetVarType()) : ScoreValue::NUMERIC_VALUE;
    case OutputFeature::Kind::NUMBER:
        break;
    }
    return ScoreValue::NUMERIC_VALUE;
}

/// Whether each value of a type's kind is one of the type.
bool TakesKind(std::optional<DataType> type) {
    return !type || IsText(*type) || type == DataType::FLOAT || type == DataType::DOUBLE || IsCounting(*type);
}

bool NamesCategory(const OutputFeature& feature, bool classification) {
    return feature.ofCategory == OutputFeature::OfCategory::ALWAYS ||
           (feature.ofCategory == OutputFeature::OfCategory::OF_CLASSIFICATION && classification);
}

/// The type of an output field's value: the stated one, else what its kind keeps.
DataType ValueTypeOf(const Element& element, ScoreValue::ValueType kind) {
    const std::optional<DataType> stated = ReadDataType(element, u"dataType");
    return stated ? *stated : kind == ScoreValue::STRING_VALUE ? DataType::STRING : DataType::DOUBLE;
}

/// What the expression of an output field can refer to: the output fields before it, derived fields, input fields.
class OutputScope : public FieldScope {
public:
    explicit OutputScope(Inputs& inputs) : fInputs(inputs) {}

    void Add(const std::string& name, const Found& found) { fOutputs.emplace(name, found); }

    Found Require(const Element& element, const XMLCh* attribute) override {
        const auto output = fOutputs.find(element.Text(attribute));
        if (output != fOutputs.end()) {
            return output->second;
        }
        const Found found = fInputs.Derived().Require(element, attribute);
        fInputs.Derived().Need(found.slot);
        return found;
    }

private:
    Inputs& fInputs;
    std::map<std::string, Found> fOutputs;
};

} // namespace

Outputs::Outputs(const Element& model, bool classification, Inputs& inputs, Target& target)
    : fIsClassification(classification) {
    const Element output = model.Child(u"Output");
    if (!output) {
        return;
    }
    OutputScope scope(inputs);
    std::set<std::string> names;
    for (const Element child : output.Children()) {
        if (!child.Is(u"OutputField")) {
            child.RaiseMisplaced();
        }
        Field field = ReadField(child, classification, inputs, target);
        if (!names.insert(field.name).second) {
            Raise<Message::DUPLICATE_DEFINITION>("OutputField", field.name, "Output");
        }
        if (field.IsTransformed()) {
            fTransforms = true;
            ReadExpression(child, field, inputs, scope);
        }
        field.slot = inputs.Layout().AddField();
        scope.Add(field.name, {field.slot, field.valueType});
        fFields.push_back(std::move(field));
    }
    if (classification && fTargetSlot != Inputs::kNoSlot) {
        LearnActualCodes(inputs, target);
    }
}

void Outputs::LearnActualCodes(Inputs& inputs, const Target& target) {
    for (int category = 0; category < target.CategoryCount(); ++category) {
        fActualCodes.push_back(inputs.CategoryOf(fTargetSlot, ValueText(target.Category(category))));
    }
}

/// What of a field says to whom its value belongs and what becomes of it.
void Outputs::ReadDestination(const Element& element, const Inputs& inputs, const Target& target, Field& field) {
    field.isFinal = element.FlagOr(u"isFinalResult", true);
    field.rank = element.IntegerOr(u"rank", 1);
    if (field.rank < 1) {
        element.RaiseInvalid(u"rank");
    }
    field.isOfOthers = element.Has(u"segmentId");
    if (element.Has(u"targetField")) {
        const std::string name = element.Text(u"targetField");
        if (inputs.Dictionary().GetVar(name) == nullptr) {
            element.RaiseInvalid(u"targetField");
        }
        field.isOfOthers = field.isOfOthers || (!target.IsOwn() && name != target.Name());
    }
    field.type = field.IsTransformed() ? std::nullopt : ReadDataType(element, u"dataType");
    if (field.type) {
        field.kind = KindOf(*field.type, field.kind);
        field.dateTimeType = DateTimeTypeOf(*field.type);
    }
}

Outputs::Field Outputs::ReadField(const Element& element, bool classification, Inputs& inputs, Target& target) {
    Field field{};
    field.name = element.Text(u"name");
    field.label = element.TextOr(u"displayName", field.name);
    field.feature = ReadOutputFeature(element);
    field.kind = KindOf(field.feature, element, classification, target);
    if (field.kind == ScoreValue::DATETIME_VALUE) {
        field.dateTimeType = target.Var().GetDateTimeType();
    }
    ReadDestination(element, inputs, target, field);
    const bool isCategory = field.kind != ScoreValue::NUMERIC_VALUE ||
                            (field.feature.kind == OutputFeature::Kind::PREDICTED && classification);
    field.level =
        element.OneOfOr(u"optype", kLevels, isCategory ? ScoreDictVar::LEVEL_NOMINAL : ScoreDictVar::LEVEL_CONTINUOUS);
    if (NamesCategory(field.feature, classification) && element.Has(u"value")) {
        field.category = target.CategoryOf(element, u"value");
    }
    if (field.feature.needsTarget) {
        fTargetSlot = inputs.WatchTarget();
    }
    field.valueType = ValueTypeOf(element, field.kind);
    return field;
}

/// The kind and the level of a transformed value become known with its expression.
void Outputs::ReadExpression(const Element& element, Field& field, Inputs& inputs, FieldScope& scope) {
    const std::optional<DataType> stated = ReadDataType(element, u"dataType");
    field.expression = AsType(inputs.Derived().ReadExpression(scope, element, stated), stated, inputs.Layout());
    field.valueType = field.expression->Type().value_or(DataType::STRING);
    field.expression = AsType(std::move(field.expression), field.valueType, inputs.Layout());
    field.kind = HostKindOf(field.valueType);
    if (!element.Has(u"optype") && field.kind != ScoreValue::NUMERIC_VALUE) {
        field.level = ScoreDictVar::LEVEL_NOMINAL;
    }
}

std::unique_ptr<ScoreDictionary> Outputs::MakeDictionary() const {
    if (std::none_of(fFields.begin(), fFields.end(), [](const Field& field) { return field.isFinal; })) {
        return nullptr;
    }
    auto dictionary = std::make_unique<BaseDictionary>();
    for (const Field& field : fFields) {
        if (!field.isFinal) {
            continue;
        }
        auto var = std::make_unique<ResultVar>(field.name, TypeOf(field.kind));
        var->SetLabel(field.label);
        var->SetMLevel(field.level);
        var->SetDateTimeType(field.dateTimeType);
        var->SetFeature(field.feature.resultFeature);
        dictionary->AddVar(field.name, var.release());
    }
    return dictionary;
}

std::vector<ResultLayout::Output> Outputs::Layout() const {
    std::vector<ResultLayout::Output> layout;
    for (const Field& field : fFields) {
        layout.push_back({field.name, field.kind, field.type, TakesKind(field.type), field.isFinal});
    }
    return layout;
}

/// Each field sees the values of those before it.
void Outputs::Fill(const ScoreValue* value, const Prediction& prediction, const Inputs& inputs, const Target& target,
                   OutputValues& outputs) const {
    const OutputCase scored{value, prediction, inputs, target, fTargetSlot, fActualCodes, fIsClassification};
    int position = 0;
    for (const Field& field : fFields) {
        if (field.expression != nullptr && !field.isOfOthers) {
            Value& known = inputs.Case().Field(field.slot);
            known = field.expression->Evaluate(inputs.Case());
            SetValue(known, position, outputs);
        } else {
            FillFeature(field, scored, outputs, position);
            if (fTransforms) {
                static_cast<Value&>(inputs.Case().Field(field.slot)) = FromHost(outputs.At(position), field.valueType);
            }
        }
        ++position;
    }
}

void Outputs::FillFeature(const Field& field, const OutputCase& scored, OutputValues& outputs, int position) const {
    if (field.isOfOthers) {
        outputs.SetMissing(position);
    } else if (field.rank > 1) {
        FillRanked(field, scored, outputs, position);
    } else {
        const int category = field.category == Prediction::kNoCategory ? scored.prediction.category : field.category;
        field.feature.fill(scored, category, outputs, position);
    }
}

/// A regression has no prediction behind the first one. A field that names its category has it, whatever the rank.
void Outputs::FillRanked(const Field& field, OutputCase scored, OutputValues& outputs, int position) const {
    const int ranked = fIsClassification ? scored.prediction.Ranked(field.rank) : Prediction::kNoCategory;
    scored.rank = field.rank;
    scored.value = ranked == Prediction::kNoCategory ? nullptr : &scored.target.Category(ranked);
    field.feature.fill(scored, field.category == Prediction::kNoCategory ? ranked : field.category, outputs, position);
}

void Outputs::SetValue(const Value& value, int position, OutputValues& outputs) {
    if (value.isMissing) {
        outputs.SetMissing(position);
    } else if (IsText(value.type)) {
        outputs.SetText(position, std::string(value.text));
    } else if (IsMoment(value.type) || value.type == DataType::BOOLEAN) {
        outputs.Set(position, ToHost(value).get());
    } else {
        outputs.SetNumber(position, value.number);
    }
}

} // namespace veltrane_kit
