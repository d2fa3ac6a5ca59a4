#include "data/values/value_text.h"

#include <MCVeltrane_900/StringValue.h>

#include <functional>

/// The comparison operators of texts. Only the blank (0x20) counts as blank, and only at the end of a text. The
/// operators don't agree with each other about texts that are all blank or end in blanks; predicates, splits and sorted
/// sets depend on each of them as it is, and the suite KeptStringOrder pins them.
namespace MCVeltrane_900 {

using veltrane::data::ValueText;

namespace {

constexpr char kBlank = ' ';

bool IsAllBlank(std::string_view text) {
    return text.find_last_not_of(kBlank) == std::string_view::npos;
}
bool EndsInBlank(std::string_view text) {
    return !text.empty() && text.back() == kBlank;
}
std::string_view Trimmed(std::string_view text) {
    return text.substr(0, text.find_last_not_of(kBlank) + 1);
}

/// A strict operator on two texts that are not all blank.
template <class Compare>
bool StrictOrder(std::string_view left, std::string_view right, Compare compare) {
    return compare(Trimmed(left), Trimmed(right));
}

/// An inclusive operator on two texts that are not all blank: it turns into equality when only the left side ends in
/// blanks.
template <class Compare>
bool InclusiveOrder(std::string_view left, std::string_view right, Compare compare) {
    if (EndsInBlank(left) && !EndsInBlank(right)) {
        return Trimmed(left) == right;
    }
    return compare(Trimmed(left), Trimmed(right));
}

} // namespace

bool StringValue::operator==(const ScoreValue& rhs) const {
    if (rhs.GetType() != STRING_VALUE) {
        return false;
    }
    const ValueText other(rhs);
    return Trimmed(fText) == Trimmed(other.View());
}

bool StringValue::Equal(const ScoreValue* other, bool noSpaceTrim, bool emptyStringOK) const {
    if (other == nullptr || other->GetType() != STRING_VALUE) {
        return false;
    }
    const ValueText otherText(*other);
    const std::string_view text = fText;
    const std::string_view otherView = otherText.View();
    if (text == otherView) {
        return true;
    }
    if (noSpaceTrim || Trimmed(text) != Trimmed(otherView)) {
        return false;
    }
    if (!IsAllBlank(text) || !emptyStringOK) {
        return true;
    }
    return text.empty() == otherView.empty();
}

bool StringValue::operator>(const ScoreValue& rhs) const {
    if (rhs.GetType() != STRING_VALUE) {
        return false;
    }
    const ValueText other(rhs);
    if (IsAllBlank(other.View())) {
        return !IsAllBlank(fText);
    }
    return !IsAllBlank(fText) && StrictOrder(fText, other.View(), std::greater<>());
}

bool StringValue::operator<(const ScoreValue& rhs) const {
    if (rhs.GetType() != STRING_VALUE) {
        return false;
    }
    const ValueText other(rhs);
    if (IsAllBlank(other.View())) {
        return !IsAllBlank(fText);
    }
    return !IsAllBlank(fText) && StrictOrder(fText, other.View(), std::less<>());
}

bool StringValue::operator<=(const ScoreValue& rhs) const {
    if (rhs.GetType() != STRING_VALUE) {
        return false;
    }
    const ValueText other(rhs);
    if (IsAllBlank(other.View())) {
        return IsAllBlank(fText);
    }
    return IsAllBlank(fText) || InclusiveOrder(fText, other.View(), std::less_equal<>());
}

bool StringValue::operator>=(const ScoreValue& rhs) const {
    if (rhs.GetType() != STRING_VALUE) {
        return false;
    }
    const ValueText other(rhs);
    if (IsAllBlank(other.View())) {
        return true;
    }
    return !IsAllBlank(fText) && InclusiveOrder(fText, other.View(), std::greater_equal<>());
}

} // namespace MCVeltrane_900
