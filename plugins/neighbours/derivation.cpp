#include "derivation.h"

#include "kit/model/completion.h"

#include <MCVeltrane_900/StringValue.h>

#include <deque>
#include <utility>

namespace veltrane_neighbours {

using veltrane_kit::Element;

/// The values of one instance, as texts; a missing one is null.
class InstanceReader::Derivation::Record : public MCVeltrane_900::CaseRecord {
public:
    explicit Record(const veltrane_kit::MiningSchema& schema) {
        for (const veltrane_kit::MiningField& field : schema.fields) {
            Add(field.name, std::make_unique<MCVeltrane_900::StringValue>().release());
            fCells.emplace_back();
        }
    }

    void Put(std::size_t place, const std::string& text) {
        fCells[place] = std::make_unique<MCVeltrane_900::StringValue>(text);
    }
    void Forget() {
        for (auto& cell : fCells) {
            cell.reset();
        }
    }

    const MCVeltrane_900::ScoreValue* Get(int index) const override {
        const auto place = static_cast<std::size_t>(index);
        return index >= 0 && place < fCells.size() ? fCells[place].get() : nullptr;
    }
    const MCVeltrane_900::ScoreValue* Get(const std::string& name) const override { return Get(GetIndex(name)); }

private:
    std::vector<std::unique_ptr<MCVeltrane_900::StringValue>> fCells;
};

InstanceReader::Derivation::Derivation(const Element& model, const veltrane_kit::ModelParts& parts)
    : fModel(model), fParts(parts) {}

InstanceReader::Derivation::~Derivation() = default;

/// Instances were what the model was trained with: they aren't held against its schema again.
int InstanceReader::Derivation::AddSource(const std::string& field) {
    veltrane_kit::MiningField source;
    source.name = field;
    source.invalid = veltrane_kit::InvalidTreatment::AS_IS;
    fSchema.fields.push_back(std::move(source));
    return static_cast<int>(fSchema.fields.size()) - 1;
}

void InstanceReader::Derivation::ReadFields() {
    const veltrane_kit::DocumentParts& document = *fParts.document;
    fInputs = std::make_unique<veltrane_kit::Inputs>(fSchema, *fParts.fields, *fParts.dictionary, document.encoding);
    fInputs->ReadDerivedFields(document.root.Child(u"TransformationDictionary"), fModel.Child(u"LocalTransformations"));
}

void InstanceReader::Derivation::AddInput(std::size_t input, const Element& element) {
    fDerived.push_back({input, fInputs->RequireSlot(element, u"field")});
}

void InstanceReader::Derivation::Settle() {
    fInputs->Settle();
    fRecord = std::make_unique<Record>(fSchema);
    fState = std::make_unique<veltrane_kit::InputState>(*fInputs);
}

void InstanceReader::Derivation::SetSource(int source, const std::string& text) {
    fRecord->Put(static_cast<std::size_t>(source), text);
}

void InstanceReader::Derivation::Fill(veltrane_clustering::ComparisonReader& comparison, double* point) {
    fInputs->Read(*fRecord, *fState);
    for (const Derived& derived : fDerived) {
        point[derived.input] = comparison.ValueOf(derived.input, fState->Case().Field(derived.slot));
    }
    fState->EndCase();
    fRecord->Forget();
}

} // namespace veltrane_neighbours
