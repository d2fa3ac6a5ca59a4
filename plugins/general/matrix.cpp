#include "matrix.h"

#include "kit/document/array_words.h"
#include "kit/document/raise.h"
#include "kit/values/values.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

namespace veltrane_general {

using veltrane_kit::Element;
using veltrane_kit::Message;
using veltrane_kit::Narrow;
using veltrane_kit::Raise;
using veltrane_kit::Word;

namespace {

constexpr const XMLCh* kRows = u"nbRows";
constexpr const XMLCh* kColumns = u"nbCols";
constexpr const XMLCh* kCount = u"n";

double ReadNumber(const std::string& text, const Element& element) {
    const veltrane_kit::Value value = veltrane_kit::ReadValue(text, veltrane_kit::DataType::DOUBLE);
    if (value.isMissing || !std::isfinite(value.number)) {
        Raise<Message::INVALID_CONTENT>(text, element.Tag());
    }
    return value.number;
}

std::vector<double> ReadArray(const Element& array) {
    std::vector<double> numbers;
    for (const std::string& word : veltrane_kit::ArrayWords(array)) {
        numbers.push_back(ReadNumber(word, array));
    }
    if (array.Has(kCount) && array.IntegerOr(kCount, 0) != static_cast<int>(numbers.size())) {
        Raise<Message::ARRAY_SIZE_MISMATCH>(array.Text(kCount), Narrow(kCount), std::to_string(numbers.size()));
    }
    return numbers;
}

/// 0 for an attribute that is absent.
std::size_t ReadSize(const Element& element, const XMLCh* attribute) {
    const int size = element.IntegerOr(attribute, 0);
    if (element.Has(attribute) && size < 1) {
        element.RaiseInvalid(attribute);
    }
    return static_cast<std::size_t>(size);
}

} // namespace

Matrix::Matrix(const Element& element)
    : fOnDiagonal(element.NumberOr(u"diagDefault", 0.0)), fOffDiagonal(element.NumberOr(u"offDiagDefault", 0.0)) {
    static constexpr Word<Kind> kKinds[] = {
        {u"any", Kind::ANY}, {u"symmetric", Kind::SYMMETRIC}, {u"diagonal", Kind::DIAGONAL}};
    fKind = element.OneOfOr(u"kind", kKinds, Kind::ANY);
    fRows = ReadSize(element, kRows);
    fColumns = ReadSize(element, kColumns);
    const Element first = element.FirstChild();
    if (first && !first.Is(u"MatCell")) {
        ReadArrays(element);
    } else {
        ReadCells(element);
    }
}

/// The arrays tell the size; attributes that tell another one contradict them.
void Matrix::ReadArrays(const Element& element) {
    std::size_t longest = 0;
    for (const Element child : element.Children()) {
        if (!child.Is(u"Array")) {
            child.RaiseMisplaced();
        }
        fArrays.push_back(ReadArray(child));
        longest = std::max(longest, fArrays.back().size());
        const std::size_t expected = fKind == Kind::SYMMETRIC ? fArrays.size() : fArrays.front().size();
        if (fArrays.back().size() != expected) {
            Raise<Message::ARRAY_SIZE_MISMATCH>(std::to_string(expected), Narrow(kColumns),
                                                std::to_string(fArrays.back().size()));
        }
    }
    if (fKind == Kind::DIAGONAL && fArrays.size() > 1) {
        Raise<Message::MORE_THAN_ONE>("Array", element.Tag());
    }
    const std::size_t rows = fKind == Kind::DIAGONAL ? longest : fArrays.size();
    if (fRows != 0 && fRows != rows) {
        Raise<Message::ELEMENT_NUMBER_MISMATCH>(element.Text(kRows), Narrow(kRows), std::to_string(rows), "Array",
                                                element.Tag());
    }
    if (fColumns != 0 && fColumns != longest) {
        Raise<Message::ARRAY_SIZE_MISMATCH>(element.Text(kColumns), Narrow(kColumns), std::to_string(longest));
    }
    fRows = rows;
    fColumns = longest;
}

void Matrix::ReadCells(const Element& element) {
    for (const XMLCh* size : {kRows, kColumns}) {
        if (!element.Has(size)) {
            Raise<Message::MISSING_ATTRIBUTE_OF>(Narrow(size), element.Tag());
        }
    }
    if (fKind != Kind::ANY && fRows != fColumns) {
        Raise<Message::ATTRIBUTES_MISMATCH>(element.Text(kRows), Narrow(kRows), element.Text(kColumns),
                                            Narrow(kColumns), element.Tag());
    }
    for (const Element child : element.Children()) {
        if (!child.Is(u"MatCell")) {
            child.RaiseMisplaced();
        }
        std::size_t row = ReadPlace(child, u"row", fRows);
        std::size_t column = ReadPlace(child, u"col", fColumns);
        if (fKind == Kind::SYMMETRIC && row < column) {
            std::swap(row, column);
        }
        if (!fCells.emplace(std::pair(row, column), ReadNumber(child.Content(), child)).second) {
            Raise<Message::DUPLICATE_DEFINITION>(child.Tag(), child.Text(u"row") + ", " + child.Text(u"col"),
                                                 element.Tag());
        }
    }
}

std::size_t Matrix::ReadPlace(const Element& cell, const XMLCh* attribute, std::size_t size) const {
    const double place = cell.Number(attribute);
    if (!(place >= 1.0 && place <= static_cast<double>(size)) ||
        place != static_cast<double>(static_cast<std::size_t>(place))) {
        cell.RaiseInvalid(attribute);
    }
    return static_cast<std::size_t>(place) - 1;
}

double Matrix::At(std::size_t row, std::size_t column) const {
    if (fKind == Kind::SYMMETRIC && row < column) {
        std::swap(row, column);
    }
    if (!fArrays.empty()) {
        if (fKind == Kind::DIAGONAL) {
            return row == column ? fArrays.front()[row] : fOffDiagonal;
        }
        return fArrays[row][column];
    }
    const auto cell = fCells.find({row, column});
    if (cell != fCells.end()) {
        return cell->second;
    }
    return row == column ? fOnDiagonal : fOffDiagonal;
}

} // namespace veltrane_general
