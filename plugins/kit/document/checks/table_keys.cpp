#include "kit/document/checks/element_rules.h"
#include "kit/document/checks/typed_values.h"
#include "kit/document/raise.h"

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace veltrane_kit {

namespace {

/// The name of a cell without the prefix of its namespace.
std::u16string_view LocalName(const XMLCh* name) {
    const std::u16string_view whole(name);
    return whole.substr(whole.find(u':') + 1);
}

/// The text of a cell, which nearly always is one.
const XMLCh* TextOf(const Element& cell) {
    const xercesc::DOMNode* text = cell.Dom()->getFirstChild();
    if (text == nullptr) {
        return u"";
    }
    const bool isOneText = text->getNodeType() == xercesc::DOMNode::TEXT_NODE && text->getNextSibling() == nullptr;
    return isOneText ? text->getNodeValue() : cell.Dom()->getTextContent();
}

/// The rows of a MapValues by their keys. The names of one document are shared texts, and rows repeat the columns of
/// the row before: the place of a cell tells its column nearly always.
class KeyedRows {
public:
    KeyedRows(const KeyedRows&) = delete;
    KeyedRows& operator=(const KeyedRows&) = delete;

    explicit KeyedRows(const Element& mapValues) {
        for (const Element child : mapValues.Children()) {
            if (child.Is(u"FieldColumnPair")) {
                fKeys.push_back(NumberOf(child, u"column"));
            }
        }
        fOutput = NumberOf(mapValues, u"outputColumn");
        fGivesNumbers = GivesNumbers(mapValues);
    }

    /// A row without one of the keys is the row of no case.
    void Add(const Element& row) {
        const std::size_t number = fRowCount++;
        ReadCells(row, number);
        CheckOutput(row, number);
        for (const std::size_t column : fKeys) {
            if (Cell(number, column) == nullptr) {
                return;
            }
        }
        const auto [known, isNew] = fByKeys.insert(number);
        if (!isNew && !Same(Cell(*known, fOutput), Cell(number, fOutput))) {
            Raise<Message::DUPLICATE_DEFINITION>(row.Tag(), KeysOf(row, number), "InlineTable");
        }
    }

    /// A table with rows has each column in one of them.
    void CheckColumns() const {
        for (const Column& column : fColumns) {
            if (!column.isMet && !fPlaces.empty()) {
                column.named.RaiseInvalid(column.attribute);
            }
        }
    }

private:
    struct Column {
        Element named; ///< the first element that names it, in an attribute
        const XMLCh* attribute;
        bool isMet;
    };
    struct Place {
        const XMLCh* tag;
        std::size_t column;
    };

    /// The number of the column that an attribute names.
    std::size_t NumberOf(const Element& element, const XMLCh* attribute) {
        const auto [known, isNew] = fNumbers.emplace(LocalName(element.Raw(attribute)), fColumns.size());
        if (isNew) {
            fColumns.push_back({element, attribute, false});
        }
        return known->second;
    }

    const XMLCh* Cell(std::size_t row, std::size_t column) const { return fCells[row * Width() + column]; }

    /// One cell for each column, and one for all that isn't asked for.
    std::size_t Width() const { return fColumns.size() + 1; }

    void ReadCells(const Element& row, std::size_t number) {
        fCells.resize((number + 1) * Width(), nullptr);
        std::size_t place = 0;
        for (const Element cell : row.Children()) {
            const std::size_t column = ColumnAt(place++, cell.Dom()->getTagName());
            fCells[number * Width() + column] = TextOf(cell);
            if (column < fColumns.size()) {
                fColumns[column].isMet = true;
            }
        }
    }

    /// An empty cell gives nothing.
    void CheckOutput(const Element& row, std::size_t number) const {
        const XMLCh* text = Cell(number, fOutput);
        double value = 0.0;
        if (fGivesNumbers && text != nullptr && *text != 0 && !ReadNumber(text, value)) {
            const Column& output = fColumns[fOutput];
            Raise<Message::INVALID_CONTENT>(row.Reader()(text), row.Reader()(output.named.Raw(output.attribute)));
        }
    }

    /// @return the number of columns for one that isn't asked for
    std::size_t ColumnAt(std::size_t place, const XMLCh* tag) {
        if (place >= fPlaces.size()) {
            fPlaces.resize(place + 1, {nullptr, 0});
        }
        Place& known = fPlaces[place];
        if (known.tag != tag) {
            const auto column = fNumbers.find(LocalName(tag));
            known = {tag, column == fNumbers.end() ? fColumns.size() : column->second};
        }
        return known.column;
    }

    std::string KeysOf(const Element& row, std::size_t number) const {
        std::string keys;
        for (const std::size_t column : fKeys) {
            keys += (column == fKeys.front() ? "" : ", ") + row.Reader()(Cell(number, column));
        }
        return keys;
    }

    /// The keys of a row, which are looked up by its number: nothing of a large table is copied.
    struct KeyHash {
        const KeyedRows* rows;
        std::size_t operator()(std::size_t row) const {
            std::size_t hash = 0;
            for (const std::size_t column : rows->fKeys) {
                hash = hash * 31 + std::hash<std::u16string_view>()(rows->Cell(row, column));
            }
            return hash;
        }
    };
    struct KeysSame {
        const KeyedRows* rows;
        bool operator()(std::size_t a, std::size_t b) const {
            return std::all_of(rows->fKeys.begin(), rows->fKeys.end(),
                               [&](std::size_t column) { return Same(rows->Cell(a, column), rows->Cell(b, column)); });
        }
    };

    std::vector<Column> fColumns;
    std::unordered_map<std::u16string_view, std::size_t> fNumbers; ///< of columns, by name
    std::vector<std::size_t> fKeys;
    std::size_t fOutput = 0;
    bool fGivesNumbers = false;
    std::vector<Place> fPlaces;
    std::vector<const XMLCh*> fCells; ///< row by row; null for one that a row doesn't have
    std::size_t fRowCount = 0;
    std::unordered_set<std::size_t, KeyHash, KeysSame> fByKeys{16, KeyHash{this}, KeysSame{this}};
};

} // namespace

void CheckTable(const Element& mapValues) {
    if (GivesNumbers(mapValues)) {
        CheckReplacements(mapValues);
    }
    KeyedRows rows(mapValues);
    for (const Element child : mapValues.Children()) {
        if (!child.Is(u"InlineTable")) {
            continue;
        }
        for (const Element row : child.Children()) {
            rows.Add(row);
        }
    }
    rows.CheckColumns();
}

} // namespace veltrane_kit
