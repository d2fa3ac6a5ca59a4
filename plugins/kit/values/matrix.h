#ifndef VELTRANE_PLUGINS_KIT_MATRIX_H
#define VELTRANE_PLUGINS_KIT_MATRIX_H

#include "kit/document/element.h"

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace veltrane_kit {

/// A Matrix of a document. It takes the room that it takes there, however many rows and columns it states.
class Matrix {
public:
    /// @throws VTException 260120 for the size of a matrix of cells that isn't there, 260285 and 260153 for attributes,
    /// a
    ///         cell outside of the matrix among them; 260251 and 260241 for arrays that contradict the size or each
    ///         other, 260272 for a second array of a diagonal; 260203 for a cell that comes twice, 260156 for what is
    ///         no number, 260159 for an element that has no place here
    explicit Matrix(const Element& element);

    std::size_t Rows() const { return fRows; }
    std::size_t Columns() const { return fColumns; }

    /// @param row, column from 0, below the size
    double At(std::size_t row, std::size_t column) const;

private:
    enum class Kind { ANY, SYMMETRIC, DIAGONAL };

    void ReadArrays(const Element& element);
    void ReadCells(const Element& element);
    void ReadCell(const Element& cell);
    void CheckArrays(const Element& element) const;
    void RequireLength(const Element& element, std::size_t row, std::size_t expected) const;
    std::size_t Size(const Element& element, const XMLCh* name) const;

    Kind fKind;
    std::size_t fRows = 0;
    std::size_t fColumns = 0;
    std::vector<std::vector<double>> fArrays; ///< of a symmetric one up to the diagonal, of a diagonal one that alone
    std::unordered_map<std::uint64_t, double> fCells;
    double fOnDiagonal;
    double fBeside;
};

} // namespace veltrane_kit

#endif
