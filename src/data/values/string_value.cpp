#include "data/values/number_text.h"

#include <MCVeltrane_900/StringValue.h>

#include <cstddef>
#include <iostream>
#include <locale>
#include <sstream>

namespace MCVeltrane_900 {

namespace {

/// Whether neither the host's C++ locale nor that of its standard output has been changed, which costs no lock to ask.
bool HasClassicLocales() {
    return std::locale() == std::locale::classic() && std::cout.getloc() == std::locale::classic();
}

/// Reads a number with a stream in the host's C++ locale. The text's first point is taken for the decimal sign of
/// standard output, so the two locales of a host have to agree for "1.5" to be one and a half.
void ReadInLocales(std::string text, double& out) {
    if (const std::size_t point = text.find('.'); point != std::string::npos) {
        text[point] = std::use_facet<std::numpunct<char>>(std::cout.getloc()).decimal_point();
    }
    std::istringstream in(text);
    double value = 0.0;
    if (in >> value) {
        out = value;
    }
}

} // namespace

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
        SetString(other.fText);
        fLength = other.fLength;
    }
    return *this;
}

void StringValue::SetValue(const ScoreValue* other) {
    if (other->GetType() == STRING_VALUE) {
        fText = other->GetString();
    } else {
        fText.clear();
    }
    fChanges.Note();
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
    if (HasClassicLocales()) {
        veltrane::data::ReadStreamDouble(fText, value);
    } else {
        ReadInLocales(fText, value);
    }
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
    fChanges.Note();
}
int StringValue::GetLength() const {
    return fLength;
}
void StringValue::SetLength(int length) {
    fLength = length;
}

} // namespace MCVeltrane_900
