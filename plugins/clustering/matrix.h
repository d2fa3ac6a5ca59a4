#ifndef VELTRANE_PLUGINS_CLUSTERING_MATRIX_H
#define VELTRANE_PLUGINS_CLUSTERING_MATRIX_H

#include "kit/document/element.h"

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace veltrane_clustering {

/// A Matrix of a document. It takes the room that it takes there, however many rows and columns it states.
class Matrix {
public:
    /// @throws VTException 260115 for a matrix without a size, 260251 and 260241 for arrays that contradict it or each
    ///         other, 260153 for a cell outside of it, 260203 for one that comes twice, 260156 for what is no number,
    ///         260159 for an element that has no place here
    explicit Matrix(const veltrane_kit::Element& element);

    std::size_t Rows() const { return fRows; }
    std::size_t Columns() const { return fColumns; }

    /// @param row, column from 0, below the size
    double At(std::size_t row, std::size_t column) const;

private:
    enum class Kind { ANY, SYMMETRIC, DIAGONAL };

    void ReadArrays(const veltrane_kit::Element& element);
    void ReadCells(const veltrane_kit::Element& element);
    void ReadCell(const veltrane_kit::Element& cell);
    void CheckArrays(const veltrane_kit::Element& element) const;
    void RequireLength(const veltrane_kit::Element& element, std::size_t row, std::size_t expected) const;
    std::size_t Size(const veltrane_kit::Element& element, const XMLCh* name) const;

    Kind fKind;
    std::size_t fRows = 0;
    std::size_t fColumns = 0;
    std::vector<std::vector<double>> fArrays; ///< of a symmetric one up to the diagonal, of a diagonal one that alone
    std::unordered_map<std::uint64_t, double> fCells;
    double fOnDiagonal;
    double fBeside;
};

} // namespace veltrane_clustering

#endif
