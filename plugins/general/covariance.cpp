#include "covariance.h"

#include "kit/document/raise.h"

#include <algorithm>
#include <array>
#include <map>
#include <string>
#include <utility>

namespace veltrane_general {

using veltrane_kit::Element;
using veltrane_kit::Message;
using veltrane_kit::Raise;
using veltrane_kit::Word;

namespace {

constexpr const XMLCh* kTarget = u"targetCategory";
constexpr const XMLCh* kRowTarget = u"tRow";
constexpr const XMLCh* kColumnTarget = u"tCol";

/// No category is one of covariances alone.
void RequireKnown(const Element& cell, const XMLCh* attribute, veltrane_kit::Target& target) {
    const int known = target.CategoryCount();
    if (cell.Has(attribute) && target.CategoryOf(cell, attribute) >= known) {
        cell.RaiseInvalid(attribute);
    }
}

/// The categories that a cell is of, as texts; those of a regression all count as one.
using Place = std::array<std::string, 3>;

Place PlaceOf(const Element& cell, veltrane_kit::ModelParts& parts) {
    if (!parts.IsClassification()) {
        return {};
    }
    for (const XMLCh* attribute : {kRowTarget, kColumnTarget, kTarget}) {
        RequireKnown(cell, attribute, *parts.target);
    }
    return {cell.TextOr(kRowTarget, ""), cell.TextOr(kColumnTarget, ""), cell.TextOr(kTarget, "")};
}

/// The values of the cells by their places.
class CellReader {
public:
    using Key = std::pair<std::pair<std::size_t, std::size_t>, Place>;

    CellReader(veltrane_kit::ModelParts& parts, const Parameters& parameters)
        : fParts(parts), fParameters(parameters) {}

    void Read(const Element& cell, const Element& matrix) {
        const std::size_t row = fParameters.Require(cell, u"pRow");
        const std::size_t column = fParameters.Require(cell, u"pCol");
        const double value = cell.Number(u"value");
        const Place place = PlaceOf(cell, fParts);
        if (!fCells.emplace(Key{{row, column}, place}, value).second) {
            Raise<Message::DUPLICATE_DEFINITION>(cell.Tag(), cell.Text(u"pRow") + ", " + cell.Text(u"pCol"),
                                                 matrix.Tag());
        }
        const auto mirrored = fCells.find(Key{{column, row}, {place[1], place[0], place[2]}});
        if (mirrored != fCells.end() && mirrored->second != value) {
            cell.RaiseInvalid(u"value");
        }
    }

    const std::map<Key, double>& Cells() const { return fCells; }

private:
    veltrane_kit::ModelParts& fParts;
    const Parameters& fParameters;
    std::map<Key, double> fCells;
};

} // namespace

Covariance::Covariance(const Element& matrix, veltrane_kit::ModelParts& parts, const Parameters& parameters,
                       const std::vector<Term>& terms) {
    if (!matrix) {
        return;
    }
    static constexpr Word<int> kTypes[] = {{u"model", 0}, {u"robust", 1}};
    matrix.OneOfOr(u"type", kTypes, 0);
    CellReader reader(parts, parameters);
    for (const Element child : matrix.Children()) {
        if (!child.Is(u"PCovCell")) {
            child.RaiseMisplaced();
        }
        reader.Read(child, matrix);
    }
    if (reader.Cells().empty()) {
        Raise<Message::NO_CHILD_ELEMENT>(matrix.Tag());
    }
    std::map<std::size_t, std::size_t> places;
    for (std::size_t i = 0; i < terms.size(); ++i) {
        places.emplace(terms[i].parameter, i);
    }
    for (const auto& [key, value] : reader.Cells()) {
        const auto row = places.find(key.first.first);
        const auto column = places.find(key.first.second);
        const bool isTwice =
            key.first.first > key.first.second && reader.Cells().count({{key.first.second, key.first.first}, {}}) > 0;
        if (row != places.end() && column != places.end() && !isTwice) {
            fCells.push_back({row->second, column->second, row == column ? value : 2.0 * value});
        }
    }
}

double Covariance::ErrorOf(const std::vector<double>& values) const {
    double variance = 0.0;
    for (const Cell& cell : fCells) {
        variance += cell.value * values[cell.row] * values[cell.column];
    }
    return std::sqrt(variance);
}

} // namespace veltrane_general
