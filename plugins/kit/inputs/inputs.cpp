#include "kit/inputs/inputs.h"

#include "kit/document/raise.h"
#include "kit/inputs/inputs_reason.h"

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
    : fFields(fields), fDictionary(dictionary), fDerived(fLayout, *this) {
    fLayout.encoding = encoding;
    for (const MiningField& field : schema.fields) {
        if (field.role == ScoreModel::ROLE_INPUT) {
            fPlaces.emplace(field.name, fInputs.size());
            fInputs.push_back(MakeSource(field.name, &field));
            fLevels.emplace(fInputs.back().slot, field.level);
            fNames.push_back(field.name);
        }
    }
    if (!schema.target.empty()) {
        fTarget = MakeSource(schema.target, nullptr);
    }
}

Inputs::~Inputs() = default;

Inputs::Source Inputs::MakeSource(const std::string& name, const MiningField* schema) {
    Source source{};
    source.name = name;
    source.field = std::make_unique<InputField>(fFields.find(name)->second, schema);
    source.slot = fLayout.AddField();
    source.position = -1;
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
        return std::nullopt;
    }
    const Source& source = fInputs[found->second];
    return FieldScope::Found{source.slot, source.field->Definition().type};
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
    if (fTarget.field != nullptr && slot == fTarget.slot) {
        return &fTarget;
    }
    // The slots of the input fields come first, in their order.
    return static_cast<std::size_t>(slot) < fInputs.size() ? &fInputs[static_cast<std::size_t>(slot)] : nullptr;
}

Inputs::Source* Inputs::SourceOf(int slot) {
    return const_cast<Source*>(std::as_const(*this).SourceOf(slot));
}

const std::string& Inputs::NameOf(int slot) const {
    const Source* source = SourceOf(slot);
    return source != nullptr ? source->name : fDerived.NameOf(slot);
}

DataType Inputs::Type(int slot) const {
    const Source* source = SourceOf(slot);
    return source != nullptr ? source->field->Definition().type : fDerived.TypeOf(slot).value_or(DataType::STRING);
}

const std::vector<Value>& Inputs::Listed(int slot) {
    const auto found = fListed.find(slot);
    return found != fListed.end() ? found->second : fListed.emplace(slot, ListedOf(slot)).first->second;
}

std::vector<Value> Inputs::ListedOf(int slot) const {
    const Source* source = SourceOf(slot);
    if (source == nullptr) {
        return fDerived.ListedOf(slot);
    }
    const DataField& definition = source->field->Definition();
    const auto stated = fLevels.find(slot);
    const auto level = stated == fLevels.end() ? definition.level : stated->second.value_or(definition.level);
    std::vector<Value> listed;
    for (const OwnedValue& value : definition.valid) {
        if (level == ScoreDictVar::LEVEL_ORDINAL) {
            listed.push_back(value.value);
        }
    }
    return listed;
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
    if (Source* source = SourceOf(slot)) {
        return source->field->CodeOf(value);
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

int Inputs::WatchTarget() {
    fTargetWatched = fTarget.field != nullptr;
    return fTargetWatched ? fTarget.slot : kNoSlot;
}

/// Everything is known when the first case comes.
void Inputs::Start() {
    for (const FrameLayout::History& history : fLayout.histories) {
        fDerived.Need(history.field);
        for (const int block : history.blocks) {
            fDerived.Need(block);
        }
    }
    fDerived.Settle();
    fFrame = std::make_unique<Frame>(fLayout);
    fSlots = fLayout.fields == 0 ? nullptr : &fFrame->Field(0);
}

bool Inputs::Read(const ScoreCaseRecord& record) {
    fCase = &record;
    fRefused = nullptr;
    fMoved = nullptr;
    if (fFrame == nullptr) {
        Start();
    }
    if (record.Size() != fLayoutSize) {
        FindPositions(record);
    } else if (kChecksLayout) {
        fMoved = FindMoved(record);
        if (fMoved != nullptr) {
            return false;
        }
    }
    const bool isScorable = ReadInputs(record);
    // Also for a case that isn't scored: lags count the cases.
    fDerived.Compute(*fFrame);
    for (const auto& [slot, codes] : fDerivedCodes) {
        FieldValue& value = fFrame->Field(slot);
        value.category = codes.Find(value);
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
    const Source* refused = nullptr;
    for (const Source& source : fInputs) {
        const ScoreValue* raw = source.position < 0 ? nullptr : record.Get(source.position);
        if (!source.field->Read(raw, fSlots[source.slot]) && refused == nullptr) {
            refused = &source;
        }
    }
    fRefused = refused;
    if (fTargetWatched) {
        const ScoreValue* raw = fTarget.position < 0 ? nullptr : record.Get(fTarget.position);
        fTarget.field->Read(raw, fSlots[fTarget.slot]);
    }
    return refused == nullptr;
}

} // namespace veltrane_kit
