#include "kit/values/matrix.h"

#include "kit/document/raise.h"
#include "kit/values/number_array.h"
#include "kit/values/values.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>

namespace veltrane_kit {

namespace {

constexpr const XMLCh* kRows = u"nbRows";
constexpr const XMLCh* kColumns = u"nbCols";

std::uint64_t KeyOf(std::size_t row, std::size_t column) {
    return static_cast<std::uint64_t>(row) << 32U | column;
}

} // namespace

Matrix::Matrix(const Element& element)
    : fOnDiagonal(element.NumberOr(u"diagDefault", 0.0)), fBeside(element.NumberOr(u"offDiagDefault", 0.0)) {
    static constexpr Word<Kind> kKinds[] = {
        {u"any", Kind::ANY}, {u"symmetric", Kind::SYMMETRIC}, {u"diagonal", Kind::DIAGONAL}};
    fKind = element.OneOfOr(u"kind", kKinds, Kind::ANY);
    fRows = element.Has(kRows) ? Size(element, kRows) : 0;
    fColumns = element.Has(kColumns) ? Size(element, kColumns) : 0;
    const Element first = element.FirstChild();
    if (first && !first.Is(u"MatCell")) {
        ReadArrays(element);
    } else {
        ReadCells(element);
    }
    if (fKind != Kind::ANY && fRows != fColumns) {
        Raise<Message::NUMBERS_MISMATCH>(std::to_string(fRows), "nbRows", element.Tag(), std::to_string(fColumns),
                                         "nbCols", element.Tag());
    }
}

std::size_t Matrix::Size(const Element& element, const XMLCh* name) const {
    const int size = element.IntegerOr(name, 0);
    if (size < 1) {
        element.RaiseInvalid(name);
    }
    return static_cast<std::size_t>(size);
}

void Matrix::ReadArrays(const Element& element) {
    for (const Element child : element.Children()) {
        if (!child.Is(u"Array")) {
            child.RaiseMisplaced();
        }
        fArrays.push_back(ArrayNumbers(child));
    }
    const std::size_t size = fKind == Kind::DIAGONAL ? fArrays.front().size() : fArrays.size();
    const std::size_t width = fKind == Kind::ANY ? fArrays.front().size() : size;
    fRows = fRows == 0 ? size : fRows;
    fColumns = fColumns == 0 ? width : fColumns;
    CheckArrays(element);
}

void Matrix::CheckArrays(const Element& element) const {
    if (fKind == Kind::DIAGONAL && fArrays.size() > 1) {
        Raise<Message::MORE_THAN_ONE>("Array", element.Tag());
    }
    if (fKind != Kind::DIAGONAL && fArrays.size() != fRows) {
        Raise<Message::NUMBERS_MISMATCH>(std::to_string(fArrays.size()), "Array", element.Tag(), std::to_string(fRows),
                                         "nbRows", element.Tag());
    }
    for (std::size_t row = 0; row < fArrays.size(); ++row) {
        RequireLength(element, row, fKind == Kind::SYMMETRIC ? row + 1 : fColumns);
    }
}

void Matrix::RequireLength(const Element& element, std::size_t row, std::size_t expected) const {
    if (fArrays[row].size() != expected) {
        Raise<Message::NUMBERS_MISMATCH>(std::to_string(fArrays[row].size()), "value", "Array",
                                         std::to_string(expected), "column", element.Tag());
    }
}

void Matrix::ReadCells(const Element& element) {
    for (const XMLCh* size : {kRows, kColumns}) {
        if (!element.Has(size)) {
            Raise<Message::MISSING_ATTRIBUTE_OF>(Narrow(size), element.Tag());
        }
    }
    for (const Element child : element.Children()) {
        if (!child.Is(u"MatCell")) {
            child.RaiseMisplaced();
        }
        ReadCell(child);
    }
}

/// Rows and columns count from 1.
void Matrix::ReadCell(const Element& cell) {
    const int row = cell.IntegerOr(u"row", 0);
    const int column = cell.IntegerOr(u"col", 0);
    if (row < 1 || static_cast<std::size_t>(row) > fRows) {
        cell.RaiseInvalid(u"row");
    }
    if (column < 1 || static_cast<std::size_t>(column) > fColumns || (fKind == Kind::DIAGONAL && row != column)) {
        cell.RaiseInvalid(u"col");
    }
    const std::string content = cell.Content();
    const std::optional<double> number = NumberIn(content);
    if (!number || !std::isfinite(*number)) {
        Raise<Message::INVALID_CONTENT>(content, cell.Tag());
    }
    auto at = std::pair(static_cast<std::size_t>(row) - 1, static_cast<std::size_t>(column) - 1);
    if (fKind == Kind::SYMMETRIC && at.second > at.first) {
        std::swap(at.first, at.second);
    }
    if (!fCells.emplace(KeyOf(at.first, at.second), *number).second) {
        Raise<Message::DUPLICATE_DEFINITION>(cell.Tag(), cell.Text(u"row") + ", " + cell.Text(u"col"), "Matrix");
    }
}

double Matrix::At(std::size_t row, std::size_t column) const {
    if (fKind == Kind::SYMMETRIC && column > row) {
        std::swap(row, column);
    }
    if (!fArrays.empty()) {
        const bool isKept = fKind != Kind::DIAGONAL || row == column;
        return !isKept ? fBeside : fKind == Kind::DIAGONAL ? fArrays.front()[row] : fArrays[row][column];
    }
    const auto cell = fCells.find(KeyOf(row, column));
    return cell != fCells.end() ? cell->second : row == column ? fOnDiagonal : fBeside;
}

} // namespace veltrane_kit
