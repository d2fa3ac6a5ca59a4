#include "kit/inputs/inputs.h"

#include "kit/document/raise.h"
#include "kit/inputs/inputs_reason.h"

#include <MCVeltrane_900/CaseRecord.h>

#include <typeinfo>

namespace veltrane_kit {

using namespace MCVeltrane_900;

namespace {

#ifdef NDEBUG
constexpr bool kChecksLayout = false;
#else
constexpr bool kChecksLayout = true;
#endif

} // namespace

Inputs::Inputs(const MiningSchema& schema, const DataFields& fields, const ScoreDictionary& dictionary,
               const std::string& encoding)
    : fFields(fields), fDictionary(dictionary), fLayout(fOwnLayout), fDerived(fLayout, *this) {
    fLayout.encoding = encoding;
    for (const MiningField& field : schema.fields) {
        if (field.role == ScoreModel::ROLE_INPUT) {
            fPlaces.emplace(field.name, fInputs.size());
            fInputs.push_back(MakeSource(field.name, &field));
            fLevels.emplace(fInputs.back().slot, field.level);
            fNames.push_back(field.name);
            Source& source = fInputs.back();
            source.order = MakeOrder(source.field->Definition().type, ListedOf(source.slot));
        }
    }
    if (!schema.target.empty()) {
        fTargets.push_back(MakeSource(schema.target, nullptr));
    }
    for (const std::string& name : schema.otherTargets) {
        fTargets.push_back(MakeSource(name, nullptr));
    }
}

Inputs::~Inputs() = default;

Inputs::Source Inputs::MakeSource(const std::string& name, const MiningField* schema) {
    Source source{};
    source.name = name;
    source.field = std::make_unique<InputField>(fFields.find(name)->second, schema);
    source.slot = fLayout.AddField();
    return source;
}

void Inputs::ReadDerivedFields(const Element& shared, const Element& local) {
    fDerived.Add(shared);
    fDerived.Add(local);
    fDerived.Read();
}

std::optional<FieldScope::Found> Inputs::FindData(const std::string& name) {
    const auto found = fPlaces.find(name);
    if (found == fPlaces.end()) {
        return FindBeyond(name);
    }
    const Source& source = fInputs[found->second];
    return FieldScope::Found{source.slot, source.field->Definition().type, source.order};
}

bool Inputs::IsClosed(const std::string& name) const {
    return fFields.count(name) > 0;
}

int Inputs::Slot(const std::string& name) {
    const std::optional<FieldScope::Found> found = fDerived.Find(name);
    if (!found) {
        return kNoSlot;
    }
    fDerived.Need(found->slot);
    return found->slot;
}

int Inputs::RequireSlot(const Element& element, const XMLCh* attribute) {
    const int slot = fDerived.Require(element, attribute).slot;
    fDerived.Need(slot);
    return slot;
}

const Inputs::Source* Inputs::SourceOf(int slot) const {
    for (const Source& target : fTargets) {
        if (slot == target.slot) {
            return &target;
        }
    }
    // The slots of the input fields come one after the other, in their order.
    const auto place = static_cast<std::size_t>(slot - fFirstSlot);
    return slot >= fFirstSlot && place < fInputs.size() ? &fInputs[place] : nullptr;
}

const std::string& Inputs::NameOf(int slot) const {
    if (const Source* source = SourceOf(slot)) {
        return source->name;
    }
    for (const auto& [name, told] : fTold) {
        if (told.slot == slot) {
            return name;
        }
    }
    return fOuter != nullptr && !fDerived.Has(slot) ? fOuter->NameOf(slot) : fDerived.NameOf(slot);
}

DataType Inputs::Type(int slot) const {
    if (const Source* source = SourceOf(slot)) {
        return source->field->Definition().type;
    }
    if (fDerived.Has(slot)) {
        return fDerived.TypeOf(slot).value_or(DataType::STRING);
    }
    if (const auto told = fToldTypes.find(slot); told != fToldTypes.end()) {
        return told->second.value_or(DataType::STRING);
    }
    return fOuter != nullptr ? fOuter->Type(slot) : DataType::STRING;
}

const std::vector<Value>& Inputs::Listed(int slot) {
    const auto found = fListed.find(slot);
    return found != fListed.end() ? found->second : fListed.emplace(slot, ListedOf(slot)).first->second;
}

std::vector<Value> Inputs::ListedOf(int slot) const {
    const Source* source = SourceOf(slot);
    if (source == nullptr && fDerived.Has(slot)) {
        return fDerived.ListedOf(slot);
    }
    if (source == nullptr) {
        return fOuter != nullptr && fToldTypes.count(slot) == 0 ? fOuter->ListedOf(slot) : std::vector<Value>();
    }
    const DataField& definition = source->field->Definition();
    const auto stated = fLevels.find(slot);
    const auto level = stated == fLevels.end() ? definition.level : stated->second.value_or(definition.level);
    return definition.InOrder(level);
}

int Inputs::CategoryOf(int slot, const Element& element, const XMLCh* attribute) {
    const int code = CategoryOf(slot, std::string_view(element.AnyText(attribute)));
    if (code == ValueCodes::kUnknown) {
        element.RaiseInvalid(attribute);
    }
    return code;
}

int Inputs::CategoryOf(int slot, std::string_view text) {
    return CategoryOf(slot, ValueIn(slot, text));
}

int Inputs::CategoryOf(int slot, const Value& value) {
    if (value.isMissing) {
        return ValueCodes::kUnknown;
    }
    if (const Source* source = SourceOf(slot)) {
        return source->field->CodeOf(value);
    }
    if (fOuter != nullptr && !fDerived.Has(slot) && fToldTypes.count(slot) == 0) {
        return fOuter->CategoryOf(slot, value);
    }
    return fDerivedCodes.try_emplace(slot, Type(slot)).first->second.Add(value);
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

int Inputs::WatchTarget(const std::string& name) {
    if (fOuter != nullptr) {
        return fOuter->WatchTarget(name);
    }
    for (const Source& target : fTargets) {
        if (target.name == name) {
            fTargetsWatched = true;
            return target.slot;
        }
    }
    return kNoSlot;
}

void Inputs::Settle() {
    for (std::size_t i = fFirstHistory; i < fLayout.histories.size(); ++i) {
        fDerived.Need(fLayout.histories[i].field);
        for (const int block : fLayout.histories[i].blocks) {
            fDerived.Need(block);
        }
    }
    fDerived.Settle();
    FindOuterSlots();
    fPassed.clear();
    fListed.clear();
}

InputState::InputState(const Inputs& inputs)
    : fFrame(inputs.fLayout),
      fPositions(inputs.fInputs.size() + (inputs.fTargetsWatched ? inputs.fTargets.size() : 0), -1) {}

InputState::~InputState() = default;

bool Inputs::Read(const ScoreCaseRecord& record, InputState& state) const {
    state.fCase = &record;
    state.fRefused = nullptr;
    state.fMoved = nullptr;
    if (record.Size() != state.fLayoutSize) {
        FindPositions(record, state);
    } else if (kChecksLayout) {
        state.fMoved = FindMoved(record, state);
        if (state.fMoved != nullptr) {
            return false;
        }
    }
    const bool isScorable = ReadInputs(record, state);
    // Also for a case that isn't scored: lags count the cases.
    fDerived.Compute(state.fFrame);
    SetDerivedCodes(state.fFrame);
    return isScorable;
}

void Inputs::SetDerivedCodes(Frame& frame) const {
    for (const auto& [slot, codes] : fDerivedCodes) {
        FieldValue& value = frame.Field(slot);
        value.category = codes.Find(value);
    }
}

void Inputs::FindPositions(const ScoreCaseRecord& record, InputState& state) const {
    for (const Source& source : fInputs) {
        state.fPositions[static_cast<std::size_t>(source.slot)] = record.GetIndex(source.name);
    }
    for (std::size_t i = 0; fTargetsWatched && i < fTargets.size(); ++i) {
        state.fPositions[static_cast<std::size_t>(fTargets[i].slot)] = record.GetIndex(fTargets[i].name);
    }
    state.fLayoutSize = record.Size();
}

/// The first field that a record has at another position than the one that was looked up; null for none.
const Inputs::Source* Inputs::FindMoved(const ScoreCaseRecord& record, const InputState& state) const {
    const auto hasMoved = [&](const Source& source) {
        return record.GetIndex(source.name) != state.fPositions[static_cast<std::size_t>(source.slot)];
    };
    for (const Source& source : fInputs) {
        if (hasMoved(source)) {
            return &source;
        }
    }
    for (std::size_t i = 0; fTargetsWatched && i < fTargets.size(); ++i) {
        if (hasMoved(fTargets[i])) {
            return &fTargets[i];
        }
    }
    return nullptr;
}

const ScoreValue* Inputs::RawOf(const Source& source, const InputState& state) const {
    const int position = state.fPositions[static_cast<std::size_t>(source.slot)];
    return position < 0 ? nullptr : state.fCase->Get(position);
}

bool Inputs::ReadInputs(const ScoreCaseRecord& record, InputState& state) const {
    // The library's own record shows all its values at once.
    if (typeid(record) == typeid(CaseRecord)) {
        const std::vector<ScoreValue*>& values = static_cast<const CaseRecord&>(record).CaseRecord::GetAllValues();
        const auto at = [&values](int position) {
            return static_cast<std::size_t>(position) < values.size() ? values[static_cast<std::size_t>(position)]
                                                                      : nullptr;
        };
        ReadInputs(at, state);
    } else {
        ReadInputs([&record](int position) { return record.Get(position); }, state);
    }
    for (std::size_t i = 0; fTargetsWatched && i < fTargets.size(); ++i) {
        fTargets[i].field->Read(RawOf(fTargets[i], state), state.fFrame.Field(fTargets[i].slot));
    }
    return state.fRefused == nullptr;
}

/// @param at gives the value of the case at a position; null where it has none
template <typename At>
void Inputs::ReadInputs(const At& at, InputState& state) const {
    const int* position = state.fPositions.data();
    for (const Source& source : fInputs) {
        // The slots of the input fields come first, in their order.
        const ScoreValue* const raw = *position < 0 ? nullptr : at(*position);
        ++position;
        if (!source.field->Read(raw, state.fFrame.Field(source.slot)) && state.fRefused == nullptr) {
            state.fRefused = &source;
        }
    }
}

} // namespace veltrane_kit
