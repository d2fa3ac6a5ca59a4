#ifndef VELTRANE_DATA_VALUE_TEXT_H
#define VELTRANE_DATA_VALUE_TEXT_H

#include <MCVeltrane_900/StringValue.h>

#include <string>
#include <string_view>
#include <typeinfo>

namespace veltrane::data {

/// The text of a value, GetString(), without a copy when the value is a plain StringValue.
class ValueText {
public:
    explicit ValueText(const MCVeltrane_900::ScoreValue& value) {
        if (typeid(value) == typeid(MCVeltrane_900::StringValue)) {
            fView = static_cast<const MCVeltrane_900::StringValue&>(value).GetText();
        } else {
            fCopy = value.GetString();
            fView = fCopy;
        }
    }
    ValueText(const ValueText&) = delete;
    ValueText& operator=(const ValueText&) = delete;

    /// Valid as long as this object and the value.
    std::string_view View() const { return fView; }

private:
    std::string fCopy;
    std::string_view fView;
};

} // namespace veltrane::data

#endif
