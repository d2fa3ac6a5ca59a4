#include "kit/document/checks/element_rules.h"
#include "kit/document/raise.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace veltrane_kit {

namespace {

/// What no text holds: the end of a key, and a key that a row doesn't have.
constexpr char16_t kEnd = 0xFFFF;
constexpr char16_t kNone = 0xFFFE;

/// The name of a cell without the prefix of its namespace.
std::u16string_view LocalName(const XMLCh* name) {
    const std::u16string_view whole(name);
    return whole.substr(whole.find(u':') + 1);
}

/// The rows of a MapValues by their keys. The names of one document are shared texts, and rows repeat the columns of
/// the row before: the place of a cell tells its column nearly always.
class KeyedRows {
public:
    explicit KeyedRows(const Element& mapValues) : fOutput(LocalName(mapValues.Raw(u"outputColumn"))) {
        for (const Element child : mapValues.Children()) {
            if (child.Is(u"FieldColumnPair")) {
                fKeys.push_back(LocalName(child.Raw(u"column")));
            }
        }
        fCells.resize(fKeys.size());
    }

    void Add(const Element& row) {
        ReadCells(row);
        std::u16string key;
        for (const XMLCh* cell : fCells) {
            key += cell == nullptr ? std::u16string_view(&kNone, 1) : std::u16string_view(cell);
            key += kEnd;
        }
        const auto [known, isNew] = fOutputs.emplace(std::move(key), fValue);
        if (!isNew && !Same(known->second, fValue)) {
            Raise<Message::DUPLICATE_DEFINITION>(row.Tag(), KeysOf(row), "InlineTable");
        }
    }

private:
    void ReadCells(const Element& row) {
        fCells.assign(fKeys.size(), nullptr);
        fValue = nullptr;
        std::size_t place = 0;
        for (const Element cell : row.Children()) {
            const std::size_t column = ColumnAt(place++, cell.Dom()->getTagName());
            if (column < fKeys.size()) {
                fCells[column] = cell.Dom()->getTextContent();
            } else if (column == fKeys.size()) {
                fValue = cell.Dom()->getTextContent();
            }
        }
    }

    /// The number of a key; behind all keys that of the output, and of other columns.
    std::size_t ColumnAt(std::size_t place, const XMLCh* tag) {
        if (place >= fPlaces.size()) {
            fPlaces.resize(place + 1);
        }
        Place& known = fPlaces[place];
        if (known.tag != tag) {
            known = {tag, ColumnOf(LocalName(tag))};
        }
        return known.column;
    }

    std::size_t ColumnOf(std::u16string_view name) const {
        for (std::size_t i = 0; i < fKeys.size(); ++i) {
            if (fKeys[i] == name) {
                return i;
            }
        }
        return name == fOutput ? fKeys.size() : fKeys.size() + 1;
    }

    std::string KeysOf(const Element& row) const {
        std::string keys;
        for (const XMLCh* cell : fCells) {
            keys += (keys.empty() ? "" : ", ") + row.Reader()(cell);
        }
        return keys;
    }

    struct Place {
        const XMLCh* tag = nullptr;
        std::size_t column = 0;
    };

    std::u16string_view fOutput;
    std::vector<std::u16string_view> fKeys; ///< the columns of the keys
    std::vector<Place> fPlaces;
    std::vector<const XMLCh*> fCells; ///< the keys of a row; null for one that it doesn't have
    const XMLCh* fValue = nullptr;
    std::unordered_map<std::u16string, const XMLCh*> fOutputs;
};

} // namespace

void CheckKeys(const Element& mapValues) {
    KeyedRows rows(mapValues);
    for (const Element child : mapValues.Children()) {
        if (!child.Is(u"InlineTable")) {
            continue;
        }
        for (const Element row : child.Children()) {
            rows.Add(row);
        }
    }
}

} // namespace veltrane_kit
