#include "kit/inputs/mining_schema.h"

#include "kit/document/raise.h"
#include "kit/inputs/inputs.h"

#include <set>
#include <utility>

namespace veltrane_kit {

using namespace MCVeltrane_900;

namespace {

constexpr Word<ScoreModel::VarRole> kUsageTypes[] = {
    {u"active", ScoreModel::ROLE_INPUT},
    {u"predicted", ScoreModel::ROLE_TARGET},
    {u"target", ScoreModel::ROLE_TARGET},
    {u"supplementary", ScoreModel::ROLE_SUPPLEMENTARY},
    {u"group", ScoreModel::ROLE_GROUP},
    {u"order", ScoreModel::ROLE_ORDER},
    {u"frequencyWeight", ScoreModel::ROLE_FREQUENCY_WEIGHT},
    {u"analysisWeight", ScoreModel::ROLE_ANALYSIS_WEIGHT},
};

constexpr Word<OutlierTreatment> kOutlierTreatments[] = {
    {u"asIs", OutlierTreatment::AS_IS},
    {u"asMissingValues", OutlierTreatment::AS_MISSING},
    {u"asExtremeValues", OutlierTreatment::AS_EXTREME},
};

constexpr Word<InvalidTreatment> kInvalidTreatments[] = {
    {u"returnInvalid", InvalidTreatment::REFUSE},
    {u"asIs", InvalidTreatment::AS_IS},
    {u"asMissing", InvalidTreatment::AS_MISSING},
    {u"asValue", InvalidTreatment::REPLACE},
};

/// All but the last tell how a replacement was found, and nothing about what to do.
constexpr Word<bool> kMissingTreatments[] = {
    {u"asIs", false},     {u"asMean", false},  {u"asMode", false},
    {u"asMedian", false}, {u"asValue", false}, {u"returnInvalid", true},
};

constexpr Word<ScoreDictVar::MeasureLevel> kLevels[] = {
    {u"continuous", ScoreDictVar::LEVEL_CONTINUOUS},
    {u"categorical", ScoreDictVar::LEVEL_NOMINAL},
    {u"ordinal", ScoreDictVar::LEVEL_ORDINAL},
};

/// The text of a value of the field's type.
std::string ReadReplacement(const Element& element, const XMLCh* name, DataType type) {
    const std::string text = element.Text(name);
    if (ReadValue(text, type).isMissing) {
        element.RaiseInvalid(name);
    }
    return text;
}

std::optional<double> ReadBound(const Element& element, const XMLCh* name) {
    return element.Has(name) ? std::optional<double>(element.Number(name)) : std::nullopt;
}

void ReadOutliers(const Element& element, MiningField& field) {
    field.outliers = element.OneOfOr(u"outliers", kOutlierTreatments, OutlierTreatment::AS_IS);
    field.low = ReadBound(element, u"lowValue");
    field.high = ReadBound(element, u"highValue");
    if (field.outliers != OutlierTreatment::AS_IS && !field.low && !field.high) {
        Raise<Message::MISSING_VALUES_OF_BOTH>("lowValue", "highValue", "MiningField");
    }
}

/// @param var null for a field of an outer model
void ReadLevel(const Element& element, ScoreDictVar* var, MiningField& field) {
    if (!element.Has(u"optype")) {
        return;
    }
    const ScoreDictVar::MeasureLevel level = element.OneOf(u"optype", kLevels);
    field.level = level;
    if (var == nullptr) {
        return;
    }
    if (level == ScoreDictVar::LEVEL_CONTINUOUS && var->GetVarType() == ScoreDictVar::STRING_VAR) {
        Raise<Message::CONFLICTING_VALUES_IN>("continuous", "optype", element.Tag(), "string", "dataType", "DataField");
    }
    var->SetMLevel(level);
}

/// The type of a field that a schema names: of the dictionary, else of an outer model.
DataType TypeOf(const Element& element, const std::string& name, const DataFields& fields, Inputs* outer) {
    if (const auto definition = fields.find(name); definition != fields.end()) {
        return definition->second.type;
    }
    const std::optional<FieldScope::Found> found = outer == nullptr ? std::nullopt : outer->FindForPart(name);
    if (!found) {
        RaiseAt<Message::MISSING_VARIABLE>(element.Tag(), "name", name, "DataDictionary");
    }
    return found->type.value_or(DataType::STRING);
}

MiningField ReadMiningField(const Element& element, const DataFields& fields, ScoreDictionary& dictionary,
                            Inputs* outer) {
    MiningField field;
    field.name = element.Text(u"name");
    field.role = element.OneOfOr(u"usageType", kUsageTypes, ScoreModel::ROLE_INPUT);
    const bool isTarget = field.role == ScoreModel::ROLE_TARGET;
    const DataType type = TypeOf(element, field.name, fields, isTarget ? nullptr : outer);
    ReadLevel(element, dictionary.GetVar(field.name), field);
    ReadOutliers(element, field);
    field.missingRefused = element.OneOfOr(u"missingValueTreatment", kMissingTreatments, false);
    if (element.Has(u"missingValueReplacement")) {
        field.missingReplacement = ReadReplacement(element, u"missingValueReplacement", type);
    }
    field.invalid = element.OneOfOr(u"invalidValueTreatment", kInvalidTreatments, InvalidTreatment::REFUSE);
    field.statesInvalid = element.Has(u"invalidValueTreatment");
    if (field.invalid == InvalidTreatment::REPLACE) {
        field.invalidReplacement = ReadReplacement(element, u"invalidValueReplacement", type);
    }
    return field;
}

/// Networks and neighbours predict all their targets.
bool MayHaveSeveral(const Element& model) {
    return model.Is(u"NeuralNetwork") || model.Is(u"NearestNeighborModel");
}

/// Keeps the first target, or the one that the model names, and where there may be several the others behind it.
void NoteTarget(const Element& model, const MiningField& field, MiningSchema& schema) {
    if (field.role != ScoreModel::ROLE_TARGET) {
        return;
    }
    const std::string wanted = model.TextOr(u"targetFieldName", "");
    const bool hasAll = MayHaveSeveral(model);
    const bool isWanted = field.name == wanted;
    if (schema.target.empty() || (isWanted && !hasAll)) {
        schema.target = field.name;
    } else if (hasAll) {
        schema.otherTargets.push_back(field.name);
        if (isWanted) {
            std::swap(schema.target, schema.otherTargets.back());
        }
    } else if (schema.target != wanted) {
        RaiseAt<Message::MULTIPLE_TARGETS>("MiningField", "usageType", schema.target, field.name);
    }
}

} // namespace

const MiningField* MiningSchema::Find(const std::string& name) const {
    for (const MiningField& field : fields) {
        if (field.name == name) {
            return &field;
        }
    }
    return nullptr;
}

MiningSchema ReadMiningSchema(const Element& model, const DataFields& fields, ScoreDictionary& dictionary,
                              Inputs* outer) {
    MiningSchema schema;
    std::set<std::string> names;
    for (const Element child : model.RequireChild(u"MiningSchema").Children()) {
        if (child.Is(u"Extension")) {
            continue;
        }
        if (!child.Is(u"MiningField")) {
            child.RaiseMisplaced();
        }
        MiningField field = ReadMiningField(child, fields, dictionary, outer);
        if (!names.insert(field.name).second) {
            RaiseAt<Message::DUPLICATE_VARIABLE_IN>(child.Tag(), "name", field.name, "MiningSchema");
        }
        NoteTarget(model, field, schema);
        schema.fields.push_back(std::move(field));
    }
    const std::string named = model.TextOr(u"targetFieldName", "");
    if (schema.target.empty() && !named.empty()) {
        if (dictionary.GetVar(named) == nullptr) {
            RaiseAt<Message::MISSING_VARIABLE>(model.Tag(), "targetFieldName", named, "DataDictionary");
        }
        schema.target = named;
    }
    return schema;
}

} // namespace veltrane_kit
