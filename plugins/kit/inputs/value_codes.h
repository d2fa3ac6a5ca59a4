#ifndef VELTRANE_PLUGINS_KIT_VALUE_CODES_H
#define VELTRANE_PLUGINS_KIT_VALUE_CODES_H

#include "kit/values/text_codes.h"
#include "kit/values/values.h"

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace veltrane_kit {

/// Dense codes from 0 for values of one type, in the order of addition. Adding is for the time when a model is built;
/// finding allocates nothing.
class ValueCodes {
public:
    static constexpr int kUnknown = TextCodes::kUnknown;

    explicit ValueCodes(DataType type) : fHoldsTexts(IsText(type)) {}

    /// The code of a value of the type, a new one when it is not there yet.
    int Add(const Value& value);

    /// The code of a value, or kUnknown.
    int Find(const Value& value) const;

    /// The code of a text, where the type is one of texts.
    int FindText(std::string_view text) const {
        const int code = fTexts.Find(text);
        return code == kUnknown && !fMoreTexts.empty() ? FindMore(text) : code;
    }

    int Size() const { return static_cast<int>(fHoldsTexts ? fTexts.Size() + fMoreTexts.size() : fNumbers.size()); }

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };

    int FindMore(std::string_view text) const;
    int FindNumber(double number) const;

    bool fHoldsTexts;
    TextCodes fTexts;
    std::vector<double> fNumbers;
    std::unordered_map<std::string, int, Hash, std::equal_to<>> fMoreTexts; ///< those that `fTexts` doesn't take
    std::unordered_map<double, int> fNumberCodes;
};

} // namespace veltrane_kit

#endif
