#include "kit/results/outputs.h"

#include "kit/document/raise.h"
#include "kit/results/typed_value.h"

#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/ResultVar.h>
#include <MCVeltrane_900/ScoreMissingValueSet.h>

#include <xercesc/dom/DOMDocument.hpp>

#include <algorithm>
#include <set>
#include <stdexcept>

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
        transforms = transforms || field.IsTransformed();
        if (!names.insert(field.name).second) {
            Raise<Message::DUPLICATE_DEFINITION>("OutputField", field.name, "Output");
        }
        fFields.push_back(std::move(field));
    }
    if (transforms) {
        ReadExpressions(output, inputs, translator);
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
    if (field.IsTransformed()) {
        RequireExpression(element);
    }
    return field;
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

void Outputs::Fill(const ScoreValue* value, const Prediction& prediction, const Inputs& inputs, const Target& target,
                   OutputValues& outputs) {
    const OutputCase scored{value, prediction, inputs, target, fTargetSlot, fActualCodes, fIsClassification};
    int position = 0;
    for (const Field& field : fFields) {
        if (field.isOfOthers) {
            outputs.SetMissing(position++);
        } else if (field.rank > 1) {
            FillRanked(field, scored, outputs, position++);
        } else {
            const int category = field.category == Prediction::kNoCategory ? prediction.category : field.category;
            field.feature.fill(scored, category, outputs, position++);
        }
    }
    if (fExpressions == nullptr) {
        return;
    }
    try {
        Transform(inputs, outputs);
    } catch (const std::out_of_range&) {
        // An imputation from more means than labels. The transformed values of this case stay missing.
    }
}

/// A regression has no prediction behind the first one. A field that names its category has it, whatever the rank.
void Outputs::FillRanked(const Field& field, OutputCase scored, OutputValues& outputs, int position) const {
    const int ranked = fIsClassification ? scored.prediction.Ranked(field.rank) : Prediction::kNoCategory;
    scored.rank = field.rank;
    scored.value = ranked == Prediction::kNoCategory ? nullptr : &scored.target.Category(ranked);
    field.feature.fill(scored, field.category == Prediction::kNoCategory ? ranked : field.category, outputs, position);
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
        if (field.IsTransformed()) {
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
        if (field.IsTransformed()) {
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
