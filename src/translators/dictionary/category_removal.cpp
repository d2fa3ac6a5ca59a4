#include "diagnostics/raise.h"
#include "translators/conditions/split_categories.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/ScoreValueLabel.h>
#include <MCVeltrane_900/ScoreValueLabelSet.h>

#include <algorithm>

// The complement of a set of categories.

namespace MCVeltrane_900 {

using veltrane::diagnostics::Message;
using veltrane::diagnostics::Raise;
using veltrane::translators::RequireLabels;

namespace {

using Strings = std::vector<std::string>;

/// What is left of a variable's categories. Each is found by its text, and that of a number by the number as well.
class RemainingCategories {
public:
    explicit RemainingCategories(const ScoreDictVar& var) : fIsNumeric(var.GetVarType() == ScoreDictVar::kNUMERIC_VAR) {
        const ScoreValueLabelSet& labels = RequireLabels(var);
        if (labels.Size() == 0) {
            Raise<Message::MISSING_VALUE_LIST>(var.GetName());
        }
        for (const ScoreValueLabel* label : labels.GetAllValueLabels()) {
            if (label->GetValue() != nullptr) {
                fByText.push_back({label->GetValue()->GetString(), fTexts.size()});
                fByNumber.push_back({label->GetValue()->GetDouble(), fTexts.size()});
                fTexts.push_back(fByText.back().key);
            }
        }
        std::sort(fByText.begin(), fByText.end());
        std::sort(fByNumber.begin(), fByNumber.end());
        fIsRemoved.resize(fTexts.size());
    }

    bool Contains(const std::string& element) const {
        return fIsNumeric ? IsKnown(fByNumber, NumericValue(element).GetDouble()) : IsKnown(fByText, element);
    }

    /// Removes the first category with this text, or the first one with this number when no text is the same: "1.0" is
    /// the category "1". An element that was removed before changes nothing.
    void Remove(const std::string& element) {
        if (!RemoveFirst(fByText, element) && fIsNumeric) {
            RemoveFirst(fByNumber, NumericValue(element).GetDouble());
        }
    }

    /// The rest in order. Empty texts are dropped, and as many stand at the end instead.
    Strings Rest() const {
        const auto removed = static_cast<std::size_t>(std::count(fIsRemoved.begin(), fIsRemoved.end(), true));
        Strings rest;
        rest.reserve(fTexts.size() - removed);
        for (std::size_t i = 0; i < fTexts.size(); ++i) {
            if (!fIsRemoved[i] && !fTexts[i].empty()) {
                rest.push_back(fTexts[i]);
            }
        }
        rest.resize(fTexts.size() - removed);
        return rest;
    }

private:
    template <typename Key>
    struct Entry {
        Key key;
        std::size_t position;

        bool operator<(const Entry& other) const {
            return key < other.key || (key == other.key && position < other.position);
        }
    };
    template <typename Key>
    using Index = std::vector<Entry<Key>>;

    template <typename Key>
    static typename Index<Key>::const_iterator FirstOf(const Index<Key>& index, const Key& key) {
        return std::lower_bound(index.begin(), index.end(), Entry<Key>{key, 0});
    }

    template <typename Key>
    static bool IsKnown(const Index<Key>& index, const Key& key) {
        const auto entry = FirstOf(index, key);
        return entry != index.end() && entry->key == key;
    }

    template <typename Key>
    bool RemoveFirst(const Index<Key>& index, const Key& key) {
        for (auto entry = FirstOf(index, key); entry != index.end() && entry->key == key; ++entry) {
            if (!fIsRemoved[entry->position]) {
                fIsRemoved[entry->position] = true;
                return true;
            }
        }
        return false;
    }

    bool fIsNumeric;
    Strings fTexts;
    std::vector<bool> fIsRemoved;
    Index<std::string> fByText;
    Index<double> fByNumber;
};

} // namespace

std::vector<std::string> PMMLTranslator::Remove(const ScoreDictVar* var, std::vector<std::string> elements) {
    RemainingCategories categories(*var);
    for (const std::string& element : elements) {
        if (!categories.Contains(element)) {
            Raise<Message::VALUE_NOT_IN_RANGE>(element, var->GetName());
        }
    }
    for (const std::string& element : elements) {
        categories.Remove(element);
    }
    return categories.Rest();
}

} // namespace MCVeltrane_900
