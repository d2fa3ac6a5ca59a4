// The fields of a model that is a part of another one.
#include "kit/document/raise.h"
#include "kit/inputs/inputs.h"

namespace veltrane_kit {

using namespace MCVeltrane_900;

Inputs::Inputs(const MiningSchema& schema, const ScoreDictionary& dictionary, Inputs& outer, bool seesAll)
    : fFields(outer.fFields), fDictionary(dictionary), fOuter(&outer), fSeesAll(seesAll), fLayout(outer.fLayout),
      fDerived(*this, outer.fDerived), fFirstSlot(static_cast<int>(fLayout.fields)),
      fFirstHistory(fLayout.histories.size()) {
    for (const MiningField& field : schema.fields) {
        if (field.role != ScoreModel::ROLE_INPUT) {
            continue;
        }
        const std::optional<FieldScope::Found> found = outer.FindForPart(field.name);
        if (!found) {
            continue; // one that the outer schema doesn't make active; whoever asks for it is told
        }
        if (TakesAsItIs(field, *found)) {
            fPassed.emplace(field.name, *found);
        } else {
            AddOwn(field, *found);
        }
    }
}

/// Whether a schema treats nothing that the outer model hasn't treated. What is invalid is told there, so a part that
/// says nothing of invalid values takes those that have come so far.
bool Inputs::TakesAsItIs(const MiningField& field, const FieldScope::Found& outer) const {
    const bool refusesInvalid = field.statesInvalid && field.invalid != InvalidTreatment::AS_IS;
    const auto defined = fFields.find(field.name);
    const bool hasOwnLevel =
        field.level && defined != fFields.end() && outer.order == nullptr && *field.level != defined->second.level;
    return !refusesInvalid && !field.missingRefused && !field.missingReplacement &&
           field.outliers == OutlierTreatment::AS_IS && !hasOwnLevel;
}

void Inputs::AddOwn(const MiningField& field, const FieldScope::Found& outer) {
    MiningField schema = field;
    if (!field.statesInvalid) {
        schema.invalid = InvalidTreatment::AS_IS;
    }
    const auto known = fFields.find(field.name);
    const DataType type = outer.type.value_or(DataType::STRING);
    const DataField* definition = known != fFields.end() && known->second.type == type ? &known->second : nullptr;
    if (definition == nullptr) {
        DataField& own = fDefined.emplace_back();
        own.name = field.name;
        own.type = type;
        own.level = IsText(type) ? ScoreDictVar::LEVEL_NOMINAL : ScoreDictVar::LEVEL_CONTINUOUS;
        definition = &own;
    }
    Source source{};
    source.name = field.name;
    source.field = std::make_unique<InputField>(*definition, &schema);
    source.slot = fLayout.AddField();
    source.from = outer.slot;
    NeedData(outer.slot);
    fPlaces.emplace(field.name, fInputs.size());
    fLevels.emplace(source.slot, field.level);
    fInputs.push_back(std::move(source));
    fInputs.back().order = MakeOrder(type, ListedOf(fInputs.back().slot));
}

/// A name that no field has that is treated here.
std::optional<FieldScope::Found> Inputs::FindBeyond(const std::string& name) {
    if (fSeesAll) {
        return fOuter->FindForPart(name);
    }
    const auto passed = fPassed.find(name);
    return passed != fPassed.end() ? std::optional(passed->second) : FindTold(name);
}

/// What parts before told; else what outer models derive, and their parts told. What stands in the schema of an outer
/// model is seen by a part whose own schema has it.
std::optional<FieldScope::Found> Inputs::FindTold(const std::string& name) {
    if (const auto told = fTold.find(name); told != fTold.end()) {
        return told->second;
    }
    if (fOuter == nullptr) {
        return std::nullopt;
    }
    if (const std::optional<FieldScope::Found> derived = fOuter->fDerived.FindDerived(name)) {
        return derived;
    }
    const bool isInSchema = fOuter->fPlaces.count(name) > 0 || fOuter->fPassed.count(name) > 0;
    return isInSchema ? std::nullopt : fOuter->FindTold(name);
}

std::optional<FieldScope::Found> Inputs::FindForPart(const std::string& name) {
    return fDerived.Find(name);
}

std::vector<std::string> Inputs::NamesForPart() const {
    std::vector<std::string> names = fDerived.Names();
    for (const auto& [name, found] : fTold) {
        names.push_back(name);
    }
    if (fOuter != nullptr) {
        const std::vector<std::string> others = fOuter->NamesForPart();
        names.insert(names.end(), others.begin(), others.end());
    }
    return names;
}

int Inputs::AddTold(const std::string& name, const FieldScope::Found& found) {
    fToldTypes.emplace(found.slot, found.type);
    const auto known = fTold.find(name);
    if (known != fTold.end() && known->second.type == found.type) {
        return known->second.slot;
    }
    fTold.insert_or_assign(name, found);
    fToldSlots.push_back(found.slot);
    return found.slot;
}

void Inputs::AddAnswer(const std::string& output, const FieldScope::Found& found) {
    fToldTypes.emplace(found.slot, found.type);
    if (fAnswers.emplace(output, found).second) {
        fToldSlots.push_back(found.slot);
    }
}

void Inputs::ForgetTold(Frame& frame) const {
    for (const int slot : fToldSlots) {
        frame.Field(slot) = FieldValue();
    }
}

std::optional<FieldScope::Found> Inputs::FindAnswer(const std::string& output) const {
    const auto found = fAnswers.find(output);
    return found == fAnswers.end() ? std::nullopt : std::optional(found->second);
}

void Inputs::NeedData(int slot) {
    if (fOuter != nullptr) {
        fOuter->fDerived.Need(slot);
    }
}

int Inputs::ReadPart(Frame& frame) const {
    int refused = kNoSlot;
    for (const Source& source : fInputs) {
        const bool isTaken = source.field->ReadTreated(frame.Field(source.from), frame.Field(source.slot));
        refused = isTaken || refused != kNoSlot ? refused : source.slot;
    }
    fDerived.Compute(frame);
    for (const auto& [slot, codes] : fDerivedCodes) {
        if (fDerived.Has(slot)) {
            SetCode(slot, frame);
        }
    }
    return refused;
}

void Inputs::SetCode(int slot, Frame& frame) const {
    if (const auto codes = fDerivedCodes.find(slot); codes != fDerivedCodes.end()) {
        FieldValue& value = frame.Field(slot);
        value.category = codes->second.Find(value);
    }
}

/// What the derived fields of a part read of the outer model, ahead of the cases that ask why they aren't scored.
void Inputs::FindOuterSlots() {
    if (fOuter == nullptr) {
        return;
    }
    for (const int derived : fDerived.Slots()) {
        for (const int slot : fDerived.DataSlotsOf(derived)) {
            const Source* source = SourceOf(slot);
            fOuterSlots[derived].push_back(source != nullptr ? source->from : slot);
        }
    }
}

int Inputs::OuterSlotOf(int lacking, const Frame& frame) const {
    if (lacking == kNoSlot) {
        return kNoSlot;
    }
    if (const Source* source = SourceOf(lacking)) {
        return source->from;
    }
    if (fToldTypes.count(lacking) > 0) {
        return kNoSlot;
    }
    const auto derived = fOuterSlots.find(lacking);
    if (derived == fOuterSlots.end()) {
        return lacking;
    }
    for (const int slot : derived->second) {
        if (frame.Field(slot).IsMissing()) {
            return slot;
        }
    }
    return kNoSlot;
}

} // namespace veltrane_kit
