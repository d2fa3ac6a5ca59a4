#ifndef VELTRANE_PLUGINS_VECTORS_VECTORS_READER_H
#define VELTRANE_PLUGINS_VECTORS_VECTORS_READER_H

#include "kit/document/element.h"
#include "kit/inputs/inputs.h"
#include "machines.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace veltrane_vectors {

/// Reads the VectorDictionary of a model: fields and vectors.
///
/// What fails throws a VTException: 260115 and 260272 for elements, 260120, 260285, 260153 for attributes, 260125,
/// 260161 and 260187 for fields, 260246 for a number of elements that isn't the stated one, 260241 for an array of
/// another size than it states, 260251 for vectors of another size than there are fields, 260156 for what is no number
/// or no place, 260203 for an id or a place that comes twice, 260159 for an element that has no place here.
class VectorsReader {
public:
    /// @param machines its fields and vectors are filled
    VectorsReader(Machines& machines, veltrane_kit::Inputs& inputs) : fMachines(machines), fInputs(inputs) {}

    void Read(const veltrane_kit::Element& element);

    /// The vector with an id.
    /// @throws VTException 260120, 260285, 260116
    std::uint32_t PlaceOf(const veltrane_kit::Element& supportVector) const;

private:
    void ReadFields(const veltrane_kit::Element& element);
    void ReadNumber(const veltrane_kit::Element& element);
    void ReadCategory(const veltrane_kit::Element& element);
    void ReadVector(const veltrane_kit::Element& element);
    void ReadArray(const veltrane_kit::Element& array);
    void ReadSparseArray(const veltrane_kit::Element& array);
    void ReadPlaces(const veltrane_kit::Element& indices, std::vector<std::uint32_t>& places) const;
    void RequireSize(const veltrane_kit::Element& array, const char* what, double size, const std::string& text) const;

    Machines& fMachines;
    veltrane_kit::Inputs& fInputs;
    std::unordered_map<std::string, std::uint32_t> fPlaces; ///< by id
};

/// How many children of a tag an element has: as many as it says itself.
/// @throws VTException 260246
void CheckCount(const veltrane_kit::Element& element, const XMLCh* attribute, const char* tag, std::size_t count);

} // namespace veltrane_vectors

#endif
