#ifndef VELTRANE_PLUGINS_KIT_CATEGORIES_H
#define VELTRANE_PLUGINS_KIT_CATEGORIES_H

#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreValue.h>

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace veltrane_kit {

/// The categories of one field with dense codes from 0, in the order of addition. Adding is for the time when a model
/// is built; finding allocates nothing. Texts are equal but for trailing blanks, unless the field says that these
/// count; numbers are equal within the tolerance of NumericValue.
class Categories {
public:
    static constexpr int kUnknown = -1;

    /// Categories of numbers and date-times, or of texts.
    /// @param var the field; borrowed for the call
    explicit Categories(const MCVeltrane_900::ScoreDictVar& var);

    /// The code of a category, a new one when it is not there yet.
    int Add(const MCVeltrane_900::ScoreValue& value);

    /// The code of a value, or kUnknown.
    int Find(const MCVeltrane_900::ScoreValue& value) const;
    int Find(double number) const;
    int Find(std::string_view text) const;

    int Size() const { return static_cast<int>(fHoldsTexts ? fTexts.size() : fNumbers.size()); }

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };

    std::string_view Key(std::string_view text) const;

    bool fHoldsTexts;
    bool fBlanksCount;
    std::vector<std::string> fTexts;
    std::vector<double> fNumbers;
    std::unordered_map<std::string, int, Hash, std::equal_to<>> fCodes;
    std::map<double, int> fNumberCodes;
};

/// The text of a value without a copy where it is a StringValue, else through `buffer`.
const std::string& TextOf(const MCVeltrane_900::ScoreValue& value, std::string& buffer);

/// A new value of a field's kind from a document's text: a number; a date, a time or both, or their number; a text.
/// @return null when the text is no such value
MCVeltrane_900::ScoreValue* MakeValue(const MCVeltrane_900::ScoreDictVar& var, const std::string& text);

} // namespace veltrane_kit

#endif
