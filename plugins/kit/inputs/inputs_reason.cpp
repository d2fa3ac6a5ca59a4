// Why a case isn't scored. Nothing here is on the way of a case that is.
#include "kit/document/field_references.h"
#include "kit/inputs/inputs.h"

#include <unordered_map>
#include <utility>

namespace veltrane_kit {

using namespace MCVeltrane_900;

namespace {

using Places = std::unordered_map<std::string, long>;

Places PlacesOf(const std::vector<std::string>& names) {
    Places places;
    for (const std::string& name : names) {
        places.emplace(name, static_cast<long>(places.size()));
    }
    return places;
}

long PlaceOf(const std::string& name, const Places& places) {
    const auto found = places.find(name);
    return found == places.end() ? UnscoredReason::kNoPlace : found->second;
}

} // namespace

/// What only cases that aren't scored ask for.
struct Inputs::Explanations {
    Places fields;                                      ///< of the data dictionary
    Places derived;                                     ///< of the derived fields
    std::map<int, std::vector<const Source*>> inputsOf; ///< by the slot of a derived field, those that it reads
};

UnscoredReason Inputs::WhyUnscored(int lacking) {
    if (fCase == nullptr) {
        return {UnscoredReason::NO_PREDICTION};
    }
    if (fExplanations == nullptr) {
        fExplanations = std::make_shared<Explanations>();
        fExplanations->fields = PlacesOf(fDictionary.GetVarNames());
        fExplanations->derived =
            PlacesOf(fDerived == nullptr ? std::vector<std::string>() : fDerived->GetDerivedVarNames());
    }
    if (fMoved != nullptr) {
        return {UnscoredReason::OTHER_LAYOUT, PlaceOf(fMoved->name, fExplanations->fields)};
    }
    if (fRefused != nullptr) {
        return WhyInputLacks(*fRefused);
    }
    if (lacking == kNoSlot) {
        return {UnscoredReason::NO_PREDICTION};
    }
    const Source& source = SourceOf(lacking);
    return source.field != nullptr ? WhyInputLacks(source) : WhyDerivedLacks(source);
}

const ScoreValue* Inputs::RawValueOf(const Source& source) const {
    return source.position < 0 ? nullptr : fCase->Get(source.position);
}

/// A value that is there was refused, or counts as missing.
UnscoredReason Inputs::WhyInputLacks(const Source& source) const {
    const bool isMissing = source.field->IsMissing(RawValueOf(source));
    return {isMissing ? UnscoredReason::MISSING : UnscoredReason::INVALID, PlaceOf(source.name, fExplanations->fields)};
}

UnscoredReason Inputs::WhyDerivedLacks(const Source& source) {
    const auto [found, isNew] = fExplanations->inputsOf.try_emplace(source.slot);
    if (isNew) {
        for (const std::string& name : CaseFieldsOf({source.name}, *fDerived)) {
            if (const auto slot = fSlots.find(name); slot != fSlots.end()) {
                found->second.push_back(&SourceOf(slot->second));
            }
        }
    }
    for (const Source* input : found->second) {
        if (input->field != nullptr && fValues[static_cast<std::size_t>(input->slot)].IsMissing()) {
            return WhyInputLacks(*input);
        }
    }
    return {UnscoredReason::DERIVED, PlaceOf(source.name, fExplanations->derived)};
}

} // namespace veltrane_kit
