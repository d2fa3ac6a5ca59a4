#include "kit/results/outputs.h"

#include "kit/document/raise.h"
#include "kit/expressions/leaves.h"
#include "kit/inputs/host_values.h"
#include "kit/results/typed_value.h"

#include <MCVeltrane_900/NumericValue.h>
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

/// The type of an output field's value: the stated one, else that of the target's categories, or what its kind keeps.
DataType ValueTypeOf(const Element& element, ScoreValue::ValueType kind, bool isCategory, const Target& target) {
    const std::optional<DataType> stated = ReadDataType(element, u"dataType");
    if (stated || isCategory) {
        return stated.value_or(target.Type());
    }
    return kind == ScoreValue::STRING_VALUE ? DataType::STRING : DataType::DOUBLE;
}

} // namespace

/// What the expression of an output field can refer to: the output fields before it, derived fields, input fields, and
/// what the parts of the model tell.
class Outputs::OutputScope : public FieldScope {
public:
    explicit OutputScope(Inputs& inputs) : fInputs(inputs) {}

    void Add(const std::string& name, const Found& found) { fOutputs.emplace(name, found); }

    /// An output field alone.
    std::optional<Found> Find(const std::string& name) const {
        const auto output = fOutputs.find(name);
        return output == fOutputs.end() ? std::nullopt : std::optional(output->second);
    }

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

Outputs::Outputs(const Element& model, bool classification, Inputs& inputs, Target& target,
                 const std::vector<Told>& parts, const std::vector<Element>& asked, const More& more)
    : fIsClassification(classification), fMore(more), fOtherActuals(more.targets.size()) {
    OutputScope scope(inputs);
    if (const Element output = model ? model.Child(u"Output") : Element()) {
        ReadFields(output, inputs, target, scope);
    }
    if (model) {
        ReadResults(model, inputs, target, scope);
    }
    for (const Told& told : parts) {
        AddTold(told, inputs);
    }
    for (const Element& element : asked) {
        ReadAsked(element, inputs, target, scope);
    }
    AddVerified(inputs);
    if (classification) {
        fActual.LearnCodes(inputs, target);
    }
    for (std::size_t i = 0; i < fMore.targets.size(); ++i) {
        if (fMore.targets[i].isCategory) {
            fOtherActuals[i].LearnCodes(inputs, *fMore.targets[i].target);
        }
    }
}

Outputs::~Outputs() = default;

void Outputs::ReadFields(const Element& output, Inputs& inputs, Target& target, OutputScope& scope) {
    for (const Element child : output.Children()) {
        if (!child.Is(u"OutputField")) {
            child.RaiseMisplaced();
        }
        const std::optional<FieldScope::Found> answer =
            child.Has(u"segmentId") ? inputs.FindAnswer(child.Text(u"name")) : std::nullopt;
        AddField(answer ? ReadAnswered(child, *answer, inputs) : ReadField(child, fIsClassification, inputs, target),
                 child, inputs, scope);
    }
}

void Outputs::AddField(Field field, const Element& element, Inputs& inputs, OutputScope& scope) {
    if (scope.Find(field.name)) {
        Raise<Message::DUPLICATE_DEFINITION>(element.Tag(), field.name, "Output");
    }
    if (field.IsTransformed() && field.expression == nullptr) {
        fTransforms = true;
        ReadExpression(element, field, inputs, scope);
    }
    field.slot = inputs.Layout().AddField();
    scope.Add(field.name, {field.slot, field.valueType, nullptr});
    fFields.push_back(std::move(field));
}

/// The results of an older model, which are output fields by another name.
void Outputs::ReadResults(const Element& model, Inputs& inputs, Target& target, OutputScope& scope) {
    for (const Element child : model.Children()) {
        if (child.Is(u"ResultField")) {
            AddField(ReadField(child, fIsClassification, inputs, target), child, inputs, scope);
        }
    }
}

/// An output field whose value a part of the model tells.
Outputs::Field Outputs::ReadAnswered(const Element& element, const FieldScope::Found& answer, Inputs& inputs) {
    Field field{};
    field.name = element.Text(u"name");
    field.label = element.TextOr(u"displayName", field.name);
    field.feature = ReadOutputFeature(element);
    field.feature.expression = OutputFeature::Expression::REQUIRED;
    field.feature.inRows = OutputFeature::InRows::MISSING;
    field.isFinal = element.FlagOr(u"isFinalResult", true);
    field.level = element.OneOfOr(u"optype", kLevels, ScoreDictVar::LEVEL_CONTINUOUS);
    TakeExpression(element, std::make_unique<FieldExpression>(answer.slot, answer.type), inputs, field);
    return field;
}

/// An output field of a part of the model, as one of the whole.
void Outputs::AddTold(const Told& told, Inputs& inputs) {
    if (std::any_of(fFields.begin(), fFields.end(), [&](const Field& field) { return field.name == told.name; })) {
        return;
    }
    Field field{};
    field.name = told.name;
    field.label = told.label;
    field.feature.resultFeature = told.feature;
    field.feature.expression = OutputFeature::Expression::REQUIRED;
    field.feature.inRows = OutputFeature::InRows::MISSING;
    field.level = told.level;
    field.valueType = told.found.type.value_or(DataType::STRING);
    field.kind = HostKindOf(field.valueType);
    field.dateTimeType = DateTimeTypeOf(field.valueType);
    field.expression = std::make_unique<FieldExpression>(told.found.slot, field.valueType);
    field.slot = inputs.Layout().AddField();
    fFields.push_back(std::move(field));
}

/// An output field of the outer model, as if it stood among those of this one. A transformed value without an
/// expression is the output field that it names.
void Outputs::ReadAsked(const Element& element, Inputs& inputs, Target& target, OutputScope& scope) {
    Field field = ReadField(element, fIsClassification, inputs, target);
    if (field.IsTransformed() && element.Has(u"value")) {
        const std::optional<FieldScope::Found> named = scope.Find(element.Text(u"value"));
        if (!named) {
            element.RaiseInvalid(u"value");
        }
        TakeExpression(element, std::make_unique<FieldExpression>(named->slot, named->type), inputs, field);
        fTransforms = true;
    } else if (field.IsTransformed()) {
        fTransforms = true;
        ReadExpression(element, field, inputs, scope);
    }
    field.isOfOthers = false;
    field.isFinal = false;
    field.isAsked = true;
    field.slot = inputs.Layout().AddField();
    fFields.push_back(std::move(field));
}

std::vector<Outputs::Told> Outputs::AllTold() const {
    std::vector<Told> told;
    for (const Field& field : fFields) {
        if (field.isVerified) {
            continue;
        }
        told.push_back({field.name,
                        {field.slot, field.valueType, nullptr},
                        field.isAsked,
                        field.isFinal,
                        field.label,
                        field.feature.resultFeature,
                        field.level});
    }
    return told;
}

void Outputs::Actual::LearnCodes(Inputs& inputs, const Target& target) {
    for (int category = 0; slot != Inputs::kNoSlot && category < target.CategoryCount(); ++category) {
        codes.push_back(inputs.CategoryOf(slot, target.CategoryValue(category)));
    }
}

/// A record of a verification calls the prediction of a further target by the target's name, as it does that of the
/// first one. Where an output field has that name it is meant.
void Outputs::AddVerified(Inputs& inputs) {
    for (std::size_t i = 0; i < fMore.targets.size(); ++i) {
        const OtherTarget& other = fMore.targets[i];
        const std::string& name = other.target->Name();
        if (std::any_of(fFields.begin(), fFields.end(), [&](const Field& field) { return field.name == name; })) {
            continue;
        }
        Field field{};
        field.name = name;
        field.feature = PredictedValue();
        field.kind = other.isCategory ? KindOf(other.target->Var().GetVarType()) : ScoreValue::NUMERIC_VALUE;
        field.level = other.isCategory ? ScoreDictVar::LEVEL_NOMINAL : ScoreDictVar::LEVEL_CONTINUOUS;
        field.other = static_cast<int>(i);
        field.isFinal = false;
        field.isVerified = true;
        field.valueType = other.isCategory ? other.target->Type() : DataType::DOUBLE;
        field.slot = inputs.Layout().AddField();
        fFields.push_back(std::move(field));
    }
}

/// The further target that a field tells of; clusters and instances don't go by targets.
int Outputs::OtherTargetOf(const Element& element, const OutputFeature& feature) const {
    const std::string name = element.TextOr(u"targetField", "");
    const bool goesByTargets = !feature.isOfEntities || fMore.haveEntities;
    for (std::size_t i = 0; i < fMore.targets.size() && goesByTargets && !name.empty(); ++i) {
        if (fMore.targets[i].target->Name() == name) {
            return static_cast<int>(i);
        }
    }
    return kOwnTarget;
}

/// What of a field says to whom its value belongs and what becomes of it.
void Outputs::ReadDestination(const Element& element, const Inputs& inputs, const Target& target, Field& field) const {
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
        const bool isOwn = target.IsOwn() || name == target.Name() || field.feature.isOfEntities;
        field.isOfOthers = field.isOfOthers || !isOwn;
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
    if (fMore.namesClusters && field.feature.resultFeature == ScoreResultField::RF_CLUSTER_ID) {
        field.feature = PredictedCluster();
    }
    field.other = OtherTargetOf(element, field.feature);
    if (field.other != kOwnTarget) {
        const OtherTarget& other = fMore.targets[static_cast<std::size_t>(field.other)];
        ReadPredicted(element, other.isCategory, inputs, *other.target, field);
        if (field.feature.needsTarget) {
            fOtherActuals[static_cast<std::size_t>(field.other)].slot = inputs.WatchTarget(other.target->Name());
        }
        return field;
    }
    ReadPredicted(element, classification, inputs, target, field);
    if (field.feature.isOfEntities && element.Has(u"value") && AsksForAffinity(element)) {
        field.named = fMore.entities.PlaceOf(element.AnyText(u"value"));
    }
    if (field.feature.needsTarget) {
        fActual.slot = inputs.WatchTarget(target.Name());
    }
    return field;
}

/// What of a field goes by the target that it tells of.
void Outputs::ReadPredicted(const Element& element, bool classification, const Inputs& inputs, Target& target,
                            Field& field) const {
    field.kind = KindOf(field.feature, element, classification, target);
    if (field.kind == ScoreValue::DATETIME_VALUE) {
        field.dateTimeType = target.Var().GetDateTimeType();
    }
    ReadDestination(element, inputs, target, field);
    const bool isPredictedCategory = field.feature.kind == OutputFeature::Kind::PREDICTED && classification;
    const bool isCategory = field.kind != ScoreValue::NUMERIC_VALUE || isPredictedCategory;
    field.level =
        element.OneOfOr(u"optype", kLevels, isCategory ? ScoreDictVar::LEVEL_NOMINAL : ScoreDictVar::LEVEL_CONTINUOUS);
    if (NamesCategory(field.feature, classification) && element.Has(u"value")) {
        field.category = target.CategoryOf(element, u"value");
    }
    field.valueType = ValueTypeOf(element, field.kind, isPredictedCategory, target);
}

void Outputs::ReadExpression(const Element& element, Field& field, Inputs& inputs, FieldScope& scope) {
    const std::optional<DataType> stated = ReadDataType(element, u"dataType");
    TakeExpression(element, inputs.Derived().ReadExpression(scope, element, stated), inputs, field);
}

/// The kind, the type and the level of a transformed value become known with its expression.
void Outputs::TakeExpression(const Element& element, ExpressionPtr expression, Inputs& inputs, Field& field) {
    const std::optional<DataType> stated = ReadDataType(element, u"dataType");
    field.expression = AsType(std::move(expression), stated, inputs.Layout());
    field.valueType = field.expression->Type().value_or(DataType::STRING);
    field.expression = AsType(std::move(field.expression), field.valueType, inputs.Layout());
    field.kind = HostKindOf(field.valueType);
    field.dateTimeType = DateTimeTypeOf(field.valueType);
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
void Outputs::Fill(const ScoreValue* value, const Prediction& prediction, Frame& fields, const Target& target,
                   OutputValues& outputs) const {
    const OutputCase scored{value,        prediction,    CaseView(fields), target,
                            fActual.slot, fActual.codes, fIsClassification};
    int position = 0;
    for (const Field& field : fFields) {
        if (field.expression != nullptr && !field.isOfOthers) {
            Value& known = fields.Field(field.slot);
            known = field.expression->Evaluate(fields);
            SetValue(known, position, outputs);
        } else {
            FillFeature(field, scored, outputs, position);
            if (fTransforms) {
                static_cast<Value&>(fields.Field(field.slot)) = FromHost(outputs.At(position), field.valueType);
            }
        }
        ++position;
    }
}

void Outputs::FillFeature(const Field& field, const OutputCase& scored, OutputValues& outputs, int position) const {
    if (field.isOfOthers) {
        outputs.SetMissing(position);
    } else if (field.other != kOwnTarget) {
        FillOther(field, scored, outputs, position);
    } else {
        FillOwn(field, scored, outputs, position);
    }
}

/// From the prediction that the case has.
void Outputs::FillOwn(const Field& field, const OutputCase& scored, OutputValues& outputs, int position) const {
    if (field.rank > 1) {
        FillRanked(field, scored, outputs, position);
    } else if (field.named != AskedEntities::kNone) {
        OutputCase named = scored;
        named.named = field.named;
        field.feature.fill(named, Prediction::kNoCategory, outputs, position);
    } else {
        const int category = field.category == Prediction::kNoCategory ? scored.prediction.category : field.category;
        field.feature.fill(scored, category, outputs, position);
    }
}

/// From the prediction of a further target.
void Outputs::FillOther(const Field& field, const OutputCase& scored, OutputValues& outputs, int position) const {
    const auto at = static_cast<std::size_t>(field.other);
    const OtherTarget& other = fMore.targets[at];
    if (at >= scored.prediction.others.size()) {
        outputs.SetMissing(position);
        return;
    }
    const Prediction& prediction = scored.prediction.others[at];
    const bool isPredicted =
        other.isCategory ? prediction.category != Prediction::kNoCategory : prediction.number != Prediction::kNone;
    const NumericValue number(prediction.number);
    const ScoreValue* value = !isPredicted       ? nullptr
                              : other.isCategory ? &other.target->Category(prediction.category)
                                                 : static_cast<const ScoreValue*>(&number);
    FillOwn(field,
            {value, prediction, scored.fields, *other.target, fOtherActuals[at].slot, fOtherActuals[at].codes,
             other.isCategory},
            outputs, position);
}

/// A regression has no prediction behind the first one. A field that names its category has it, whatever the rank.
void Outputs::FillRanked(const Field& field, OutputCase scored, OutputValues& outputs, int position) const {
    const int ranked = scored.isClassification ? scored.prediction.Ranked(field.rank) : Prediction::kNoCategory;
    scored.rank = field.rank;
    scored.named = field.named;
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
