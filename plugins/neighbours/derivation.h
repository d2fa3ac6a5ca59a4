#ifndef VELTRANE_PLUGINS_NEIGHBOURS_DERIVATION_H
#define VELTRANE_PLUGINS_NEIGHBOURS_DERIVATION_H

#include "instances.h"
#include "kit/inputs/inputs.h"

#include <MCVeltrane_900/CaseRecord.h>

#include <memory>
#include <string>
#include <vector>

namespace veltrane_neighbours {

/// Computes the inputs of training instances that aren't transformed yet, with the derived fields of the document and
/// of the model over the values that the instances have.
class InstanceReader::Derivation {
public:
    /// @param model the model's element
    Derivation(const veltrane_kit::Element& model, const veltrane_kit::ModelParts& parts);
    ~Derivation();

    /// Makes a data field one that instances have.
    /// @return its place
    int AddSource(const std::string& field);

    /// Has an input derived.
    /// @param input   its place
    /// @param element that names the field
    void AddInput(std::size_t input, const veltrane_kit::Element& element);

    /// All sources are there, then all inputs.
    void ReadFields();
    void Settle();

    void SetSource(int source, const std::string& text);

    /// Computes the inputs of the instance whose sources are set, and forgets these.
    void Fill(veltrane_clustering::ComparisonReader& comparison, double* point);

private:
    class Record;
    struct Derived {
        std::size_t input;
        int slot;
    };

    veltrane_kit::Element fModel;
    const veltrane_kit::ModelParts& fParts;
    veltrane_kit::MiningSchema fSchema;
    std::unique_ptr<veltrane_kit::Inputs> fInputs;
    std::vector<Derived> fDerived;
    std::unique_ptr<Record> fRecord;
    std::unique_ptr<veltrane_kit::InputState> fState;
};

} // namespace veltrane_neighbours

#endif
