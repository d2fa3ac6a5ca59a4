#include "kit/outputs.h"

#include "kit/raise.h"

#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/ResultVar.h>
#include <MCVeltrane_900/ScoreMissingValueSet.h>

#include <xercesc/dom/DOMDocument.hpp>

#include <set>

namespace veltrane_kit {

using namespace MCVeltrane_900;

namespace {

using Feature = Outputs::Feature;
using RF = ScoreResultField;

struct FeatureMeaning {
    Feature feature;
    ScoreResultField::ResultFeature resultFeature;
};

constexpr Word<FeatureMeaning> kFeatures[] = {
    {u"predictedValue", {Feature::PREDICTED_VALUE, RF::RF_PREDICTED_VALUE}},
    {u"predictedDisplayValue", {Feature::DISPLAY_VALUE, RF::RF_PREDICTED_DISPLAY_VALUE}},
    {u"probability", {Feature::PROBABILITY, RF::RF_PROBABILITY}},
    {u"confidence", {Feature::CONFIDENCE, RF::RF_NONE}},
    {u"entityId", {Feature::ENTITY_ID, RF::RF_ENTITY_ID}},
    {u"residual", {Feature::RESIDUAL, RF::RF_RESIDUAL}},
    {u"transformedValue", {Feature::TRANSFORMED_VALUE, RF::RF_NONE}},
    {u"standardError", {Feature::NOT_GIVEN, RF::RF_STANDARD_ERROR}},
    {u"standardDeviation", {Feature::NOT_GIVEN, RF::RF_STANDARD_DEVIATION}},
    {u"clusterId", {Feature::NOT_GIVEN, RF::RF_CLUSTER_ID}},
    {u"clusterAffinity", {Feature::NOT_GIVEN, RF::RF_CLUSTER_AFFINITY}},
    {u"affinity", {Feature::NOT_GIVEN, RF::RF_CLUSTER_AFFINITY}},
    {u"entityAffinity", {Feature::NOT_GIVEN, RF::RF_ENTITY_AFFINITY}},
    {u"warning", {Feature::NOT_GIVEN, RF::RF_WARNING}},
    {u"ruleValue", {Feature::NOT_GIVEN, RF::RF_RULE_VALUE}},
    {u"reasonCode", {Feature::NOT_GIVEN, RF::RF_NONE}},
    {u"decision", {Feature::DECISION, RF::RF_NONE}},
    {u"antecedent", {Feature::NOT_GIVEN, RF::RF_NONE}},
    {u"consequent", {Feature::NOT_GIVEN, RF::RF_NONE}},
    {u"rule", {Feature::NOT_GIVEN, RF::RF_NONE}},
    {u"ruleId", {Feature::NOT_GIVEN, RF::RF_NONE}},
    {u"support", {Feature::NOT_GIVEN, RF::RF_NONE}},
    {u"lift", {Feature::NOT_GIVEN, RF::RF_NONE}},
    {u"leverage", {Feature::NOT_GIVEN, RF::RF_NONE}},
};

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

/// The kind of a feature's values, where the model doesn't decide it.
ScoreValue::ValueType KindOf(Feature feature, const Element& element) {
    switch (feature) {
    case Feature::DISPLAY_VALUE:
    case Feature::ENTITY_ID:
        return ScoreValue::STRING_VALUE;
    case Feature::NOT_GIVEN:
        return Same(element.Raw(u"dataType"), u"string") ? ScoreValue::STRING_VALUE : ScoreValue::NUMERIC_VALUE;
    default:
        return ScoreValue::NUMERIC_VALUE;
    }
}

bool HasExpression(const Element& outputField) {
    for (const Element child : outputField.Children()) {
        if (!child.Is(u"Extension") && !child.Is(u"Decisions") && !child.Is(u"Value")) {
            return true;
        }
    }
    return false;
}

/// Makes a derived field of an output field with an expression, and moves the expression there. The Decisions say to
/// people what its values mean.
void MoveExpression(const Element& outputField, xercesc::DOMElement& fields) {
    xercesc::DOMElement* derived = fields.getOwnerDocument()->createElement(u"DerivedField");
    const XMLCh* type = outputField.Raw(u"dataType");
    const bool isText = Same(type, u"string");
    const XMLCh* level = outputField.Raw(u"optype");
    derived->setAttribute(u"name", outputField.Raw(u"name"));
    derived->setAttribute(u"dataType", *type == 0 ? u"double" : type);
    derived->setAttribute(u"optype", *level != 0 ? level : isText ? u"categorical" : u"continuous");
    for (Element child = outputField.FirstChild(); child;) {
        const Element next = child.NextSibling();
        if (!child.Is(u"Extension") && !child.Is(u"Decisions")) {
            derived->appendChild(child.Dom());
        }
        child = next;
    }
    fields.appendChild(derived);
}

} // namespace

Outputs::Outputs(const Element& model, bool classification, Inputs& inputs, Target& target, PMMLTranslator& translator)
    : fIsClassification(classification) {
    const Element output = model.Child(u"Output");
    if (!output) {
        return;
    }
    bool transforms = false;
    std::set<std::string> names;
    for (const Element child : output.Children()) {
        if (child.Is(u"Extension")) {
            continue;
        }
        if (!child.Is(u"OutputField")) {
            child.RaiseMisplaced();
        }
        Field field = ReadField(child, classification, inputs, target);
        transforms = transforms || field.feature == Feature::TRANSFORMED_VALUE;
        if (!names.insert(field.name).second) {
            Raise<Message::DUPLICATE_DEFINITION>("OutputField", field.name, "Output");
        }
        fFields.push_back(std::move(field));
    }
    if (transforms) {
        ReadExpressions(output, inputs, translator);
    }
}

Outputs::Field Outputs::ReadField(const Element& element, bool classification, Inputs& inputs, Target& target) {
    Field field{};
    field.name = element.Text(u"name");
    field.label = element.TextOr(u"displayName", field.name);
    const FeatureMeaning meaning = element.OneOfOr(
        u"feature", kFeatures, FeatureMeaning{Feature::PREDICTED_VALUE, ScoreResultField::RF_PREDICTED_VALUE});
    field.feature = meaning.feature;
    field.resultFeature = meaning.resultFeature;
    if (field.feature == Feature::DECISION) {
        field.feature = HasExpression(element) ? Feature::TRANSFORMED_VALUE : Feature::NOT_GIVEN;
    }
    field.kind = KindOf(field.feature, element);
    if (field.feature == Feature::PREDICTED_VALUE && classification) {
        field.kind = KindOf(target.Var().GetVarType());
    }
    const bool isCategory =
        field.kind != ScoreValue::NUMERIC_VALUE || (field.feature == Feature::PREDICTED_VALUE && classification);
    field.level =
        element.OneOfOr(u"optype", kLevels, isCategory ? ScoreDictVar::LEVEL_NOMINAL : ScoreDictVar::LEVEL_CONTINUOUS);
    const bool ofCategory = field.feature == Feature::PROBABILITY || field.feature == Feature::CONFIDENCE ||
                            (field.feature == Feature::RESIDUAL && classification);
    if (ofCategory && element.Has(u"value")) {
        field.category = target.CategoryOf(element, u"value");
    }
    if (field.feature == Feature::RESIDUAL) {
        fTargetSlot = inputs.WatchTarget();
    }
    if (field.feature == Feature::TRANSFORMED_VALUE && !HasExpression(element)) {
        Raise<Message::MISSING_NODE_IN>("EXPRESSION", "OutputField");
    }
    return field;
}

std::unique_ptr<ScoreDictionary> Outputs::MakeDictionary() const {
    if (fFields.empty()) {
        return nullptr;
    }
    auto dictionary = std::make_unique<BaseDictionary>();
    for (const Field& field : fFields) {
        auto var = std::make_unique<ResultVar>(field.name, TypeOf(field.kind));
        var->SetLabel(field.label);
        var->SetMLevel(field.level);
        var->SetFeature(static_cast<ScoreResultField::ResultFeature>(field.resultFeature));
        dictionary->AddVar(field.name, var.release());
    }
    return dictionary;
}

std::vector<ResultLayout::Output> Outputs::Layout() const {
    std::vector<ResultLayout::Output> layout;
    for (const Field& field : fFields) {
        layout.push_back({field.name, field.kind});
    }
    return layout;
}

void Outputs::Fill(const ScoreValue* value, const Prediction& prediction, const Inputs& inputs, const Target& target,
                   OutputValues& outputs) {
    for (std::size_t i = 0; i < fFields.size(); ++i) {
        const int position = static_cast<int>(i);
        if (fFields[i].feature == Feature::RESIDUAL) {
            outputs.SetNumber(position, fIsClassification ? CategoryResidual(fFields[i], prediction, inputs, target)
                                                          : Residual(value, inputs));
        } else {
            FillField(fFields[i], position, value, prediction, target, outputs);
        }
    }
    if (fExpressions != nullptr) {
        Transform(inputs, outputs);
    }
}

void Outputs::FillField(const Field& field, int position, const ScoreValue* value, const Prediction& prediction,
                        const Target& target, OutputValues& outputs) {
    const int category = field.category == Prediction::kNoCategory ? prediction.category : field.category;
    switch (field.feature) {
    case Feature::PREDICTED_VALUE:
        outputs.Set(position, value);
        return;
    case Feature::DISPLAY_VALUE:
        if (prediction.category == Prediction::kNoCategory) {
            outputs.Set(position, value);
        } else {
            outputs.SetText(position, target.Label(prediction.category));
        }
        return;
    case Feature::PROBABILITY:
        outputs.SetNumber(position, prediction.ProbabilityOf(category));
        return;
    case Feature::CONFIDENCE:
        outputs.SetNumber(position, prediction.ConfidenceOf(category));
        return;
    case Feature::ENTITY_ID:
        if (prediction.entityId != nullptr) {
            outputs.SetText(position, *prediction.entityId);
            return;
        }
        [[fallthrough]];
    default:
        outputs.SetMissing(position);
    }
}

/// The target's own value in the case less the predicted one.
double Outputs::Residual(const ScoreValue* value, const Inputs& inputs) const {
    if (fTargetSlot == Inputs::kNoSlot || value == nullptr || value->GetType() == ScoreValue::STRING_VALUE) {
        return Prediction::kNone;
    }
    const FieldValue& actual = inputs[fTargetSlot];
    return actual.number == Prediction::kNone ? Prediction::kNone : actual.number - value->GetDouble();
}

/// Whether the case has the category, 1 or 0, less the probability of it.
double Outputs::CategoryResidual(const Field& field, const Prediction& prediction, const Inputs& inputs,
                                 const Target& target) const {
    const int category = field.category == Prediction::kNoCategory ? prediction.category : field.category;
    const double probability = prediction.ProbabilityOf(category);
    if (fTargetSlot == Inputs::kNoSlot || inputs[fTargetSlot].IsMissing() || probability == Prediction::kNone) {
        return Prediction::kNone;
    }
    return (target.Find(*inputs[fTargetSlot].value) == category ? 1.0 : 0.0) - probability;
}

void Outputs::ReadExpressions(const Element& output, const Inputs& inputs, PMMLTranslator& translator) {
    fExpressions = std::make_unique<Expressions>();
    AddKnownFields(inputs);
    xercesc::DOMElement* fields = output.Dom()->getOwnerDocument()->createElement(u"TransformationDictionary");
    output.Dom()->appendChild(fields);
    std::size_t next = 0;
    for (const Element child : output.Children()) {
        if (!child.Is(u"OutputField")) {
            continue;
        }
        const Field& field = fFields[next++];
        if (field.feature == Feature::TRANSFORMED_VALUE) {
            MoveExpression(child, *fields);
            fExpressions->outputPositions.push_back(-1);
        } else {
            DictVar var(field.name, TypeOf(field.kind));
            var.SetMLevel(field.level);
            AddKnownField(field.name, var);
            fExpressions->outputPositions.push_back(fExpressions->record.GetIndex(field.name));
        }
    }
    fExpressions->fields.reset(translator.HandleTransformationDictionary(fields, &fExpressions->dictionary));
    fExpressions->fields->SetUpDerivedCaseRecord();
    for (Field& field : fFields) {
        if (field.feature == Feature::TRANSFORMED_VALUE) {
            const ScoreDictVar& var = *fExpressions->fields->GetVar(field.name);
            field.kind = KindOf(var.GetVarType());
            field.level = var.GetMLevel();
        }
    }
}

/// The input fields and the derived fields, in the order of their records. A derived field is no derived field here:
/// its value is there already.
void Outputs::AddKnownFields(const Inputs& inputs) {
    for (const std::string& name : inputs.Record().GetVarNames(true)) {
        AddKnownField(name, *inputs.Dictionary().GetVar(name));
    }
    fExpressions->inputCount = fExpressions->record.Size();
    if (inputs.Derived() == nullptr) {
        return;
    }
    for (const std::string& name : inputs.Derived()->GetDerivedVarNames()) {
        AddKnownField(name, *inputs.Derived()->GetVar(name));
    }
    fExpressions->derivedCount = fExpressions->record.Size() - fExpressions->inputCount;
}

void Outputs::AddKnownField(const std::string& name, const ScoreDictVar& var) {
    auto known = std::make_unique<DictVar>(name, var.GetVarType());
    known->SetMLevel(var.GetMLevel());
    known->SetDateTimeType(var.GetDateTimeType());
    known->SetNumericDataType(var.GetNumericDataType());
    known->SetWidth(var.GetWidth());
    if (const ScoreMissingValueSet* missing = var.GetMissingValues(); missing != nullptr) {
        known->SetMissingValues(missing->Clone());
    }
    if (fExpressions->dictionary.GetVar(name) == nullptr) {
        fExpressions->dictionary.AddVar(name, known.release());
        fExpressions->record.AddField(name);
    }
}

void Outputs::Transform(const Inputs& inputs, OutputValues& outputs) {
    Expressions& at = *fExpressions;
    for (int i = 0; i < at.inputCount; ++i) {
        at.record.Borrow(i, inputs.Record().Get(i));
    }
    for (int i = 0; i < at.derivedCount; ++i) {
        const ScoreCaseRecord* derived = inputs.DerivedRecord();
        at.record.Borrow(at.inputCount + i, derived == nullptr ? nullptr : derived->Get(i));
    }
    for (std::size_t i = 0; i < fFields.size(); ++i) {
        if (at.outputPositions[i] >= 0) {
            at.record.Borrow(at.outputPositions[i], outputs.At(static_cast<int>(i)));
        }
    }
    const ScoreCaseRecord* transformed = at.fields->GetValuesForDerivedVars(&at.record, &at.dictionary);
    int next = 0;
    for (std::size_t i = 0; i < fFields.size(); ++i) {
        if (at.outputPositions[i] < 0) {
            outputs.Set(static_cast<int>(i), transformed->Get(next++));
        }
    }
}

} // namespace veltrane_kit
