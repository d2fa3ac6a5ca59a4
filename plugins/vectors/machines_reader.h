#ifndef VELTRANE_PLUGINS_VECTORS_MACHINES_READER_H
#define VELTRANE_PLUGINS_VECTORS_MACHINES_READER_H

#include "kit/document/element.h"
#include "kit/model/model_plan.h"
#include "machines.h"
#include "vectors_reader.h"

#include <cstddef>
#include <set>
#include <utility>
#include <vector>

namespace veltrane_vectors {

/// Reads the elements of a SupportVectorMachineModel.
///
/// What fails throws a VTException: what VectorsReader throws, 260178 for coefficients of fields with a kernel that
/// isn't linear, 260254 and 260153 for categories, 260211 for a machine with one category twice, 260203 for categories
/// or vectors that come twice, 260246 and 260251 for numbers of elements that don't go together, 260164 for an
/// alternate category that only some machines have, 260116 for two categories without a machine among those that have
/// one with others.
class MachinesReader {
public:
    /// @param machines empty; filled
    MachinesReader(Machines& machines, veltrane_kit::ModelParts& parts)
        : fMachines(machines), fParts(parts), fVectors(machines, *parts.inputs) {}

    void Read(const veltrane_kit::Element& element);

private:
    using Pairs = std::set<std::pair<int, int>>; ///< of categories, the lower one first

    void ReadKernel(const veltrane_kit::Element& element);
    void ReadMachine(const veltrane_kit::Element& element, double threshold);
    void ReadCategories(const veltrane_kit::Element& element, Machine& machine);
    void ReadSupportVectors(const veltrane_kit::Element& element, Machine& machine);
    void ReadCoefficients(const veltrane_kit::Element& element, Machine& machine);
    void ReadMethod(const veltrane_kit::Element& element);
    void CheckCategories() const;
    void CheckPairs(const Pairs& known) const;
    void FindUsed();

    Machines& fMachines;
    veltrane_kit::ModelParts& fParts;
    VectorsReader fVectors;
    bool fHasKernel = false;
    std::vector<std::size_t> fSeen; ///< by vector, the number of the last machine that has it, from 1
};

} // namespace veltrane_vectors

#endif
