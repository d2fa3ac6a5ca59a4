#include "kit/inputs/inputs.h"

#include "kit/document/raise.h"

#include <cmath>
#include <limits>
#include <utility>

namespace veltrane_kit {

using namespace MCVeltrane_900;

namespace {

#ifdef NDEBUG
constexpr bool kChecksLayout = false;
#else
constexpr bool kChecksLayout = true;
#endif

constexpr int kTargetPlace = std::numeric_limits<int>::max();

} // namespace

Inputs::Inputs(const MiningSchema& schema, const DeclaredValidities& validities, const ScoreDictionary& dictionary,
               TransformationDictionary* derived)
    : fDictionary(dictionary), fDerived(derived) {
    for (const MiningField& field : schema.fields) {
        if (field.role == ScoreModel::ROLE_INPUT) {
            fInputs.push_back(MakeSource(field.name, &field, validities));
            fPlaces.push_back(static_cast<int>(fInputs.size()) - 1);
            fSlots.emplace(field.name, fInputs.back().slot);
            fNames.push_back(field.name);
        }
    }
    if (!schema.target.empty()) {
        fTarget = MakeSource(schema.target, schema.Find(schema.target), validities);
        fPlaces.push_back(kTargetPlace);
    }
}

Inputs::Source Inputs::MakeSource(const std::string& name, const MiningField* schema,
                                  const DeclaredValidities& validities) {
    Source source{};
    source.name = name;
    source.var = fDictionary.GetVar(name);
    const auto validity = validities.find(name);
    source.field =
        std::make_unique<InputField>(*source.var, schema, validity == validities.end() ? nullptr : &validity->second);
    source.slot = static_cast<int>(fValues.size());
    source.position = -1;
    source.recordPosition = fRecord.AddField(name);
    fValues.emplace_back();
    return source;
}

int Inputs::Slot(const std::string& name) {
    if (const auto found = fSlots.find(name); found != fSlots.end()) {
        return found->second;
    }
    const ScoreDictVar* var = fDerived == nullptr ? nullptr : std::as_const(*fDerived).GetVar(name);
    return var == nullptr ? kNoSlot : AddDerived(name, *var);
}

int Inputs::AddDerived(const std::string& name, const ScoreDictVar& var) {
    Source source{};
    source.name = name;
    source.var = &var;
    source.holdsText = var.GetVarType() == ScoreDictVar::STRING_VAR;
    source.holdsNumber = var.GetVarType() == ScoreDictVar::kNUMERIC_VAR;
    source.slot = static_cast<int>(fValues.size());
    source.position = var.GetValueIndex();
    fValues.emplace_back();
    fSlots.emplace(name, source.slot);
    fPlaces.push_back(-1 - static_cast<int>(fDerivedFields.size()));
    fDerivedFields.push_back(std::move(source));
    return fDerivedFields.back().slot;
}

int Inputs::RequireSlot(const Element& element, const XMLCh* attribute) {
    const std::string name = element.Text(attribute);
    const int slot = Slot(name);
    if (slot == kNoSlot) {
        if (fDictionary.GetVar(name) != nullptr) {
            Raise<Message::NO_PREDICTOR>(name);
        }
        Raise<Message::MISSING_VARIABLE_IN_BOTH>(name, "DataDictionary", "TransformationDictionary");
    }
    return slot;
}

Inputs::Source& Inputs::SourceOf(int slot) {
    return const_cast<Source&>(std::as_const(*this).SourceOf(slot));
}

const Inputs::Source& Inputs::SourceOf(int slot) const {
    const int place = fPlaces[static_cast<std::size_t>(slot)];
    if (place == kTargetPlace) {
        return fTarget;
    }
    return place >= 0 ? fInputs[static_cast<std::size_t>(place)] : fDerivedFields[static_cast<std::size_t>(-1 - place)];
}

bool Inputs::IsNumeric(int slot) const {
    return Var(slot).GetVarType() != ScoreDictVar::STRING_VAR;
}

int Inputs::CategoryOf(int slot, const Element& element, const XMLCh* attribute) {
    const int code = CategoryOf(slot, element.AnyText(attribute));
    if (code == Categories::kUnknown) {
        element.RaiseInvalid(attribute);
    }
    return code;
}

int Inputs::CategoryOf(int slot, const std::string& text) {
    Source& source = SourceOf(slot);
    std::unique_ptr<ScoreValue> value(MakeValue(*source.var, text));
    if (value == nullptr && source.field == nullptr && (text == "true" || text == "false")) {
        // What a function computes is true as the number 1.
        value = std::make_unique<NumericValue>(text == "true" ? 1.0 : 0.0);
    }
    if (value == nullptr) {
        return Categories::kUnknown;
    }
    if (source.field != nullptr) {
        return source.field->CategoryOf(*value);
    }
    if (source.categories == nullptr) {
        source.categories = std::make_unique<Categories>(*source.var);
    }
    return source.categories->Add(*value);
}

std::vector<std::string> Inputs::NeededNames() const {
    std::vector<std::string> names;
    for (const Source& source : fInputs) {
        if (!source.field->SaysNothing()) {
            names.push_back(source.name);
        }
    }
    return names;
}

int Inputs::WatchTarget() {
    fTargetWatched = fTarget.var != nullptr;
    return fTargetWatched ? fTarget.slot : kNoSlot;
}

bool Inputs::Read(const ScoreCaseRecord& record) {
    fCase = &record;
    fRefused = nullptr;
    fMoved = nullptr;
    if (record.Size() != fLayoutSize) {
        FindPositions(record);
    } else if (kChecksLayout) {
        fMoved = FindMoved(record);
        if (fMoved != nullptr) {
            return false;
        }
    }
    const bool isScorable = ReadInputs(record);
    if (fDerived != nullptr) {
        // Also for a case that isn't scored: lags count the cases.
        ReadDerived();
    }
    return isScorable;
}

void Inputs::FindPositions(const ScoreCaseRecord& record) {
    for (Source& source : fInputs) {
        source.position = record.GetIndex(source.name);
    }
    if (fTargetWatched) {
        fTarget.position = record.GetIndex(fTarget.name);
    }
    fLayoutSize = record.Size();
}

/// The first field that a record has at another position than the one that was looked up; null for none.
const Inputs::Source* Inputs::FindMoved(const ScoreCaseRecord& record) const {
    for (const Source& source : fInputs) {
        if (record.GetIndex(source.name) != source.position) {
            return &source;
        }
    }
    const bool targetMoved = fTargetWatched && record.GetIndex(fTarget.name) != fTarget.position;
    return targetMoved ? &fTarget : nullptr;
}

bool Inputs::ReadInputs(const ScoreCaseRecord& record) {
    bool isScorable = true;
    for (const Source& source : fInputs) {
        FieldValue& value = fValues[static_cast<std::size_t>(source.slot)];
        const ScoreValue* raw = source.position < 0 ? nullptr : record.Get(source.position);
        if (!source.field->Read(raw, value)) {
            value = FieldValue();
            fRefused = isScorable ? &source : fRefused;
            isScorable = false;
        }
        fRecord.Borrow(source.recordPosition, value.IsMissing() ? source.field->MissingPlaceholder() : value.value);
    }
    if (fTargetWatched) {
        FieldValue& value = fValues[static_cast<std::size_t>(fTarget.slot)];
        const ScoreValue* raw = fTarget.position < 0 ? nullptr : record.Get(fTarget.position);
        if (!fTarget.field->Read(raw, value)) {
            value = FieldValue();
        }
    }
    return isScorable;
}

void Inputs::ReadDerived() {
    fDerivedRecord = fDerived->GetValuesForDerivedVars(&fRecord, &fDictionary);
    for (const Source& source : fDerivedFields) {
        const ScoreValue* value = fDerivedRecord == nullptr ? nullptr : fDerivedRecord->Get(source.position);
        ReadDerivedValue(value, source, fValues[static_cast<std::size_t>(source.slot)]);
    }
}

void Inputs::ReadDerivedValue(const ScoreValue* value, const Source& source, FieldValue& field) {
    field = FieldValue();
    if (value == nullptr) {
        return;
    }
    if (source.holdsText) {
        std::string buffer;
        const std::string& text = TextOf(*value, buffer);
        if (!text.empty()) {
            field.value = value;
            field.category =
                source.categories == nullptr ? Categories::kUnknown : source.categories->Find(std::string_view(text));
        }
        return;
    }
    const double number = value->GetDouble();
    const bool isMissing = source.holdsNumber ? number == FieldValue::kMissingNumber : value->IsSystemMissingValue();
    if (isMissing || std::isnan(number)) {
        return;
    }
    field.value = value;
    field.number = number;
    field.category = source.categories == nullptr ? Categories::kUnknown : source.categories->Find(number);
}

} // namespace veltrane_kit
