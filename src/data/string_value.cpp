#include "data/number_text.h"

#include <MCVeltrane_900/StringValue.h>

namespace MCVeltrane_900 {

StringValue::StringValue() : fText(MAX_STRING, '\0'), fLength(0) {}
StringValue::StringValue(const char* text)
    : fText(text != nullptr ? text : ""), fLength(static_cast<int>(fText.size())) {}
StringValue::StringValue(const std::string& text) : fText(text), fLength(static_cast<int>(fText.size())) {}
StringValue::StringValue(const StringValue& other) : fText(other.fText), fLength(static_cast<int>(fText.size())) {}
StringValue::~StringValue() {
    fText.clear();
}

StringValue& StringValue::operator=(const StringValue& other) {
    if (this != &other) {
        fText = other.fText;
        fLength = other.fLength;
    }
    return *this;
}

void StringValue::SetValue(const ScoreValue* other) {
    if (other->GetType() == STRING_VALUE)
        fText = other->GetString();
    else
        fText.clear();
}

ScoreValue* StringValue::GetValue() const {
    return new StringValue(fText);
}
ScoreValue* StringValue::Clone() const {
    return new StringValue(fText);
}

bool StringValue::IsSystemMissingValue() const {
    return false;
}
int StringValue::GetInt() const {
    return veltrane::data::ReadInteger(fText);
}

double StringValue::GetDouble() const {
    double value = 0.0;
    veltrane::data::ReadStreamDouble(fText, value);
    return value;
}

std::string StringValue::GetString() const {
    return fText;
}
ScoreValue::ValueType StringValue::GetType() const {
    return STRING_VALUE;
}
void StringValue::SetString(const std::string& text) {
    fText = text;
}
int StringValue::GetLength() const {
    return fLength;
}
void StringValue::SetLength(int length) {
    fLength = length;
}

} // namespace MCVeltrane_900
