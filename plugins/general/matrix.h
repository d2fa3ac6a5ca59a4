#ifndef VELTRANE_PLUGINS_GENERAL_MATRIX_H
#define VELTRANE_PLUGINS_GENERAL_MATRIX_H

#include "kit/document/element.h"

#include <cstddef>
#include <map>
#include <utility>
#include <vector>

namespace veltrane_general {

/// A Matrix of a document, in the room that the document takes for it: a diagonal one keeps its diagonal, a sparse one
/// its cells.
class Matrix {
public:
    /// @throws VTException 260153 and 260285 for attributes, 260120 for the size of a matrix of cells that isn't there;
    ///         260241 and 260246 for arrays that contradict the size or each other, 260156 for one that holds anything
    ///         but numbers; 260203 for a cell that comes twice; 260159 for an element that has no place here
    explicit Matrix(const veltrane_kit::Element& element);

    std::size_t Rows() const { return fRows; }
    std::size_t Columns() const { return fColumns; }

    /// @param row, column counted from 0, within the size
    double At(std::size_t row, std::size_t column) const;

private:
    enum class Kind { ANY, SYMMETRIC, DIAGONAL };

    void ReadArrays(const veltrane_kit::Element& element);
    void ReadCells(const veltrane_kit::Element& element);
    std::size_t ReadPlace(const veltrane_kit::Element& cell, const XMLCh* attribute, std::size_t size) const;

    Kind fKind;
    std::size_t fRows = 0;
    std::size_t fColumns = 0;
    double fOnDiagonal;
    double fOffDiagonal;
    std::vector<std::vector<double>> fArrays;                     ///< rows, rows up to the diagonal, or the diagonal
    std::map<std::pair<std::size_t, std::size_t>, double> fCells; ///< of a symmetric one with the higher place first
};

} // namespace veltrane_general

#endif
